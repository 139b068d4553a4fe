#include "commands.h"

namespace VORN3D::program
{

const std::vector<AddCommand*>& getCommands()
{
    static const std::vector<AddCommand*> vCommands{
        addTriangulateCommand, addHullCommand,    addAlphaCommand,   addInterpolateCommand,
        addNearestCommand,     addVoronoiCommand, addGenerateCommand};
    return vCommands;
}

} // namespace VORN3D::program
