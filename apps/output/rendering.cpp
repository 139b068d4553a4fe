#include "output/rendering.h"

#include "VirtualDisplay.h"
#include "VtkObservers.h"
#include "output/unstoppableWork.h"

#include "vorn3d/Bbox3.h"

#include <vtkCamera.h>
#include <vtkNew.h>
#include <vtkPNGWriter.h>
#include <vtkWindowToImageFilter.h>

#include <algorithm>
#include <stdexcept>

namespace VORN3D::program
{

View chooseView(const std::vector<const Point3*>& vVertices)
{
    Bbox3 box;
    for (const Point3* pVtx : vVertices)
        box.add(*pVtx);
    const std::array<double, 3> ranges{box.getRangeX(), box.getRangeY(), box.getRangeZ()};
    const auto axis = std::min_element(ranges.begin(), ranges.end()) - ranges.begin();
    return {static_cast<int>(axis), box.getMinPoint() + (box.getMaxPoint() - box.getMinPoint()) / 2.0};
}

void aimCamera(vtkRenderer& renderer, const View& view)
{
    std::array<double, 3> position{};
    std::array<double, 3> up{};
    const auto axis = static_cast<std::size_t>(view.axis);
    position[axis] = 1.0;
    position[(axis + 1) % 3] = 0.35;
    position[(axis + 2) % 3] = 0.45;
    up[(axis + 1) % 3] = 1.0;
    vtkCamera* pCamera = renderer.GetActiveCamera();
    pCamera->SetFocalPoint(0, 0, 0);
    pCamera->SetPosition(position.data());
    pCamera->SetViewUp(up.data());
    renderer.ResetCamera();
    pCamera->Zoom(1.2);
}

void renderInto(OutputFile& file, const std::array<int, 2>& size,
                const std::function<void(vtkRenderWindow& window)>& fill)
{
    doUnstoppableWork("rendering " + file.getPath(), file, [&] {
        const VtkMessages messages;
        const VirtualDisplay display;
        const vtkNew<vtkRenderWindow> pWindow;
        pWindow->OffScreenRenderingOn();
        pWindow->SetSize(size[0], size[1]);
        pWindow->SetMultiSamples(8);
        fill(*pWindow);
        pWindow->Render();
        const vtkNew<vtkWindowToImageFilter> pImage;
        pImage->SetInput(pWindow);
        pImage->ReadFrontBufferOff();
        const vtkNew<vtkPNGWriter> pWriter;
        pWriter->SetInputConnection(pImage->GetOutputPort());
        pWriter->SetCompressionLevel(9);
        pWriter->SetFileName(file.getWritablePath().c_str());
        pWriter->Write();
        if (messages.hasError())
            throw std::runtime_error(file.getPath() + ": " + messages.getFirstError("VTK could not draw"));
    });
}

} // namespace VORN3D::program
