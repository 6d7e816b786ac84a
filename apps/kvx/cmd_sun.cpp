// kvx sun: the Sun's apparent and J2000.0 place, horizon, distance,
// semi-diameter and the orientation of its disc (P, B0, L0).
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "commands.h"
#include "report.h"

namespace kvx::cli {

int RunSun(const Args &args) {
    args.ExpectPositional(0, 0);
    Place place;
    ATime t = TimeFromArgs(args, &place);
    BodyPos s;
    CalcSun(&t, &s);
    const Horizon hz = HorizonOf(t, s.f[0], s.f[1]);
    const double alt = hz.altitude, az = hz.azimuth;
    if (args.Flag("json")) {
        std::printf("%s\n", Json()
                                .Num("jd", t.jd)
                                .Num("jde", t.jde)
                                .Num("ra", s.f[2])
                                .Num("dec", s.f[3])
                                .Num("raJ2000", s.f[0])
                                .Num("decJ2000", s.f[1])
                                .Num("longitude", s.f[4])
                                .Num("latitude", s.f[5])
                                .Num("distance", s.f[6])
                                .Num("altitude", alt)
                                .Num("azimuth", az)
                                .Num("semiDiameter", s.f[14] * 3600.0)
                                .Num("P", s.f[15])
                                .Num("B0", s.f[16])
                                .Num("L0", s.f[18])
                                .Array("earthJ2000", &s.f[7], 3)
                                .Text()
                                .c_str());
        return 0;
    }
    std::printf("Sun  JD %.6f (UT)  JDE %.6f\n", t.jd, t.jde);
    std::printf("  apparent   RA %s  Dec %s\n", FormatHms(s.f[2], 2).c_str(), FormatDms(s.f[3], 1, true).c_str());
    std::printf("  J2000      RA %s  Dec %s\n", FormatHms(s.f[0], 2).c_str(), FormatDms(s.f[1], 1, true).c_str());
    std::printf("  ecliptic   lon %.6f  lat %+.6f (mean of date)\n", s.f[4], s.f[5]);
    std::printf("  horizon    alt %+.3f  az %.3f\n", alt, az);
    std::printf("  distance   %.8f AU  semi-diameter %.2f\"\n", s.f[6], s.f[14] * 3600.0);
    std::printf("  disk       P %+.2f  B0 %+.2f  L0 %.2f\n", s.f[15], s.f[16], s.f[18]);
    return 0;
}

}  // namespace kvx::cli
