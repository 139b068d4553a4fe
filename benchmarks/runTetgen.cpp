#include "MeshTetgen.h"
#include "WholeRun.h"

int main(int argc, char** argv)
{
    return bench::runWhole<bench::MeshTetgen>(argc, argv);
}
