// What all pictures have in common. Of a build with VTK.
#pragma once

#include "output/OutputFile.h"

#include "vorn3d/Point3.h"

#include <vtkRenderWindow.h>
#include <vtkRenderer.h>

#include <array>
#include <functional>
#include <vector>

namespace VORN3D::program
{

/// Where things are looked at from: obliquely, along the axis in which they are thinnest.
struct View
{
    int axis;
    Point3 center; ///< of the box of all vertices
};

View chooseView(const std::vector<const Point3*>& vVertices);

/// Shows all that the renderer has, in coordinates relative to the centre.
void aimCamera(vtkRenderer& renderer, const View& view);

/// Renders what fill(window) puts into the window, as a PNG image of that size.
void renderInto(OutputFile& file, const std::array<int, 2>& size,
                const std::function<void(vtkRenderWindow& window)>& fill);

} // namespace VORN3D::program
