#include "Loops.h"
#include "MeshVorn3D.h"

int main(int argc, char** argv)
{
    return bench::runLoops<bench::MeshVorn3D>(argc, argv);
}
