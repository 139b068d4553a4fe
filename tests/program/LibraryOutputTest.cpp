#include "LibraryOutput.h"

#include "TemporaryDirectory.h"

#include "vorn3d/Vorn_3D.h"

#include <gtest/gtest.h>

namespace VORN3D::program
{

namespace
{

/// The lines that come through on standard error while the library checks a mesh.
std::string getLinesOfCheck(Vorn_3D& triangulation, bool bSound)
{
    testing::internal::CaptureStderr();
    {
        const LibraryOutput redirection(false);
        EXPECT_EQ(triangulation.checkValidity("mesh", true), bSound);
    }
    return testing::internal::GetCapturedStderr();
}

TEST(LibraryOutputTest, PassesOnFaultsAndNoRoutine)
{
    const TemporaryDirectory directory;
    std::vector<Point3> vPoints{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, 1}, {3, 3, 3}};
    std::vector<Point3*> vHandles;
    Vorn_3D triangulation;
    triangulation.insert(vPoints, vHandles);
    EXPECT_EQ(getLinesOfCheck(triangulation, true), "");
    vHandles[3]->exchange(0, 0, -1);
    EXPECT_NE(getLinesOfCheck(triangulation, false).find("should be on the negative side"),
              std::string::npos);
}

} // namespace

} // namespace VORN3D::program
