// Linked into the program in place of the batch insertion: a real one, and then the last vertex goes
// elsewhere.
#include "vorn3d/Vorn_3D.h"

namespace VORN3D
{

// With its option --wrap the linker leads calls of the member function to the second of these names, and the
// first one to the member function.
#define VORN3D_INSERT "_ZN6VORN3D7Vorn_3D6insertERSt6vectorINS_6Point3ESaIS2_EERS1_IPS2_SaIS6_EE"
void insertReally(Vorn_3D* pTriangulation, std::vector<Point3>& vPoints,
                  std::vector<Point3*>& vHandles) asm("__real_" VORN3D_INSERT);
void insertAndDamage(Vorn_3D* pTriangulation, std::vector<Point3>& vPoints,
                     std::vector<Point3*>& vHandles) asm("__wrap_" VORN3D_INSERT);

void insertAndDamage(Vorn_3D* pTriangulation, std::vector<Point3>& vPoints, std::vector<Point3*>& vHandles)
{
    insertReally(pTriangulation, vPoints, vHandles);
    Point3* const pVtx = vHandles.back();
    pVtx->exchange(pVtx->x(), pVtx->y(), pVtx->z() + 2.5);
}

} // namespace VORN3D
