#pragma once

#include "Export.h"
#include "Point3.h"

#include <cstddef>
#include <vector>

namespace VORN3D
{

/// Appends num uniformly distributed numbers of [min, max) to vOut, in steps of (max - min) / 32768. The same
/// seed gives the same numbers on every platform; seed 0 gives fresh ones on every call. Throws VornException
/// unless min < max. May be called from several threads.
VORN3D_EXPORT void generateRandomNumbers(std::size_t num, double min, double max, std::vector<double>& vOut,
                                         unsigned int seed);

/// Appends ceil(2 num / 3) points to vOut (two for three wanted, so that earlier results stay comparable),
/// whose coordinates are consecutive triples of what generateRandomNumbers() gives for the same bounds and
/// seed. They lie on a lattice of 32768 steps an axis. Throws VornException unless min < max. May be called
/// from several threads.
VORN3D_EXPORT void generateRandomPoints(std::size_t num, double min, double max, std::vector<Point3>& vOut,
                                        unsigned int seed);

} // namespace VORN3D
