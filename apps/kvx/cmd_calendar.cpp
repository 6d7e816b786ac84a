// kvx calendar: a month grid with the lunisolar date of every day, and the
// month's holidays, solar terms and principal phases of the Moon.
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "calendar_names.h"
#include "commands.h"

namespace kvx::cli {

namespace {

const char *const kPhaseNames[4] = {"new Moon", "first quarter", "full Moon", "last quarter"};

struct DayInfo {
    int day;
    ADate old;     // lunisolar date (month < 0: leap month)
    bool oldKnown;
    int holiday;   // kind, 0 for none
    std::vector<int> terms;  // rows of the solar-term table on this day
};

// "YYYY-MM" with a month 1..12.
void ParseYearMonth(const std::string &text, int *year, int *month) {
    const size_t dash = text.rfind('-');
    if (dash == std::string::npos || dash == 0) throw UsageError{"expected YYYY-MM"};
    *year = ParseYear(text.substr(0, dash));
    const double m = ParseNumber(text.substr(dash + 1), "month");
    if (m != std::floor(m) || m < 1 || m > 12) throw UsageError{"month must be 01 to 12"};
    *month = static_cast<int>(m);
}

std::string ClockText(double jdLocal) {
    ADate d{};
    JdToDate2(jdLocal + 30.0 / 86400.0, &d);  // to the nearest minute
    char buf[16];
    std::snprintf(buf, sizeof buf, "%02d:%02d", d.hour, d.minute);
    return buf;
}

}  // namespace

int RunCalendar(const Args &args) {
    args.ExpectPositional(1, 1);
    int year, month;
    ParseYearMonth(args.Positional()[0], &year, &month);
    const Place place = PlaceFrom(args);
    const double tz = place.tz;
    const bool json = args.Flag("json");

    // The solar-term table of the year, in this zone.
    double hours;
    int code;
    Sekki_CheckDay(year, 1, 1, tz, &hours, &code);
    struct Term {
        int day, id, code;
        double hours;
    };
    std::vector<Term> terms;
    for (int i = 0; i < 35; ++i) {
        Term t{};
        int m;
        t.id = Sekki_GetTableData(i, &m, &t.day, &t.hours, &t.code);
        if (m == month) terms.push_back(t);
    }

    const int length = static_cast<int>(CalcJd(month == 12 ? year + 1 : year, month == 12 ? 1 : month + 1, 1) -
                                        CalcJd(year, month, 1));
    std::vector<DayInfo> days;
    for (int d = 1; d <= length; ++d) {
        DayInfo info{d, ADate{0, 0, 0, 0, 0, 0.0, tz}, false, Holiday_CheckDay(year, month, d), {}};
        const ADate civil{year, month, d, 0, 0, 0.0, tz};
        Calender_NewToOld(&civil, &info.old);
        info.oldKnown = info.old.month != 0;
        for (std::size_t k = 0; k < terms.size(); ++k)
            if (terms[k].day == d) info.terms.push_back(static_cast<int>(k));
        days.push_back(info);
    }

    const ADate request{year, month, 1, 0, 0, 0.0, tz};
    MoonPhase phases[6];
    const int nPhases = GetMoonPhases(&request, phases, 6);

    if (json) {
        std::string items;
        for (const auto &d : days) {
            Json j;
            j.Str("date", DateText(year, month, d.day)).Str("weekday", WeekdayShort(year, month, d.day));
            if (d.oldKnown) {
                Json old;
                old.Int("year", d.old.year)
                    .Int("month", d.old.month < 0 ? -d.old.month : d.old.month)
                    .Raw("leap", d.old.month < 0 ? "true" : "false")
                    .Int("day", d.old.day);
                j.Raw("lunisolar", old.Text());
            } else {
                j.Raw("lunisolar", "null");
            }
            if (d.holiday) {
                j.Raw("holiday", Json().Int("kind", d.holiday).Str("name", HolidayName(d.holiday)).Text());
            } else {
                j.Raw("holiday", "null");
            }
            std::string termItems;
            for (const int k : d.terms) {
                const Term &t = terms[k];
                Json tj;
                tj.Int("id", t.id)
                    .Str("name", TermName(t.id))
                    .Raw("longitude_deg", t.code >= 0 ? std::to_string(t.code) : "null")
                    .Raw("local_time", t.code >= 0 ? JsonString(ClockHoursText(t.hours)) : "null");
                termItems += (termItems.empty() ? "" : ",") + tj.Text();
            }
            j.Raw("terms", "[" + termItems + "]");
            items += (items.empty() ? "" : ",") + j.Text();
        }
        std::string phaseItems;
        for (int i = 0; i < nPhases; ++i) {
            ADate local{};
            JdToDate2(phases[i].jd + tz / 24.0, &local);
            local.tz = tz;
            Json pj;
            pj.Int("phase", phases[i].phase)
                .Str("name", kPhaseNames[phases[i].phase & 3])
                .Num("jd", phases[i].jd)
                .Str("local", FormatDate(local));
            phaseItems += (phaseItems.empty() ? "" : ",") + pj.Text();
        }
        std::printf("%s\n", Json()
                                .Int("year", year)
                                .Int("month", month)
                                .Num("tz_hours", tz)
                                .Raw("days", "[" + items + "]")
                                .Raw("moon_phases", "[" + phaseItems + "]")
                                .Text()
                                .c_str());
        return 0;
    }

    // The grid: a day, '*' for a holiday or '+' for a solar-term day, then
    // the lunisolar month/day ("L" marks a leap month).
    std::printf("%04d-%02d  (UTC%s)   day  * holiday  + solar term  lunisolar month/day, L = leap month\n", year,
                month, FormatZone(tz).c_str());
    static const char *const kHead[7] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    for (const char *h : kHead) std::printf(" %-9s", h);
    std::printf("\n");
    int column = 0;
    while (std::string(WeekdayShort(year, month, 1)) != kHead[column]) ++column;
    for (int c = 0; c < column; ++c) std::printf(" %-9s", "");
    for (const auto &d : days) {
        const char mark = d.holiday ? '*' : (d.terms.empty() ? ' ' : '+');
        const std::string old =
            d.oldKnown ? OldMonthText(d.old.month) + "/" + std::to_string(d.old.day) : std::string("-");
        char cell[32];
        std::snprintf(cell, sizeof cell, "%2d%c%-6s", d.day, mark, old.c_str());
        std::printf(" %-9s", cell);
        if (++column == 7) {
            std::printf("\n");
            column = 0;
        }
    }
    if (column != 0) std::printf("\n");

    bool any = false;
    for (const auto &d : days)
        if (d.holiday) {
            if (!any) std::printf("\nholidays\n");
            any = true;
            std::printf("  %s %s  %s\n", DateText(year, month, d.day).c_str(), WeekdayShort(year, month, d.day),
                        HolidayName(d.holiday));
        }
    if (!terms.empty()) std::printf("\nsolar terms and seasonal days\n");
    for (const auto &t : terms)
        std::printf("  %s %s %s  %s\n", DateText(year, month, t.day).c_str(), WeekdayShort(year, month, t.day),
                    t.code >= 0 ? ClockHoursText(t.hours).c_str() : "     ", TermName(t.id));
    any = false;
    for (const auto &d : days)
        if (d.oldKnown && d.old.day == 1) {
            if (!any) std::printf("\nlunisolar months\n");
            any = true;
            std::printf("  %s %s  %s %d of %d begins\n", DateText(year, month, d.day).c_str(),
                        WeekdayShort(year, month, d.day), d.old.month < 0 ? "leap month" : "month",
                        std::abs(d.old.month), d.old.year);
        }
    if (nPhases > 0) std::printf("\nMoon phases\n");
    for (int i = 0; i < nPhases; ++i) {
        ADate local{};
        JdToDate2(phases[i].jd + tz / 24.0 + 30.0 / 86400.0, &local);
        std::printf("  %s %s %s  %s\n", DateText(local.year, local.month, local.day).c_str(),
                    WeekdayShort(local.year, local.month, local.day),
                    ClockText(phases[i].jd + tz / 24.0).c_str(), kPhaseNames[phases[i].phase & 3]);
    }
    return 0;
}

}  // namespace kvx::cli
