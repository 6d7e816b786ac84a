// Nutation in longitude and obliquity, from a loaded JPL DE ephemeris when
// it carries nutations, else from the truncated IAU 1980 series; and the
// nutation matrix from the mean to the true equator of date.
#include "kvxlib.h"
#include "math/constants.h"
#include "math/vec3.h"
#include "solar/ephem/jpl_query.h"
#include "time/nutation.h"

namespace {

// Body code of the nutation angles in the DE reader.
constexpr int kDeNutations = -30;

}  // namespace

extern "C" void GetNutationParam(double jde, double out[2]) {
    if (!out) return;
    double pos[3];
    if (kvx::jpl::Query(kDeNutations, jde, 0, pos, nullptr)) {
        out[0] = kvx::RadToDeg(pos[0]);
        out[1] = kvx::RadToDeg(pos[1]);
        return;
    }
    if (jde < 1355795.0) jde = 1355795.0;
    if (jde > 3547295.0) jde = 3547295.0;
    const double t = (jde - kvx::kJ2000) / kvx::kDaysPerCentury;
    double sums[2];
    kvx::nut::Iau1980Truncated(t, sums);
    out[0] = sums[0] / 3600.0 * 0.0001;
    out[1] = sums[1] / 3600.0 * 0.0001;
}

extern "C" void GetNutationMtx(const double nutation[2], double eps, double out[9]) {
    if (!nutation || !out) return;
    double m[9];
    kvx::vec3::RotationX(-(eps + nutation[1]), m);
    kvx::vec3::TurnZ(m, -nutation[0]);
    kvx::vec3::TurnX(m, eps);
    for (int k = 0; k < 9; ++k) out[k] = m[k];
}
