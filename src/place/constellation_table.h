// The constellation boundary strips at B1875.0 (constellation_table.cpp).
#pragma once

#include <cstdint>

namespace kvx {

// One boundary strip: the part of the sky north of southBound (north polar
// distance in arcminutes) with raLow <= ra < raHigh (seconds of time) that no
// earlier row claimed, in constellation `code` (0..88).
struct ConstellationBound {
    int32_t southBound;
    int32_t raLow;
    int32_t raHigh;
    int32_t code;
};

inline constexpr int kConstellationBoundCount = 401;
inline constexpr int kConstellationCount = 89;

// Sorted by southBound, north to south; first match wins.
extern const ConstellationBound kConstellationBounds[kConstellationBoundCount];

}  // namespace kvx
