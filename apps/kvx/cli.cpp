#include "cli.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

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
double EnvNumber(const char *name, double fallback) {
    const char *v = std::getenv(name);
    if (!v || !*v) return fallback;
    return ParseNumber(v, name);
}
}  // namespace

Place PlaceFrom(const Args &args) {
    Place p{};
    p.observer.latitude = args.Number("lat", EnvNumber("KVX_LAT", 35.6895));
    p.observer.longitude = args.Number("lon", EnvNumber("KVX_LON", 139.6917));
    p.observer.height = args.Number("height", EnvNumber("KVX_HEIGHT", 40.0));
    p.tz = args.Number("tz", EnvNumber("KVX_TZ", 9.0));
    if (std::fabs(p.observer.latitude) > 90.0) throw UsageError{"--lat must lie within -90..90"};
    if (std::fabs(p.tz) > 24.0) throw UsageError{"--tz must lie within -24..24 hours"};
    return p;
}

ADate ParseDate(const std::string &text, double tz) {
    ADate d{};
    d.tz = tz;
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, consumed = 0;
    double second = 0.0;
    const char *s = text.c_str();
    const bool negative = *s == '-';
    if (negative) ++s;
    if (std::sscanf(s, "%d-%d-%d%n", &year, &month, &day, &consumed) != 3)
        throw UsageError{"bad date '" + text + "' (want YYYY-MM-DD[Thh:mm[:ss]])"};
    s += consumed;
    if (*s == 'T' || *s == ' ') {
        ++s;
        consumed = 0;
        if (std::sscanf(s, "%d:%d%n", &hour, &minute, &consumed) != 2)
            throw UsageError{"bad time in '" + text + "'"};
        s += consumed;
        if (*s == ':') {
            ++s;
            char *end = nullptr;
            second = std::strtod(s, &end);
            if (end == s) throw UsageError{"bad seconds in '" + text + "'"};
            s = end;
        }
    }
    if (*s != '\0') throw UsageError{"bad date '" + text + "'"};
    d.year = negative ? -year : year;
    d.month = month;
    d.day = day;
    d.hour = hour;
    d.minute = minute;
    d.second = second;
    if (!CheckDate(&d) || second < 0.0 || second >= 61.0) throw UsageError{"no such date: '" + text + "'"};
    return d;
}

ADate DateOption(const Args &args, double tz) {
    if (auto text = args.Option("date")) return ParseDate(*text, tz);
    ADate now{};
    GetNowDate(&now, 0.0, tz);
    return now;
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
    std::snprintf(buf, sizeof buf, "%02lldh%02dm%0*.*fs", h, m, decimals + 3, decimals, s);
    return buf;
}

std::string FormatDms(double degrees, int decimals, bool forceSign) {
    long long d;
    int m;
    double s;
    SplitSexagesimal(std::fabs(degrees), decimals, &d, &m, &s);
    const char *sign = degrees < 0 ? "-" : (forceSign ? "+" : "");
    char buf[48];
    std::snprintf(buf, sizeof buf, "%s%02lld°%02d'%0*.*f\"", sign, d, m, decimals + 3, decimals, s);
    return buf;
}

double NorthAzimuth(double southAzimuth) { return degmal(southAzimuth + 180.0); }

Horizon HorizonOf(const ATime &t, double raJ2000, double decJ2000) {
    const Ad in{raJ2000, decJ2000};
    Ad out{0.0, 0.0};
    Coordinates(&t, KVX_COORD_J2000, &in, KVX_COORD_HORIZONTAL, &out);
    return Horizon{out.d, NorthAzimuth(out.a)};
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

}  // namespace kvx::cli
