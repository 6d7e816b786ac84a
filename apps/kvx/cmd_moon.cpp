// kvx moon / kvx phases, and the almanac's Moon lines: apparent place,
// horizon, distance, illuminated fraction, age, bright limb and librations;
// the principal phases of a month or a year in local time.
#include <cmath>
#include <cstdio>
#include <string>

#include "commands.h"

namespace kvx::cli {

namespace {

const char *const kPhaseNames[4] = {"new Moon", "first quarter", "full Moon", "last quarter"};

struct MoonNow {
    ATime t;
    BodyPos sun;
    BodyPos moon;
    double age;
};

MoonNow Compute(const ADate &date, const Observer *observer) {
    MoonNow m{};
    SetATimeDate(&date, observer, &m.t);
    CalcSun(&m.t, &m.sun);
    CalcMoon(&m.t, &m.moon, &m.sun);
    m.age = GetMoonAge(m.t.jde, &m.sun, &m.moon);
    return m;
}

Json MoonJson(const MoonNow &m) {
    const double *f = m.moon.f;
    Json j;
    j.Num("jd", m.t.jd)
        .Num("jde", m.t.jde)
        .Num("ra", f[2])
        .Num("dec", f[3])
        .Num("raJ2000", f[0])
        .Num("decJ2000", f[1])
        .Num("longitude", f[4])
        .Num("latitude", f[5])
        .Num("distance", f[6])
        .Num("geocentricDistance", f[12])
        .Num("semiDiameter", f[7] * 3600.0)
        .Num("azimuth", NorthAzimuth(f[14]))
        .Num("altitude", f[15])
        .Num("illuminated", f[17])
        .Num("brightLimb", f[18])
        .Num("age", m.age)
        .Num("librationLongitude", f[19])
        .Num("librationLatitude", f[20])
        .Num("axis", f[16])
        .Int("fromFile", IsValidMoonXyzFile());
    return j;
}

}  // namespace

void MoonAlmanacText(const AlmanacContext &c) {
    const MoonNow m = Compute(c.date, &c.place.observer);
    const double *f = m.moon.f;
    std::printf("  Moon      RA %s  Dec %s  alt %+6.2f  az %6.2f  dist %9.1f km\n", FormatHms(f[2], 2).c_str(),
                FormatDms(f[3], 1, true).c_str(), f[15], NorthAzimuth(f[14]), f[6]);
    std::printf("            illuminated %.3f  age %.2f d  bright limb %.1f°  libration %+.2f° %+.2f°\n", f[17],
                m.age, f[18], f[19], f[20]);
}

void MoonAlmanacJson(const AlmanacContext &c, Json &out) {
    out.Raw("moon", MoonJson(Compute(c.date, &c.place.observer)).Text());
}

int RunMoon(const Args &args) {
    args.ExpectPositional(0, 0);
    const Place place = PlaceFrom(args);
    const ADate date = DateOption(args, place.tz);
    const MoonNow m = Compute(date, &place.observer);
    if (args.Flag("json")) {
        std::printf("%s\n", MoonJson(m).Text().c_str());
        return 0;
    }
    const double *f = m.moon.f;
    std::printf("Moon  JD %.6f (UT)  JDE %.6f  (%s)\n", m.t.jd, m.t.jde,
                IsValidMoonXyzFile() ? "ephemeris file" : "built-in theory");
    std::printf("  apparent   RA %s  Dec %s\n", FormatHms(f[2], 2).c_str(), FormatDms(f[3], 1, true).c_str());
    std::printf("  J2000      RA %s  Dec %s\n", FormatHms(f[0], 2).c_str(), FormatDms(f[1], 1, true).c_str());
    std::printf("  ecliptic   lon %.6f  lat %+.6f (mean of date)\n", f[4], f[5]);
    std::printf("  horizon    alt %+.3f  az %.3f (from north)\n", f[15], NorthAzimuth(f[14]));
    std::printf("  distance   %.1f km (geocentric %.1f km)  semi-diameter %.1f\"\n", f[6], f[12], f[7] * 3600.0);
    std::printf("  phase      illuminated %.4f  bright limb %.2f°  age %.3f d\n", f[17], f[18], m.age);
    std::printf("  libration  longitude %+.3f°  latitude %+.3f°  axis %+.3f°\n", f[19], f[20], f[16]);
    return 0;
}

}  // namespace kvx::cli
