#include "cli.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#if !defined(_WIN32)
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace kvx::cli {

Args::Args(const std::vector<std::string> &words, const std::vector<std::string> &flags) {
    for (size_t i = 0; i < words.size(); ++i) {
        const std::string &w = words[i];
        const bool looksLikeOption = w.size() > 2 && w[0] == '-' && w[1] == '-';
        if (!looksLikeOption) {
            positional_.push_back(w);
            continue;
        }
        std::string name = w.substr(2);
        const size_t eq = name.find('=');
        if (eq != std::string::npos) {
            options_[name.substr(0, eq)] = name.substr(eq + 1);
            continue;
        }
        bool isFlag = false;
        for (const auto &f : flags) isFlag = isFlag || f == name;
        if (isFlag) {
            flags_[name] = true;
        } else {
            if (i + 1 >= words.size()) throw UsageError{"option --" + name + " needs a value"};
            options_[name] = words[++i];
        }
    }
}

bool Args::Flag(const std::string &name) const { return flags_.count(name) != 0; }

std::optional<std::string> Args::Option(const std::string &name) const {
    auto it = options_.find(name);
    if (it == options_.end()) return std::nullopt;
    return it->second;
}

double Args::Number(const std::string &name, double fallback) const {
    auto v = Option(name);
    return v ? ParseNumber(*v, "--" + name) : fallback;
}

void Args::ExpectPositional(size_t min, size_t max) const {
    if (positional_.size() < min) throw UsageError{"missing argument"};
    if (positional_.size() > max) throw UsageError{"unexpected argument '" + positional_[max] + "'"};
}

double ParseNumber(const std::string &text, const std::string &what) {
    const char *s = text.c_str();
    char *end = nullptr;
    const double v = std::strtod(s, &end);
    if (text.empty() || end == s || *end != '\0' || !std::isfinite(v))
        throw UsageError{what + ": not a number: '" + text + "'"};
    return v;
}

namespace {

// The environment variable's value, or null when unset or empty.
const char *Env(const char *name) {
    const char *v = name ? std::getenv(name) : nullptr;
    return v && *v ? v : nullptr;
}

// "9", "-3.5", "+05:30", "-03:00" or "Z": hours east; throws naming `what`.
double ParseZone(const std::string &text, const std::string &what) {
    if (text == "Z" || text == "z") return 0.0;
    const size_t colon = text.find(':');
    double hours;
    if (colon == std::string::npos) {
        hours = ParseNumber(text, what);
    } else {
        if (text.size() != 6 || colon != 3 || (text[0] != '+' && text[0] != '-'))
            throw UsageError{what + ": bad zone '" + text + "' (want hours or ±hh:mm)"};
        const double h = ParseNumber(text.substr(1, 2), what), m = ParseNumber(text.substr(4, 2), what);
        if (m >= 60.0) throw UsageError{what + ": bad zone '" + text + "'"};
        hours = (text[0] == '-' ? -1.0 : 1.0) * (h + m / 60.0);
    }
    if (hours < -14.0 || hours > 14.0) throw UsageError{what + " must lie within -14..+14 hours, not '" + text + "'"};
    return hours;
}

// The system's zone: its name (TZ, else the zoneinfo file /etc/localtime
// points to) for the header line.
std::string SystemZoneName() {
    if (const char *tz = Env("TZ")) return std::string("system (") + (*tz == ':' ? tz + 1 : tz) + ")";
#if !defined(_WIN32)
    char link[512];
    const ssize_t n = readlink("/etc/localtime", link, sizeof link - 1);
    if (n > 0) {
        const std::string target(link, static_cast<size_t>(n));
        const size_t at = target.find("zoneinfo/");
        if (at != std::string::npos) return "system (" + target.substr(at + 9) + ")";
    }
#endif
    return "system";
}

// Offset (hours east) of the system's zone at a Unix time.
double SystemOffsetAt(long long unixSeconds) {
#if defined(_WIN32)
    (void)unixSeconds;
    return GetTimezone();
#else
    const time_t when = static_cast<time_t>(unixSeconds);
    struct tm local {};
    if (!localtime_r(&when, &local)) return 0.0;
    return static_cast<double>(local.tm_gmtoff) / 3600.0;
#endif
}

long long UnixSeconds(double jd) { return std::llround((jd - 2440587.5) * 86400.0); }

// The system zone's offset for a local civil date: the offset at the
// instant the date would be in UTC, corrected once (enough away from the
// hour when clocks change, where the first reading wins).
double SystemOffsetForLocal(const ADate &local) {
    ADate utc = local;
    utc.tz = 0.0;
    const double asUtc = GetJd(&utc);
    const double first = SystemOffsetAt(UnixSeconds(asUtc));
    return SystemOffsetAt(UnixSeconds(asUtc - first / 24.0));
}

// Reads an unsigned decimal number of 1..maxDigits digits at *s.
bool Digits(const char *&s, int maxDigits, long long *out) {
    long long v = 0;
    int n = 0;
    while (*s >= '0' && *s <= '9') {
        if (++n > maxDigits) return false;
        v = v * 10 + (*s++ - '0');
    }
    *out = v;
    return n > 0;
}

std::string YearRange(int first = kMinYear, int last = kMaxYear) { return std::to_string(first) + ".." + std::to_string(last); }

}  // namespace

double RangedNumber(const Args &args, const std::string &name, const char *env, double fallback, double lo, double hi,
                    const char *unit) {
    std::string source = "--" + name, text;
    double v = fallback;
    if (auto o = args.Option(name)) {
        text = *o;
        v = ParseNumber(*o, source);
    } else if (const char *e = Env(env)) {
        source = env;
        text = e;
        v = ParseNumber(e, source);
    } else {
        return fallback;
    }
    if (v < lo || v > hi) {
        char buf[160];
        std::snprintf(buf, sizeof buf, "%s must lie within %g..%g %s, not '%s'", source.c_str(), lo, hi, unit,
                      text.c_str());
        throw UsageError{buf};
    }
    return v;
}

Place PlaceFrom(const Args &args) {
    Place p{};
    p.observer.latitude = RangedNumber(args, "lat", "KVX_LAT", 35.6895, -90.0, 90.0, "degrees");
    p.observer.longitude = RangedNumber(args, "lon", "KVX_LON", 139.6917, -180.0, 180.0, "degrees");
    p.observer.height = RangedNumber(args, "height", "KVX_HEIGHT", 40.0, -1000.0, 100000.0, "metres");
    if (auto tz = args.Option("tz")) {
        p.tz = ParseZone(*tz, "--tz");
        p.zone = "--tz";
    } else if (const char *e = Env("KVX_TZ")) {
        p.tz = ParseZone(e, "KVX_TZ");
        p.zone = "KVX_TZ";
    } else {
        p.systemZone = true;
        p.zone = SystemZoneName();
        p.tz = SystemOffsetAt(static_cast<long long>(std::time(nullptr)));
    }
    return p;
}

double ZoneAt(const Place &place, double jd) {
    return place.systemZone ? SystemOffsetAt(UnixSeconds(jd)) : place.tz;
}

ADate LocalDate(const Place &place, double jd) {
    const double tz = ZoneAt(place, jd);
    ADate d{};
    JdToDate2(jd + tz / 24.0, &d);
    d.tz = tz;
    return d;
}

int ParseYear(const std::string &text, int first, int last) {
    const char *s = text.c_str();
    const bool negative = *s == '-';
    if (*s == '-' || *s == '+') ++s;
    long long y = 0;
    if (!Digits(s, 7, &y) || *s != '\0') {
        if (!text.empty() && text.find_first_not_of("+-0123456789") == std::string::npos)
            throw UsageError{"year '" + text + "' outside the supported years " + YearRange(first, last)};
        throw UsageError{"bad year '" + text + "' (a whole number " + YearRange(first, last) + ")"};
    }
    if (negative) y = -y;
    if (y < first || y > last)
        throw UsageError{"year '" + text + "' outside the supported years " + YearRange(first, last)};
    return static_cast<int>(y);
}

namespace {

// The fields of an ISO 8601 date-time; *zone and *hasZone from a trailing
// "Z" or "±hh:mm".
ADate ParseDateFields(const std::string &text, bool *hasZone, double *zone) {
    const std::string want = "bad date '" + text + "' (want YYYY-MM-DD[Thh:mm[:ss]][Z|±hh:mm])";
    ADate d{};
    const char *s = text.c_str();
    const bool negative = *s == '-';
    if (*s == '-' || *s == '+') ++s;
    long long year = 0, month = 0, day = 0, hour = 0, minute = 0;
    double second = 0.0;
    if (!Digits(s, 7, &year)) {
        if (*s >= '0' && *s <= '9')
            throw UsageError{"year of '" + text + "' outside the supported years " + YearRange()};
        throw UsageError{want};
    }
    if (*s++ != '-' || !Digits(s, 2, &month) || *s++ != '-' || !Digits(s, 2, &day)) throw UsageError{want};
    if (*s == 'T' || *s == ' ') {
        ++s;
        if (!Digits(s, 2, &hour) || *s++ != ':' || !Digits(s, 2, &minute))
            throw UsageError{"bad time in '" + text + "'"};
        if (*s == ':') {
            ++s;
            if (!(*s >= '0' && *s <= '9')) throw UsageError{"bad seconds in '" + text + "'"};
            char *end = nullptr;
            second = std::strtod(s, &end);
            s = end;
        }
    }
    *hasZone = *s != '\0';
    if (*hasZone) *zone = ParseZone(s, "zone of '" + text + "'");
    if (negative) year = -year;
    if (year < kMinYear || year > kMaxYear)
        throw UsageError{"year of '" + text + "' outside the supported years " + YearRange()};
    d.year = static_cast<int32_t>(year);
    d.month = static_cast<int32_t>(month);
    d.day = static_cast<int32_t>(day);
    d.hour = static_cast<int32_t>(hour);
    d.minute = static_cast<int32_t>(minute);
    d.second = second;
    if (!CheckDate(&d) || hour > 23 || minute > 59 || !(second >= 0.0 && second < 61.0))
        throw UsageError{"no such date: '" + text + "'"};
    return d;
}

}  // namespace

ADate ParseDate(const std::string &text, double tz) {
    bool hasZone = false;
    double zone = 0.0;
    ADate d = ParseDateFields(text, &hasZone, &zone);
    d.tz = hasZone ? zone : tz;
    return d;
}

ADate ParseDate(const std::string &text, Place *place) {
    bool hasZone = false;
    double zone = 0.0;
    ADate d = ParseDateFields(text, &hasZone, &zone);
    if (hasZone) {
        place->tz = zone;
        place->systemZone = false;
        place->zone = "date";
    } else if (place->systemZone) {
        place->tz = SystemOffsetForLocal(d);
    }
    d.tz = place->tz;
    return d;
}

ADate DateOption(const Args &args, double tz) {
    if (auto text = args.Option("date")) return ParseDate(*text, tz);
    ADate now{};
    GetNowDate(&now, 0.0, tz);
    return now;
}

ADate DateOption(const Args &args, Place *place) {
    if (auto text = args.Option("date")) return ParseDate(*text, place);
    ADate utc{};
    GetNowDate(&utc, 0.0, 0.0);
    return LocalDate(*place, GetJd(&utc));
}

ADate LocalSecond(double jd, double tz) {
    // Half a second added, then the seconds truncated: rounding the count of
    // seconds first and converting back would land a hair below the whole
    // second (a Julian date near 2.46e6 resolves only ~40 microseconds) and
    // print the second before.
    ADate d{};
    JdToDate2(jd + tz / 24.0 + 0.5 / 86400.0, &d);
    d.second = std::floor(d.second);
    return d;
}

std::string LocalClock(double jd, double tz) {
    const ADate d = LocalSecond(jd, tz);
    char buf[48];
    std::snprintf(buf, sizeof buf, "%s%04d-%02d-%02d %02d:%02d:%02d", d.year < 0 ? "-" : "", std::abs(d.year), d.month,
                  d.day, d.hour, d.minute, static_cast<int>(d.second));
    return buf;
}

std::string IsoTime(double jd, double tz) {
    const ADate d = LocalSecond(jd, tz);
    char buf[80];
    std::snprintf(buf, sizeof buf, "%s%04d-%02d-%02dT%02d:%02d:%02d%s", d.year < 0 ? "-" : "", std::abs(d.year),
                  d.month, d.day, d.hour, d.minute, static_cast<int>(d.second), FormatZone(tz).c_str());
    return buf;
}

std::string FormatDate(const ADate &d) {
    char buf[96];
    std::snprintf(buf, sizeof buf, "%s%04d-%02d-%02dT%02d:%02d:%06.3f", d.year < 0 ? "-" : "", std::abs(d.year),
                  d.month, d.day, d.hour, d.minute, d.second);
    return buf;
}

namespace {
// Whole units, minutes and seconds of a non-negative value in units, the
// seconds rounded to `decimals` places first so that 59.999 never prints as 60.
void SplitSexagesimal(double units, int decimals, long long *whole, int *minutes, double *seconds) {
    const double scale = std::pow(10.0, decimals);
    const double totalSeconds = std::round(units * 3600.0 * scale) / scale;
    *whole = static_cast<long long>(totalSeconds / 3600.0);
    double rest = totalSeconds - static_cast<double>(*whole) * 3600.0;
    *minutes = static_cast<int>(rest / 60.0);
    *seconds = rest - *minutes * 60.0;
    if (*seconds < 0) *seconds = 0;
}
}  // namespace

std::string FormatHms(double degrees, int decimals) {
    long long h;
    int m;
    double s;
    SplitSexagesimal(degmal(degrees) / 15.0, decimals, &h, &m, &s);
    if (h >= 24) h -= 24;
    char buf[48];
    std::snprintf(buf, sizeof buf, "%02lldh%02dm%0*.*fs", h, m, decimals > 0 ? decimals + 3 : 2, decimals, s);
    return buf;
}

std::string FormatDms(double degrees, int decimals, bool forceSign) {
    long long d;
    int m;
    double s;
    SplitSexagesimal(std::fabs(degrees), decimals, &d, &m, &s);
    const char *sign = degrees < 0 ? "-" : (forceSign ? "+" : "");
    char buf[48];
    std::snprintf(buf, sizeof buf, "%s%02lld°%02d′%0*.*f″", sign, d, m, decimals > 0 ? decimals + 3 : 2, decimals, s);
    return buf;
}

double NorthAzimuth(double southAzimuth) { return degmal(southAzimuth + 180.0); }

Refraction RefractionFrom(const Args &args) {
    Refraction r{args.Flag("refraction"), 1010.0, 10.0};
    r.pressure = RangedNumber(args, "pressure", nullptr, 1010.0, 0.0, 1100.0, "hPa");
    r.temperature = RangedNumber(args, "temperature", nullptr, 10.0, -90.0, 60.0, "°C");
    if ((args.Option("pressure") || args.Option("temperature")) && !r.on)
        throw UsageError{"--pressure and --temperature go with --refraction"};
    return r;
}

namespace {
// Adds refraction to a true altitude: the library's standard-atmosphere
// refraction scaled by (P/1010)(283/(273+T)) (Meeus, Astronomical
// Algorithms, 2nd ed., 1998, ch. 16, after Saemundsson's formula 16.4).
double Refract(double altitude, const Refraction &r) {
    if (!r.on) return altitude;
    const Ad in{0.0, altitude};
    Ad out{0.0, altitude};
    AtmosphericRefraction(&in, &out);
    return altitude + (out.d - altitude) * (r.pressure / 1010.0) * (283.0 / (273.0 + r.temperature));
}
}  // namespace

Horizon HorizonOfApparent(const ATime &t, double ra, double dec, const Refraction &r) {
    // Hour angle from the local apparent sidereal time; the horizon from
    // the spherical triangle pole-zenith-body (Meeus, ch. 13, eq. 13.5 and
    // 13.6, azimuth turned to count from the north through the east).
    const double rad = 3.14159265358979323846 / 180.0;
    const double h = (t.lst - ra) * rad, d = dec * rad, phi = t.obsLatitude * rad;
    const double altitude =
        std::asin(std::sin(phi) * std::sin(d) + std::cos(phi) * std::cos(d) * std::cos(h)) / rad;
    const double azimuth =
        std::atan2(-std::cos(d) * std::sin(h), std::sin(d) * std::cos(phi) - std::cos(d) * std::cos(h) * std::sin(phi)) /
        rad;
    return Horizon{Refract(altitude, r), degmal(azimuth), r.on};
}

Horizon HorizonOf(const ATime &t, double raJ2000, double decJ2000) {
    const Ad in{raJ2000, decJ2000};
    Ad out{0.0, 0.0};
    Coordinates(&t, KVX_COORD_J2000, &in, KVX_COORD_HORIZONTAL, &out);
    return Horizon{out.d, NorthAzimuth(out.a), false};
}

std::string FormatZone(double tz) {
    const double a = std::fabs(tz);
    int h = static_cast<int>(a);
    int m = static_cast<int>(std::lround((a - h) * 60.0));
    if (m == 60) { ++h; m = 0; }
    char buf[32];
    std::snprintf(buf, sizeof buf, "%c%02d:%02d", tz < 0 ? '-' : '+', h, m);
    return buf;
}

const char *WeekdayName(double jd, double tz) {
    static const char *const kNames[7] = {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"};
    // JD 0.5 (local midnight at JD + tz/24) fell on a Monday.
    const double days = std::floor(jd + tz / 24.0 + 0.5);
    long long k = static_cast<long long>(std::fmod(days, 7.0));
    if (k < 0) k += 7;
    return kNames[k];
}

std::string JsonString(const std::string &s) {
    std::string out = "\"";
    for (char c : s) {
        switch (c) {
        case '"': out += "\\\""; break;
        case '\\': out += "\\\\"; break;
        case '\n': out += "\\n"; break;
        case '\t': out += "\\t"; break;
        default:
            if (static_cast<unsigned char>(c) < 0x20) {
                char buf[8];
                std::snprintf(buf, sizeof buf, "\\u%04x", c);
                out += buf;
            } else {
                out += c;
            }
        }
    }
    return out + "\"";
}

std::string JsonArray(const std::vector<std::string> &items) {
    std::string s = "[";
    for (size_t i = 0; i < items.size(); ++i) s += (i ? ", " : "") + items[i];
    return s + "]";
}

Json &Json::DateFields(const ADate &d) {
    return Int("year", d.year).Int("month", d.month).Int("day", d.day).Int("hour", d.hour).Int("minute", d.minute).Num(
        "second", d.second);
}

std::string JsonNumber(double v) {
    if (!std::isfinite(v)) return "null";
    char buf[40];
    std::snprintf(buf, sizeof buf, "%.17g", v);
    return buf;
}

Json &Json::Num(const std::string &key, double v) {
    fields_.emplace_back(key, JsonNumber(v));
    return *this;
}
Json &Json::Int(const std::string &key, long long v) {
    fields_.emplace_back(key, std::to_string(v));
    return *this;
}
Json &Json::Str(const std::string &key, const std::string &v) {
    fields_.emplace_back(key, JsonString(v));
    return *this;
}
Json &Json::Bool(const std::string &key, bool v) {
    fields_.emplace_back(key, v ? "true" : "false");
    return *this;
}
Json &Json::Null(const std::string &key) {
    fields_.emplace_back(key, "null");
    return *this;
}
Json &Json::When(const Place &place, double jd) {
    const double tz = ZoneAt(place, jd);
    return Str("local", IsoTime(jd, tz)).Num("tz_hours", tz).Str("zone", place.zone);
}
Json &Json::Raw(const std::string &key, const std::string &json) {
    fields_.emplace_back(key, json);
    return *this;
}
Json &Json::Array(const std::string &key, const double *v, int n) {
    std::string s = "[";
    for (int i = 0; i < n; ++i) s += (i ? ", " : "") + JsonNumber(v[i]);
    fields_.emplace_back(key, s + "]");
    return *this;
}
std::string Json::Text() const {
    std::string s = "{";
    for (size_t i = 0; i < fields_.size(); ++i)
        s += (i ? ", " : "") + JsonString(fields_[i].first) + ": " + fields_[i].second;
    return s + "}";
}

void PrintHeader(const Place &place, double jd) {
    const double tz = ZoneAt(place, jd);
    std::printf("%s (%s)  JD %.6f UT\n", IsoTime(jd, tz).c_str(), place.zone.c_str(), jd);
}

namespace {

std::vector<std::string> gStartupDiagnostics;

#if defined(__ELF__) && !defined(_WIN32)
// The library opens its data files in its load-time constructor and reports
// failures on stderr. The executable's pre-initialisation functions run
// before the constructors of the shared libraries it needs (ELF gABI,
// DT_PREINIT_ARRAY), so stderr is pointed at an anonymous file here and
// given back in CollectStartupDiagnostics.
int gSavedStderr = -1;
int gCaptureFd = -1;

void BeginCapture(int, char **, char **) {
    const int fd = memfd_create("kvx-startup", 0);
    if (fd < 0) return;
    const int saved = dup(2);
    if (saved < 0 || dup2(fd, 2) < 0) {
        if (saved >= 0) close(saved);
        close(fd);
        return;
    }
    gSavedStderr = saved;
    gCaptureFd = fd;
}

__attribute__((section(".preinit_array"), used)) void (*const gBeginCapture)(int, char **, char **) = BeginCapture;
#endif

}  // namespace

void CollectStartupDiagnostics() {
#if defined(__ELF__) && !defined(_WIN32)
    if (gCaptureFd < 0) return;
    std::fflush(stderr);
    dup2(gSavedStderr, 2);
    close(gSavedStderr);
    std::string text;
    char buf[4096];
    lseek(gCaptureFd, 0, SEEK_SET);
    for (ssize_t n; (n = read(gCaptureFd, buf, sizeof buf)) > 0;) text.append(buf, static_cast<size_t>(n));
    close(gCaptureFd);
    gCaptureFd = -1;
    size_t from = 0;
    while (from < text.size()) {
        size_t to = text.find('\n', from);
        if (to == std::string::npos) to = text.size();
        gStartupDiagnostics.push_back(text.substr(from, to - from));
        from = to + 1;
    }
#endif
}

const std::vector<std::string> &StartupDiagnostics() { return gStartupDiagnostics; }

}  // namespace kvx::cli
