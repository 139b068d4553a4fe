// The mesh cut open in the middle: tetrahedra on one side of a plane, shrunk so that each can be seen.
#include "output/picture.h"

#include "InputError.h"
#include "Progress.h"
#include "output/rendering.h"

#include "vorn3d/Vorn_3D.h"
#include "vorn3d/geometry/MeshQuality.h"

#include <vtkActor.h>
#include <vtkCamera.h>
#include <vtkCellData.h>
#include <vtkColorTransferFunction.h>
#include <vtkDoubleArray.h>
#include <vtkPolyData.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkRenderWindow.h>
#include <vtkRenderer.h>
#include <vtkScalarBarActor.h>
#include <vtkTextProperty.h>

#include <algorithm>
#include <cmath>
#include <functional>

namespace VORN3D::program
{

namespace
{

constexpr double shrinkFactor = 0.88;

struct Quantity
{
    std::string name;
    const char* title;
    double (*pMeasure)(const Tet3&);
};

double getMeanIndex(const Tet3& tet)
{
    double sum = 0.0;
    for (int i = 0; i < 4; ++i)
        sum += tet.getCorner(i)->getCustomIndex();
    return sum / 4.0;
}

/// Sizes and ratios spread over magnitudes, so the logarithms are shown.
const std::vector<Quantity>& getQuantities()
{
    static const std::vector<Quantity> vQuantities{
        {"size", "log10 of volume", [](const Tet3& tet) { return std::log10(measureTet(tet).volume); }},
        {"ratio", "log10 of edge ratio",
         [](const Tet3& tet) { return std::log10(measureTet(tet).edgeRatio); }},
        {"index", "input index", getMeanIndex},
    };
    return vQuantities;
}

const Quantity& findQuantity(const std::string& name)
{
    const auto& vQuantities = getQuantities();
    const auto found = std::find_if(vQuantities.begin(), vQuantities.end(),
                                    [&](const Quantity& q) { return q.name == name; });
    if (found == vQuantities.end())
        throw InputError(name, "unknown quantity");
    return *found;
}

Point3 getCentroid(const Tet3& tet)
{
    Vector3 sum;
    for (int i = 0; i < 4; ++i)
        sum = sum + (*tet.getCorner(i) - Point3(0, 0, 0)) / 4.0;
    return Point3(0, 0, 0) + sum;
}

/// The cut is across the axis in which the mesh is thinnest, which opens its largest section.
bool isCutAway(const View& view, const Tet3& tet)
{
    return getCentroid(tet).getCoordinates()[view.axis] > view.center.getCoordinates()[view.axis];
}

/// Whether a tetrahedron lies at the surface of what the cut leaves.
bool isAtSurface(const Tet3& tet, const View& view)
{
    for (int i = 0; i < 4; ++i)
        if (tet.getOppTet(i) == nullptr || isCutAway(view, *tet.getOppTet(i)))
            return true;
    return false;
}

/// The tetrahedra that can be seen: those at the surface and, through the gaps, those behind them.
std::vector<const Tet3*> findVisible(const Vorn_3D& triangulation, const View& view)
{
    std::vector<Tet3*> vTets;
    triangulation.getTetrahedra(vTets);
    Progress progress("choosing what can be seen", vTets.size());
    std::size_t numDone = 0;
    std::vector<const Tet3*> vVisible;
    for (const Tet3* pTet : vTets) {
        progress.update(numDone++);
        if (isCutAway(view, *pTet) || !isAtSurface(*pTet, view))
            continue;
        vVisible.push_back(pTet);
        for (int i = 0; i < 4; ++i)
            if (const Tet3* pBehind = pTet->getOppTet(i); pBehind != nullptr && !isCutAway(view, *pBehind))
                vVisible.push_back(pBehind);
    }
    std::sort(vVisible.begin(), vVisible.end(), std::less<>());
    vVisible.erase(std::unique(vVisible.begin(), vVisible.end()), vVisible.end());
    return vVisible;
}

/// Adds the four corners, drawn towards the centroid, and the four facets between them.
void addShrunk(const Tet3& tet, const View& view, vtkPoints& points, vtkCellArray& facets)
{
    const vtkIdType first = points.GetNumberOfPoints();
    const Point3 centroid = getCentroid(tet);
    for (int i = 0; i < 4; ++i) {
        // Relative to the centre, so that single precision is enough for the graphics.
        const Vector3 p = (centroid - view.center) + (*tet.getCorner(i) - centroid) * shrinkFactor;
        points.InsertNextPoint(p.x(), p.y(), p.z());
    }
    for (int opp3 = 0; opp3 < 4; ++opp3) {
        int i0 = 0;
        int i1 = 0;
        int i2 = 0;
        tet.getFacetIndices(opp3, i0, i1, i2);
        const vtkIdType ids[3]{first + i0, first + i1, first + i2};
        facets.InsertNextCell(3, ids);
    }
}

vtkNew<vtkPolyData> makeSurface(const std::vector<const Tet3*>& vTets, const View& view,
                                const Quantity& quantity)
{
    vtkNew<vtkPoints> pPoints;
    vtkNew<vtkCellArray> pFacets;
    vtkNew<vtkDoubleArray> pValues;
    for (const Tet3* pTet : vTets) {
        addShrunk(*pTet, view, *pPoints, *pFacets);
        const double value = quantity.pMeasure(*pTet);
        for (int i = 0; i < 4; ++i)
            pValues->InsertNextValue(value);
    }
    vtkNew<vtkPolyData> pSurface;
    pSurface->SetPoints(pPoints);
    pSurface->SetPolys(pFacets);
    pSurface->GetCellData()->SetScalars(pValues);
    return pSurface;
}

/// Dark blue over green to yellow, also told apart by the colour-blind. One in fifty values at each end is
/// beyond the scale, so that single ones do not take all the colours.
vtkNew<vtkColorTransferFunction> makeColors(vtkDataArray& values)
{
    std::vector<double> vSorted;
    for (vtkIdType i = 0; i < values.GetNumberOfTuples(); ++i)
        vSorted.push_back(values.GetTuple1(i));
    std::sort(vSorted.begin(), vSorted.end());
    const double low = vSorted[vSorted.size() / 50];
    const double range = vSorted[vSorted.size() - 1 - vSorted.size() / 50] - low;
    vtkNew<vtkColorTransferFunction> pColors;
    pColors->AddRGBPoint(low, 0.27, 0.0, 0.33);
    pColors->AddRGBPoint(low + 0.25 * range, 0.23, 0.32, 0.55);
    pColors->AddRGBPoint(low + 0.5 * range, 0.13, 0.57, 0.55);
    pColors->AddRGBPoint(low + 0.75 * range, 0.37, 0.79, 0.38);
    pColors->AddRGBPoint(low + range, 0.99, 0.91, 0.14);
    return pColors;
}

void addSurface(vtkRenderer& renderer, vtkPolyData& surface, const Quantity& quantity)
{
    const auto pColors = makeColors(*surface.GetCellData()->GetScalars());
    const vtkNew<vtkPolyDataMapper> pMapper;
    pMapper->SetInputData(&surface);
    pMapper->SetLookupTable(pColors);
    pMapper->UseLookupTableScalarRangeOn();
    const vtkNew<vtkActor> pActor;
    pActor->SetMapper(pMapper);
    pActor->GetProperty()->SetInterpolationToFlat();
    pActor->GetProperty()->SetAmbient(0.4);
    pActor->GetProperty()->SetDiffuse(0.65);
    renderer.AddActor(pActor);

    const vtkNew<vtkScalarBarActor> pLegend;
    pLegend->SetLookupTable(pColors);
    pLegend->SetTitle(quantity.title);
    pLegend->SetNumberOfLabels(5);
    pLegend->SetVerticalTitleSeparation(12);
    pLegend->UnconstrainedFontSizeOn();
    for (vtkTextProperty* pText : {pLegend->GetTitleTextProperty(), pLegend->GetLabelTextProperty()}) {
        pText->SetColor(0.1, 0.1, 0.1);
        pText->SetFontSize(18);
        pText->ShadowOff();
        pText->ItalicOff();
    }
    pLegend->SetPosition(0.87, 0.2);
    pLegend->SetWidth(0.09);
    pLegend->SetHeight(0.6);
    renderer.AddActor2D(pLegend);
}

} // namespace

void writePicture(const Vorn_3D& triangulation, const std::string& quantityName, OutputFile& file)
{
    const Quantity& quantity = findQuantity(quantityName);
    std::vector<Point3*> vVertices;
    triangulation.getVertices(vVertices);
    const View view = chooseView({vVertices.begin(), vVertices.end()});
    const std::vector<const Tet3*> vVisible = findVisible(triangulation, view);
    renderInto(file, {1200, 900}, [&](vtkRenderWindow& window) {
        const vtkNew<vtkRenderer> pRenderer;
        pRenderer->SetBackground(1.0, 1.0, 1.0);
        addSurface(*pRenderer, *makeSurface(vVisible, view, quantity), quantity);
        aimCamera(*pRenderer, view);
        // To the left, beside the legend.
        pRenderer->GetActiveCamera()->SetWindowCenter(0.12, 0.0);
        window.AddRenderer(pRenderer);
    });
}

} // namespace VORN3D::program
