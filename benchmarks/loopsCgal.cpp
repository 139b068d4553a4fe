#include "Loops.h"
#include "MeshCgal.h"

int main(int argc, char** argv)
{
    return bench::runLoops<bench::MeshCgal>(argc, argv);
}
