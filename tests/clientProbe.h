#pragma once

#include <cstddef>
#include <vector>

/// What a client sees of the library: the layout of its classes, and whether wrong use is still reported.
struct ClientView
{
    std::vector<std::size_t> vLayout;
    bool bReportsWrongUse;
    std::size_t numTets;
};

ClientView probeWithAssertions();
ClientView probeWithNdebug();
