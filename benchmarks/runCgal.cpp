#include "MeshCgal.h"
#include "WholeRun.h"

int main(int argc, char** argv)
{
    return bench::runWhole<bench::MeshCgal>(argc, argv);
}
