// kvx sun: the Sun's apparent and J2000.0 place, horizon, distance,
// semi-diameter and the orientation of its disc (P, B0, L0).
#include <cstdio>

#include "commands.h"
#include "report.h"

namespace kvx::cli {

int RunSun(const Args &args) {
    args.ExpectPositional(0, 0);
    Place place;
    ATime t = TimeFromArgs(args, &place);
    const Refraction refraction = RefractionFrom(args);
    BodyPos s;
    CalcSun(&t, &s);
    const Horizon hz = HorizonOfApparent(t, s.f[2], s.f[3], refraction);
    const Source src = SourceOf(-2, t.jde);
    WarnIfOutside("the Sun", src);
    if (args.Flag("json")) {
        std::printf("%s\n", Json()
                                .Num("jd", t.jd)
                                .Num("jde", t.jde)
                                .When(place, t.jd)
                                .Num("ra_deg", s.f[2])
                                .Num("dec_deg", s.f[3])
                                .Num("ra_j2000_deg", s.f[0])
                                .Num("dec_j2000_deg", s.f[1])
                                .Num("ecliptic_longitude_deg", s.f[4])
                                .Num("ecliptic_latitude_deg", s.f[5])
                                .Num("distance_au", s.f[6])
                                .Num("altitude_deg", hz.altitude)
                                .Num("azimuth_deg", hz.azimuth)
                                .Bool("refracted", hz.refracted)
                                .Num("semi_diameter_arcsec", s.f[14] * 3600.0)
                                .Num("p_deg", s.f[15])
                                .Num("b0_deg", s.f[16])
                                .Num("l0_deg", s.f[18])
                                .Array("earth_j2000_au", &s.f[7], 3)
                                .Str("source", src.what)
                                .Bool("source_accuracy_holds", src.holds)
                                .Text()
                                .c_str());
        return 0;
    }
    PrintHeader(place, t.jd);
    std::printf("Sun  JDE %.6f  source %s%s\n", t.jde, src.what.c_str(), src.holds ? "" : " !");
    std::printf("  apparent   RA %s  Dec %s\n", FormatHms(s.f[2], 2).c_str(), FormatDms(s.f[3], 1, true).c_str());
    std::printf("  J2000      RA %s  Dec %s\n", FormatHms(s.f[0], 2).c_str(), FormatDms(s.f[1], 1, true).c_str());
    std::printf("  ecliptic   lon %s  lat %s (mean of date)\n", FormatDms(s.f[4], 1, false).c_str(),
                FormatDms(s.f[5], 1, true).c_str());
    std::printf("  horizon    alt %s  az %s (from north; %s)\n", FormatDms(hz.altitude, 1, true).c_str(),
                FormatDms(hz.azimuth, 1, false).c_str(), hz.refracted ? "refracted" : "geometric, no refraction");
    std::printf("  distance   %.8f AU  semi-diameter %.2f″\n", s.f[6], s.f[14] * 3600.0);
    std::printf("  disk       P %+.2f°  B0 %+.2f°  L0 %.2f°\n", s.f[15], s.f[16], s.f[18]);
    return 0;
}

}  // namespace kvx::cli
