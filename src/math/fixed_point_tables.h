// Lookup tables of the fixed-point functions (30 fraction bits), generated
// by tools/gen_fixed_point_tables.cpp into fixed_point_tables.cpp.
#pragma once
#include <cstdint>

namespace kvx::fxtables {

inline constexpr int kCosCount = 6435;    // abscissa i * 2^18, up to pi/2
inline constexpr int kSqrtCount = 4097;   // abscissa i * 2^18, up to 1
inline constexpr int kUSqrtCount = 10108; // abscissa i * 2^18 unsigned, up to (pi/2)^2
inline constexpr int kAcosACount = 4033;  // i * 2^18, below 0.984375
inline constexpr int kAcosBCount = 481;   // 0x3F000000 + i * 2^15, below 0.9990234375
inline constexpr int kAcosCCount = 511;   // 0x3FF00000 + i * 2^11, below 1 - 2^-18
inline constexpr int kAcosDCount = 257;   // 0x3FFFF000 + i * 2^4, up to 1

extern const int32_t kCos[kCosCount];
extern const int32_t kSqrt[kSqrtCount];
extern const uint32_t kUSqrt[kUSqrtCount];
extern const int32_t kAcosA[kAcosACount];
extern const int32_t kAcosB[kAcosBCount];
extern const int32_t kAcosC[kAcosCCount];
extern const int32_t kAcosD[kAcosDCount];

}  // namespace kvx::fxtables
