// The constellation of a direction on the sky.
//
// The IAU boundaries (Delporte 1930) run along arcs of constant right
// ascension and declination at the equinox of B1875.0, so a direction is
// referred to that equinox and then looked up in a table of boundary strips
// (Roman 1987, PASP 99, 695; constellation_table.cpp).
#include "place/constellation.h"

#include <cmath>

#include "kvxlib.h"
#include "math/constants.h"
#include "place/constellation_table.h"

namespace kvx {

namespace {

// The search may start at row pd / 541: with the table as it stands, no row
// before that one has a south bound of pd or more, so none of them could
// match (the tests check this for every polar distance, 0..10800).
constexpr int32_t kStartRowDivisor = 541;

}  // namespace

int32_t ConstellationAtB1875(double ra, double dec) {
    // Reduce the right ascension: q truncated toward zero; a negative value
    // is lifted by one more turn, so an exact negative multiple of 360 (and
    // a negative value too small to survive the addition) becomes 360.
    const double q = Trunc(ra / 360.0);
    double a;
    if (ra >= 0.0) {
        a = ra - 360.0 * q;
    } else {
        a = ra - 360.0 * q + 360.0;
    }
    if (dec > 90.0 || dec < -90.0) return -1;
    // Not a number, or too large to reduce into one turn.
    if (std::isnan(dec) || !(a >= 0.0 && a <= 360.0)) return -1;

    // Seconds of time, truncated; polar distance in arcminutes, rounded up
    // (a value less than 1e-7 above a whole number stays at that number).
    const int32_t raSec = static_cast<int32_t>(a * 3600.0 / 15.0);
    const int32_t pd = static_cast<int32_t>((90.0 - dec) * 60.0 + 0.9999999);

    const int32_t start = pd / kStartRowDivisor;
    if (start >= kConstellationBoundCount) return -1;
    for (int32_t i = start; i < kConstellationBoundCount; ++i) {
        const ConstellationBound &row = kConstellationBounds[i];
        if (row.southBound >= pd && row.raLow <= raSec && raSec < row.raHigh) return row.code;
    }
    return -1;
}

}  // namespace kvx

extern "C" int32_t GetConstellation(const double *ad, double epochJd) {
    if (!ad) return -1;
    double ra = ad[0];
    double dec = ad[1];
    if (epochJd != kvx::kB1875Jd) {
        // The precession J2000.0 -> B1875.0, computed once.
        struct J2000ToB1875 {
            double m[9];
            J2000ToB1875() { GetPrecMtx(kvx::kJ2000, kvx::kB1875Jd, m); }
        };
        static const J2000ToB1875 precession;
        const double *m = precession.m;
        const Ad in{ra, dec};
        Dc v{};
        Dc w{};
        Ad out{};
        AdToDc(&in, &v);
        RotateDc(&v, m, &w);
        DcToAd(&w, &out);
        ra = out.a;
        dec = out.d;
    }
    return kvx::ConstellationAtB1875(ra, dec);
}
