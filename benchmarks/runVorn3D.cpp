#include "MeshVorn3D.h"
#include "WholeRun.h"

int main(int argc, char** argv)
{
    return bench::runWhole<bench::MeshVorn3D>(argc, argv);
}
