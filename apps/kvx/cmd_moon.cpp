// kvx moon / kvx phases, and the almanac's Moon lines: apparent place,
// horizon, distance, illuminated fraction, age, bright limb and librations;
// the principal phases of a month or a year in local time.
#include <cmath>
#include <cstdio>
#include <string>

#include "commands.h"
#include "math/constants.h"
#include "report.h"

namespace kvx::cli {

namespace {

using kvx::kKmPerAu;

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

Json MoonJson(const MoonNow &m, const Refraction &r) {
    const double *f = m.moon.f;
    const Horizon hz = HorizonOfApparent(m.t, f[2], f[3], r);
    const Source src = SourceOf(-1, m.t.jde);
    WarnIfOutside("the Moon", src);
    Json j;
    j.Num("jd", m.t.jd)
        .Num("jde", m.t.jde)
        .Num("ra_deg", f[2])
        .Num("dec_deg", f[3])
        .Num("ra_j2000_deg", f[0])
        .Num("dec_j2000_deg", f[1])
        .Num("ecliptic_longitude_deg", f[4])
        .Num("ecliptic_latitude_deg", f[5])
        .Num("distance_km", f[6])
        .Num("distance_au", f[6] / kKmPerAu)
        .Num("geocentric_distance_km", f[12])
        .Num("semi_diameter_arcsec", f[7] * 3600.0)
        .Num("azimuth_deg", hz.azimuth)
        .Num("altitude_deg", hz.altitude)
        .Bool("refracted", hz.refracted)
        .Num("illuminated_fraction", f[17])
        .Num("bright_limb_deg", degmal(f[18]))
        .Num("age_days", m.age)
        .Num("libration_longitude_deg", f[19])
        .Num("libration_latitude_deg", f[20])
        .Num("axis_deg", f[16])
        .Str("source", src.what)
        .Bool("source_accuracy_holds", src.holds);
    return j;
}

}  // namespace

void MoonAlmanacText(const AlmanacContext &c) {
    const MoonNow m = Compute(c.date, &c.place.observer);
    BodyLine line{"Moon", m.moon, false, -1};
    PrintBodyLine(m.t, line);
    const double *f = m.moon.f;
    std::printf("            illuminated %.3f  age %.2f d  bright limb %.1f°  libration %+.2f° %+.2f°\n", f[17],
                m.age, degmal(f[18]), f[19], f[20]);
}

void MoonAlmanacJson(const AlmanacContext &c, Json &out) {
    out.Raw("moon", MoonJson(Compute(c.date, &c.place.observer), Refraction{}).Text());
}

int RunMoon(const Args &args) {
    args.ExpectPositional(0, 0);
    Place place = PlaceFrom(args);
    const Refraction refraction = RefractionFrom(args);
    const ADate date = DateOption(args, &place);
    const MoonNow m = Compute(date, &place.observer);
    if (args.Flag("json")) {
        std::printf("%s\n", MoonJson(m, refraction).When(place, m.t.jd).Text().c_str());
        return 0;
    }
    const double *f = m.moon.f;
    const Horizon hz = HorizonOfApparent(m.t, f[2], f[3], refraction);
    const Source src = SourceOf(-1, m.t.jde);
    WarnIfOutside("the Moon", src);
    PrintHeader(place, m.t.jd);
    std::printf("Moon  JDE %.6f  source %s%s\n", m.t.jde, src.what.c_str(), src.holds ? "" : " !");
    std::printf("  apparent   RA %s  Dec %s (topocentric)\n", FormatHms(f[2], 2).c_str(), FormatDms(f[3], 1, true).c_str());
    std::printf("  J2000      RA %s  Dec %s\n", FormatHms(f[0], 2).c_str(), FormatDms(f[1], 1, true).c_str());
    std::printf("  ecliptic   lon %s  lat %s (mean of date)\n", FormatDms(f[4], 1, false).c_str(),
                FormatDms(f[5], 1, true).c_str());
    std::printf("  horizon    alt %s  az %s (from north; %s)\n", FormatDms(hz.altitude, 1, true).c_str(),
                FormatDms(hz.azimuth, 1, false).c_str(), hz.refracted ? "refracted" : "geometric, no refraction");
    std::printf("  distance   %.1f km (geocentric %.1f km)  semi-diameter %.1f″\n", f[6], f[12], f[7] * 3600.0);
    std::printf("  phase      illuminated %.4f  bright limb %.2f°  age %.3f d\n", f[17], degmal(f[18]), m.age);
    std::printf("  libration  longitude %+.3f°  latitude %+.3f°  axis %+.3f°\n", f[19], f[20], f[16]);
    return 0;
}

}  // namespace kvx::cli
