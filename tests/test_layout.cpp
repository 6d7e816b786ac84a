// Pins the size and field offsets of the public records: the layout is the
// binary interface with applications and must not drift.
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

// BodyPos: field k (from 1) at byte 8(k-1); the integer views share the slots.
static_assert(sizeof(BodyPos) == 296 && offsetof(BodyPos, moon.fx) == 8 * 26);
static_assert(offsetof(BodyPos, i) == 0 && offsetof(BodyPos, f) == 0);
static_assert(sizeof(MeteorInfo) == 136 && offsetof(MeteorInfo, number) == 0 && offsetof(MeteorInfo, code) == 4 && offsetof(MeteorInfo, name) == 8 &&
              offsetof(MeteorInfo, name2) == 40 && offsetof(MeteorInfo, value) == 72 &&
              offsetof(MeteorInfo, intValue) == 112 && offsetof(MeteorInfo, value6) == 120 &&
              offsetof(MeteorInfo, optional) == 128);

static_assert(sizeof(DataFileInfo) == 40 && offsetof(DataFileInfo, count) == 24 &&
              offsetof(DataFileInfo, body) == 36);

static_assert(sizeof(OrbitElm) == 80, "OrbitElm is ten doubles");
static_assert(offsetof(OrbitElm, epoch) == 0 && offsetof(OrbitElm, a) == 8 && offsetof(OrbitElm, e) == 16);
static_assert(offsetof(OrbitElm, incl) == 24 && offsetof(OrbitElm, node) == 32 && offsetof(OrbitElm, peri) == 40);
static_assert(sizeof(PlanetPhysical) == 96 && offsetof(PlanetPhysical, eqRadius) == 8 && offsetof(PlanetPhysical, w1) == 88);
static_assert(sizeof(NpJupiter) == 56 && sizeof(NpSaturn) == 56 && offsetof(NpSaturn, cm3) == 48);
static_assert(offsetof(OrbitElm, m) == 48 && offsetof(OrbitElm, n) == 56 && offsetof(OrbitElm, equinox) == 64);
static_assert(sizeof(CometElements) == 136 && offsetof(CometElements, kind) == 0 && offsetof(CometElements, number) == 4 && offsetof(CometElements, designation) == 8);
static_assert(offsetof(CometElements, perihelionJd) == 40 && offsetof(CometElements, e) == 48 && offsetof(CometElements, q) == 56);
static_assert(offsetof(CometElements, peri) == 64 && offsetof(CometElements, node) == 72 && offsetof(CometElements, incl) == 80);
static_assert(offsetof(CometElements, equinox) == 88 && offsetof(CometElements, h) == 96 && offsetof(CometElements, slope) == 104);
static_assert(offsetof(CometElements, epoch) == 112 && offsetof(CometElements, validFrom) == 120 && offsetof(CometElements, validTo) == 128);
static_assert(sizeof(((CometElements *)nullptr)->designation) == 32);
static_assert(sizeof(CometTailPoint) == 64 && offsetof(CometTailPoint, beta) == 40 && offsetof(CometTailPoint, r) == 56);
static_assert(sizeof(CometTail) == 80 && offsetof(CometTail, antisolarPa) == 64 && offsetof(CometTail, aberration) == 72);
static_assert(sizeof(MoonPhase) == 16 && offsetof(MoonPhase, phase) == 0 && offsetof(MoonPhase, jd) == 8);
