// Pins the size and field offsets of the public records: the layout is the
// binary interface with applications and must not drift.
#include <gtest/gtest.h>

#include <cstddef>

#include "kvxlib.h"

static_assert(sizeof(Dc) == 24 && offsetof(Dc, x) == 0 && offsetof(Dc, y) == 8 && offsetof(Dc, z) == 16);
static_assert(sizeof(Ad) == 16 && offsetof(Ad, a) == 0 && offsetof(Ad, d) == 8);
static_assert(sizeof(Deg60) == 24 && offsetof(Deg60, sign) == 0 && offsetof(Deg60, deg) == 4 &&
              offsetof(Deg60, min) == 8 && offsetof(Deg60, sec) == 16);
static_assert(sizeof(Hour60) == 16 && offsetof(Hour60, hour) == 0 && offsetof(Hour60, min) == 4 &&
              offsetof(Hour60, sec) == 8);
static_assert(sizeof(Fx) == 4 && sizeof(FxVec) == 12 && offsetof(FxVec, y) == 4 && offsetof(FxVec, z) == 8);
static_assert(sizeof(ADate) == 40 && offsetof(ADate, year) == 0 && offsetof(ADate, month) == 4 &&
              offsetof(ADate, day) == 8 && offsetof(ADate, hour) == 12 && offsetof(ADate, minute) == 16 &&
              offsetof(ADate, second) == 24 && offsetof(ADate, tz) == 32);
static_assert(sizeof(Observer) == 24 && offsetof(Observer, longitude) == 8 && offsetof(Observer, height) == 16);

// ATime begins with the ADate fields at the same offsets.
static_assert(offsetof(ATime, year) == offsetof(ADate, year) && offsetof(ATime, minute) == offsetof(ADate, minute) &&
              offsetof(ATime, second) == offsetof(ADate, second) && offsetof(ATime, tz) == offsetof(ADate, tz));
static_assert(offsetof(ATime, obsLatitude) == 40 && offsetof(ATime, obsLongitude) == 48 &&
              offsetof(ATime, obsHeight) == 56 && offsetof(ATime, lst) == 64 && offsetof(ATime, jd) == 72 &&
              offsetof(ATime, jde) == 80 && offsetof(ATime, t) == 88 && offsetof(ATime, t2) == 96 &&
              offsetof(ATime, eps) == 104 && offsetof(ATime, epsTrue) == 112 && offsetof(ATime, eqToEcl) == 120 &&
              offsetof(ATime, eclToEq) == 192 && offsetof(ATime, precToJ2000) == 264 &&
              offsetof(ATime, precFromJ2000) == 336 && offsetof(ATime, nutation) == 408 &&
              offsetof(ATime, nutMtx) == 424 && offsetof(ATime, nutInvMtx) == 496 && offsetof(ATime, obsPos) == 568);
static_assert(sizeof(ATime) == 592);

// BodyPos: field k at byte 8(k-1); the integer views share the slots.
static_assert(sizeof(BodyPos) == 296);
static_assert(offsetof(BodyPos, moon.fx) == 8 * 26);

static_assert(sizeof(DataFileInfo) == 40 && offsetof(DataFileInfo, count) == 24 &&
              offsetof(DataFileInfo, body) == 36);

TEST(Layout, BodyPosFieldAccessors) {
    BodyPos bp{};
    KVX_BODYPOS_FIELD(bp, 7) = 1.5;
    KVX_BODYPOS_INT(bp, 37) = -12;
    bp.moon.fx.y = 77;
    const unsigned char *base = reinterpret_cast<const unsigned char *>(&bp);
    EXPECT_EQ(reinterpret_cast<const unsigned char *>(&KVX_BODYPOS_FIELD(bp, 7)) - base, 48);
    EXPECT_EQ(reinterpret_cast<const unsigned char *>(&KVX_BODYPOS_INT(bp, 37)) - base, 288);
    EXPECT_EQ(bp.i[53], 77);
    EXPECT_EQ(bp.f[6], 1.5);
}
