#include "MeshQhull.h"
#include "WholeRun.h"

int main(int argc, char** argv)
{
    return bench::runWhole<bench::MeshQhull>(argc, argv);
}
