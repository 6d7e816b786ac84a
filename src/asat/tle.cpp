// Two-line element sets: fixed-column extraction into Elm, and the launch
// and drag-lifetime test of an element set.
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "kvxlib.h"
#include "math/constants.h"

namespace {

constexpr std::size_t kLineWidth = 71;

// Columns first..last (1-based, inclusive) of a NUL-terminated field of at
// most kLineWidth bytes, copied into a terminated scratch buffer. The copy
// stops at the field's terminator, so a short line gives a short (possibly
// empty) text and the conversions below read zeros.
struct Columns {
    char text[kLineWidth + 1];
    Columns(const char *line, int first, int last) {
        text[0] = '\0';
        if (first < 1 || last < first || last - first + 1 >= static_cast<int>(kLineWidth)) std::abort();
        const std::size_t len = strnlen(line, kLineWidth);
        std::size_t n = 0;
        for (std::size_t i = static_cast<std::size_t>(first - 1); i < static_cast<std::size_t>(last) && i < len; ++i)
            text[n++] = line[i];
        text[n] = '\0';
    }
};

int32_t IntField(const char *line, int first, int last) {
    const Columns c(line, first, last);
    const long v = std::strtol(c.text, nullptr, 10);
    return static_cast<int32_t>(v);  // at most 69 digits' worth of text: strtol saturates, the cast keeps it defined
}

double RealField(const char *line, int first, int last) {
    const Columns c(line, first, last);
    return std::strtod(c.text, nullptr);
}

void CopyField(const char *line, int first, int last, char *out) {
    const Columns c(line, first, last);
    const std::size_t width = static_cast<std::size_t>(last - first + 1);
    std::size_t n = std::strlen(c.text);
    std::memcpy(out, c.text, n);
    for (; n < width; ++n) out[n] = '\0';
}

double Radians(double degrees) { return degrees * 3.141592653589793 / 180.0; }

// Julian date of day 0.0 of January of the epoch year plus the day count,
// from v = day + 1000 yy: the Gregorian Julian-day formula with the month
// taken as the 13th of the previous year (Meeus, Astronomical Algorithms,
// ch. 7).
double EpochJd(double v) {
    const double yy = kvx::Trunc(v / 1000.0);
    const double y = (yy < 50.0 ? 1999.0 : 1899.0) + yy;
    const double a = kvx::Trunc(y / 100.0);
    const double b = 2.0 - a + kvx::Trunc(a / 4.0);
    return kvx::Trunc(365.25 * y) + 428.0 + 1720994.5 + b + (v - 1000.0 * yy);
}

}  // namespace

extern "C" int32_t ASatTleToElm(const TleLines *input, Elm *output) {
    if (!input || !output) return 1;
    const char *l1 = input->line1;
    const char *l2 = input->line2;
    Elm &e = *output;

    // Name: the whole line, cut after its last non-blank character.
    {
        const std::size_t len = strnlen(input->name, sizeof e.name - 1);
        std::size_t n = len;
        while (n > 0 && (input->name[n - 1] == ' ' || input->name[n - 1] == '\t' || input->name[n - 1] == '\r' ||
                         input->name[n - 1] == '\n'))
            --n;
        std::memset(e.name, 0, sizeof e.name);
        std::memcpy(e.name, input->name, n);
    }
    e.catalogNumber = IntField(l1, 3, 7);
    e.launchYear = IntField(l1, 10, 11);
    e.launchNumber = IntField(l1, 12, 14);
    CopyField(l1, 15, 17, e.launchPiece);
    e.inclination = Radians(RealField(l2, 9, 16));
    e.raan = Radians(RealField(l2, 18, 25));
    e.eccentricity = IntField(l2, 27, 33) * 1e-7;
    e.argPerigee = Radians(RealField(l2, 35, 42));
    e.meanAnomaly = Radians(RealField(l2, 44, 51));
    e.meanMotion = RealField(l2, 53, 63) * 0.004363323129985824;
    e.revNumber = IntField(l2, 64, 68);
    e.epoch = EpochJd(RealField(l1, 21, 32) + 1000.0 * IntField(l1, 19, 20));
    e.ndot = RealField(l1, 34, 43);
    // "12345-4" in cols 54-61: mantissa 12345 with an implied leading point.
    const double mantissa = RealField(l1, 54, 59);
    const int32_t exponent = IntField(l1, 60, 61);
    e.bstar = mantissa * std::pow(10.0, static_cast<double>(exponent) - 5.0);
    CopyField(l1, 63, 63, e.ephemerisType);
    e.ephemerisType[1] = '\0';
    e.elementSetNumber = IntField(l1, 65, 68);
    std::memset(e.line1, 0, sizeof e.line1);
    std::memset(e.line2, 0, sizeof e.line2);
    std::memcpy(e.line1, l1, strnlen(l1, 70));
    std::memcpy(e.line2, l2, strnlen(l2, 70));
    return 1;
}

// The lifetime rule is an empirical fit against q = 42241.09773 n^-1.5
// (1 - e) (n in rev/day), kept as it stands: its two pieces do not meet at
// q = 650.
extern "C" int32_t ASatIsElmValid(double jd, const Elm *elm) {
    // The calendar conversion takes whole days to int32: no date beyond a
    // billion days is meaningful, and NaN never is.
    if (!elm || !(std::fabs(jd) < 1e9)) return 0;
    int32_t year = 0, month = 0;
    double day = 0.0;
    JdToDate(jd, &year, &month, &day);
    const int32_t launch = elm->launchYear + (elm->launchYear <= 55 ? 2000 : 1900);
    if (year < launch) return 0;
    if (elm->bstar < 0.0001) return 1;
    const double n = elm->meanMotion * 1440.0 / 6.283185307179586;
    const double q = 42241.09773 / (n * std::sqrt(n)) * (1.0 - elm->eccentricity);
    if (q >= 680.0) return 1;
    const double life = (q < 650.0 ? q * 0.75 - 474.5 : q * 3.0 - 1920.0) / elm->bstar / 1440.0;
    return std::fmax(life, 1.0) > std::fabs(jd - elm->epoch) ? 1 : 0;
}
