// A client's NDEBUG changes neither the layout of the library's classes nor what the library checks.
#include "clientProbe.h"

#include "vorn3d/version.h"

#include <gtest/gtest.h>

TEST(ClientFlags, ChangeNothing)
{
    const ClientView with = probeWithAssertions(), without = probeWithNdebug();
    EXPECT_EQ(with.vLayout, without.vLayout);
    EXPECT_EQ(with.numTets, without.numTets);
    EXPECT_GE(with.numTets, 5u * 6 * 6 * 6);
    EXPECT_TRUE(with.bReportsWrongUse);
    EXPECT_TRUE(without.bReportsWrongUse);
}
