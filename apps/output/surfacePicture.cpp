// A surface in soft light, and beside it the points that it was made of.
#include "output/picture.h"
#include "output/rendering.h"
#include "output/surfaceWriters.h"

#include "vorn3d/Vector3.h"

#include <vtkActor.h>
#include <vtkCamera.h>
#include <vtkCellArray.h>
#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>

namespace VORN3D::program
{

namespace
{

constexpr std::array<double, 3> surfaceColor{0.93, 0.70, 0.45};
constexpr std::array<double, 3> pointColor{0.13, 0.30, 0.55};

/// Relative to the centre, so that single precision is enough for the graphics.
vtkNew<vtkPoints> makePoints(const std::vector<const Point3*>& vPoints, const View& view)
{
    vtkNew<vtkPoints> pPoints;
    for (const Point3* p : vPoints) {
        const Vector3 v = *p - view.center;
        pPoints->InsertNextPoint(v.x(), v.y(), v.z());
    }
    return pPoints;
}

/// At each vertex the sum of the normals of the faces, by which light changes smoothly; in proportion to
/// their areas.
vtkNew<vtkFloatArray> makeNormals(const Surface& surface)
{
    std::vector<Vector3> vNormals(surface.vVertices.size(), Vector3(0, 0, 0));
    std::size_t first = 0;
    const auto getPoint = [&](std::size_t i) -> const Point3& {
        return *surface.vVertices[static_cast<std::size_t>(surface.vCorners[i])];
    };
    for (const std::size_t end : surface.vEnds) {
        const Vector3 normal =
            crossProduct(getPoint(first + 1) - getPoint(first), getPoint(first + 2) - getPoint(first));
        for (; first < end; ++first) {
            Vector3& sum = vNormals[static_cast<std::size_t>(surface.vCorners[first])];
            sum = sum + normal;
        }
    }
    vtkNew<vtkFloatArray> pNormals;
    pNormals->SetNumberOfComponents(3);
    for (const Vector3& normal : vNormals) {
        const double length = std::sqrt(dotProduct(normal, normal));
        const Vector3 unit = length > 0.0 ? normal / length : normal;
        pNormals->InsertNextTuple3(unit.x(), unit.y(), unit.z());
    }
    return pNormals;
}

void addActor(vtkRenderer& renderer, vtkPolyData& data, const std::array<double, 3>& color,
              const std::function<void(vtkProperty&)>& adjust)
{
    const vtkNew<vtkPolyDataMapper> pMapper;
    pMapper->SetInputData(&data);
    const vtkNew<vtkActor> pActor;
    pActor->SetMapper(pMapper);
    pActor->GetProperty()->SetColor(color[0], color[1], color[2]);
    adjust(*pActor->GetProperty());
    renderer.AddActor(pActor);
}

void addSurface(vtkRenderer& renderer, const Surface& surface, const View& view)
{
    const vtkNew<vtkCellArray> pFaces;
    std::size_t first = 0;
    for (const std::size_t end : surface.vEnds) {
        pFaces->InsertNextCell(static_cast<int>(end - first));
        for (; first < end; ++first)
            pFaces->InsertCellPoint(surface.vCorners[first]);
    }
    const vtkNew<vtkPolyData> pData;
    pData->SetPoints(makePoints(surface.vVertices, view));
    pData->SetPolys(pFaces);
    pData->GetPointData()->SetNormals(makeNormals(surface));
    addActor(renderer, *pData, surfaceColor, [](vtkProperty& property) {
        property.SetInterpolationToPhong();
        property.SetAmbient(0.25);
        property.SetDiffuse(0.75);
        property.SetSpecular(0.15);
        property.SetSpecularPower(20);
    });
}

void addPoints(vtkRenderer& renderer, const std::vector<const Point3*>& vPoints, const View& view)
{
    const vtkNew<vtkCellArray> pVertices;
    for (std::size_t i = 0; i < vPoints.size(); ++i) {
        pVertices->InsertNextCell(1);
        pVertices->InsertCellPoint(static_cast<vtkIdType>(i));
    }
    const vtkNew<vtkPolyData> pData;
    pData->SetPoints(makePoints(vPoints, view));
    pData->SetVerts(pVertices);
    addActor(renderer, *pData, pointColor, [](vtkProperty& property) {
        property.SetPointSize(2);
        property.LightingOff();
    });
}

} // namespace

void writeSurfacePicture(const std::vector<const Point3*>& vPoints, const Surface& surface, OutputFile& file)
{
    const View view = chooseView(vPoints);
    renderInto(file, {1600, 800}, [&](vtkRenderWindow& window) {
        const vtkNew<vtkRenderer> pLeft;
        const vtkNew<vtkRenderer> pRight;
        pLeft->SetViewport(0.0, 0.0, 0.5, 1.0);
        pRight->SetViewport(0.5, 0.0, 1.0, 1.0);
        addPoints(*pLeft, vPoints, view);
        addSurface(*pRight, surface, view);
        for (vtkRenderer* pRenderer : {pLeft.Get(), pRight.Get()}) {
            pRenderer->SetBackground(1.0, 1.0, 1.0);
            aimCamera(*pRenderer, view);
            window.AddRenderer(pRenderer);
        }
        // As large as the points, which the surface need not have all of.
        pRight->GetActiveCamera()->DeepCopy(pLeft->GetActiveCamera());
        pRight->ResetCameraClippingRange();
    });
}

} // namespace VORN3D::program
