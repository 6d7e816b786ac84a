// kvx (almanac): the day's almanac for a place, by default Tokyo and now.
// The header (place, local time, Julian date) is printed here; the other
// sections come from the files of their commands.
#include <cmath>
#include <cstdio>
#include <string>

#include "commands.h"

namespace kvx::cli {

namespace {

void HeaderText(const AlmanacContext &c) {
    const Observer &o = c.place.observer;
    PrintHeader(c.place, c.jd);
    std::printf("kvx almanac\n");
    std::printf("  place     %.4f %s  %.4f %s  %.0f m\n", std::fabs(o.latitude), o.latitude >= 0 ? "N" : "S",
                std::fabs(o.longitude), o.longitude >= 0 ? "E" : "W", o.height);
    std::printf("  local     %04d-%02d-%02d %02d:%02d:%02d  UTC%s  %s\n", c.date.year, c.date.month, c.date.day,
                c.date.hour, c.date.minute, static_cast<int>(c.date.second), FormatZone(c.place.tz).c_str(),
                WeekdayName(c.jd, c.place.tz));
    std::printf("  JD        %.6f (UT)\n", c.jd);
    std::printf("  MJD       %.6f\n", GetMjd(c.jd));
}

void HeaderJson(const AlmanacContext &c, Json &out) {
    Json place;
    place.Num("latitude_deg", c.place.observer.latitude)
        .Num("longitude_deg", c.place.observer.longitude)
        .Num("height_m", c.place.observer.height);
    out.Raw("place", place.Text())
        .When(c.place, c.jd)
        .Str("weekday", WeekdayName(c.jd, c.place.tz))
        .Num("jd", c.jd)
        .Num("mjd", GetMjd(c.jd));
}

struct AlmanacSection {
    void (*text)(const AlmanacContext &c);
    void (*json)(const AlmanacContext &c, Json &out);
};

// The almanac, section by section, in the order printed.
const AlmanacSection kSections[] = {
    {HeaderText, HeaderJson},
    {TimeAlmanacText, TimeAlmanacJson},
    {PlanetsAlmanacText, PlanetsAlmanacJson},
    {MoonAlmanacText, MoonAlmanacJson},
    {GalileansAlmanacText, GalileansAlmanacJson},
    {RiseSetAlmanacText, RiseSetAlmanacJson},
};

}  // namespace

ATime AlmanacTime(const AlmanacContext &c) {
    ATime t;
    SetATimeJd(c.jd, c.place.tz, &c.place.observer, &t);
    return t;
}

int RunAlmanac(const Args &args) {
    if (!args.Positional().empty()) throw UsageError{"unexpected argument '" + args.Positional()[0] + "'"};
    AlmanacContext ctx{};
    ctx.place = PlaceFrom(args);
    ctx.date = DateOption(args, &ctx.place);
    ctx.jd = GetJd(&ctx.date);
    if (args.Flag("json")) {
        Json out;
        for (const auto &s : kSections) s.json(ctx, out);
        std::printf("%s\n", out.Text().c_str());
    } else {
        for (const auto &s : kSections) s.text(ctx);
    }
    return 0;
}

}  // namespace kvx::cli
