// kvx time DATE: the whole time-and-observer record of an instant and place;
// and the almanac's time-scale lines (Delta T, TT, sidereal time, obliquity).
#include <cstdio>
#include <string>

#include "commands.h"

namespace kvx::cli {

namespace {

double DeltaTSeconds(const ATime &a) { return (a.jde - a.jd) * 86400.0; }

}  // namespace

void TimeAlmanacText(const AlmanacContext &c) {
    ATime a;
    SetATimeDate(&c.date, &c.place.observer, &a);
    std::printf("  ΔT        %.2f s\n", DeltaTSeconds(a));
    std::printf("  JDE       %.6f (TT)\n", a.jde);
    std::printf("  LAST      %s  (%.6f°)\n", FormatHms(a.lst, 3).c_str(), a.lst);
    std::printf("  obliquity %s mean, %s true\n", FormatDms(a.eps, 3, false).c_str(), FormatDms(a.epsTrue, 3, false).c_str());
}

void TimeAlmanacJson(const AlmanacContext &c, Json &out) {
    ATime a;
    SetATimeDate(&c.date, &c.place.observer, &a);
    out.Num("deltaT", DeltaTSeconds(a)).Num("jde", a.jde).Num("lst", a.lst).Num("eps", a.eps).Num("epsTrue", a.epsTrue);
}

int RunTime(const Args &args) {
    args.ExpectPositional(1, 1);
    Place place = PlaceFrom(args);
    const ADate date = ParseDate(args.Positional()[0], &place);
    const bool geocentre = args.Flag("geocentre");
    ATime a;
    SetATimeDate(&date, geocentre ? nullptr : &place.observer, &a);
    const ADate local{a.year, a.month, a.day, a.hour, a.minute, a.second, a.tz};

    if (args.Flag("json")) {
        Json j;
        j.DateFields(local)
            .Num("tz", a.tz)
            .Num("obsLatitude", a.obsLatitude)
            .Num("obsLongitude", a.obsLongitude)
            .Num("obsHeight", a.obsHeight)
            .Num("lst", a.lst)
            .Num("jd", a.jd)
            .Num("jde", a.jde)
            .Num("t", a.t)
            .Num("t2", a.t2)
            .Num("eps", a.eps)
            .Num("epsTrue", a.epsTrue)
            .Array("eqToEcl", a.eqToEcl, 9)
            .Array("eclToEq", a.eclToEq, 9)
            .Array("precToJ2000", a.precToJ2000, 9)
            .Array("precFromJ2000", a.precFromJ2000, 9)
            .Array("nutation", a.nutation, 2)
            .Array("nutMtx", a.nutMtx, 9)
            .Array("nutInvMtx", a.nutInvMtx, 9)
            .Array("obsPos", a.obsPos, 3)
            .Num("deltaT", DeltaTSeconds(a));
        std::printf("%s\n", j.Text().c_str());
        return 0;
    }
    PrintHeader(place, a.jd);
    std::printf("local      %s %s\n", FormatDate(local).c_str(), FormatZone(a.tz).c_str());
    if (geocentre)
        std::printf("observer   geocentre (height %.0f m)\n", a.obsHeight);
    else
        std::printf("observer   %.6f° %.6f° %.1f m\n", a.obsLatitude, a.obsLongitude, a.obsHeight);
    std::printf("jd         %.8f (UT)\n", a.jd);
    std::printf("jde        %.8f (TT)\n", a.jde);
    std::printf("ΔT         %.3f s\n", DeltaTSeconds(a));
    std::printf("t          %.10f years from 1975.0\n", a.t);
    std::printf("t2         %.12f centuries from J2000.0\n", a.t2);
    std::printf("lst        %.8f°  %s\n", a.lst, FormatHms(a.lst, 3).c_str());
    std::printf("eps        %.10f°  %s\n", a.eps, FormatDms(a.eps, 3, false).c_str());
    std::printf("epsTrue    %.10f°  %s\n", a.epsTrue, FormatDms(a.epsTrue, 3, false).c_str());
    std::printf("nutation   dpsi %+.4f\"  deps %+.4f\"\n", a.nutation[0] * 3600.0, a.nutation[1] * 3600.0);
    std::printf("obsPos     %+.12e %+.12e %+.12e AU\n", a.obsPos[0], a.obsPos[1], a.obsPos[2]);
    return 0;
}

}  // namespace kvx::cli
