// Constellation of a direction referred to the equinox of B1875.0.
#pragma once

#include <cstdint>

namespace kvx {

// Julian date of the equinox of the constellation boundaries (1875 Jan 1.0).
inline constexpr double kB1875Jd = 2405888.5;

// Constellation code (0..88) of right ascension ra and declination dec in
// degrees at B1875.0, or -1: ra is first reduced into 0..360 (an exact
// negative multiple of 360 reduces to 360, which no strip contains), dec
// outside -90..90 or not a number gives -1.
int32_t ConstellationAtB1875(double ra, double dec);

}  // namespace kvx
