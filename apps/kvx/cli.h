// Shared pieces of the kvx command-line tool: argument access, the observer
// and zone options, date parsing and output (text or JSON).
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "kvxlib.h"

namespace kvx::cli {

// A command-line error: main prints "kvx: <message>" and the usage hint,
// and exits with status 2.
struct UsageError {
    std::string message;
};

// Parsed arguments of one subcommand: positional words and --name value
// options (flags such as --json take no value).
class Args {
public:
    Args(const std::vector<std::string> &words, const std::vector<std::string> &flags);

    bool Flag(const std::string &name) const;
    std::optional<std::string> Option(const std::string &name) const;
    double Number(const std::string &name, double fallback) const;
    const std::vector<std::string> &Positional() const { return positional_; }
    // Throws UsageError when the command takes fewer/more positionals.
    void ExpectPositional(size_t min, size_t max) const;

private:
    std::vector<std::string> positional_;
    std::map<std::string, std::string> options_;
    std::map<std::string, bool> flags_;
};

// Parses a number; throws UsageError naming `what` when it is not one.
double ParseNumber(const std::string &text, const std::string &what);

// The default place (Tokyo) and zone, overridden by KVX_LAT, KVX_LON,
// KVX_HEIGHT, KVX_TZ in the environment and by --lat --lon --height --tz.
struct Place {
    Observer observer;
    double tz;
};
Place PlaceFrom(const Args &args);

// "YYYY-MM-DD[Thh:mm[:ss]]" (a leading '-' for negative years) in zone tz.
ADate ParseDate(const std::string &text, double tz);
// The instant of --date, or now.
ADate DateOption(const Args &args, double tz);

std::string FormatDate(const ADate &d);  // 2024-03-01T12:34:56.789
// Hours, minutes and seconds of an angle in degrees (reduced to 0..360),
// seconds with `decimals` places, rounded without ever showing 60: 12h34m56.78s
std::string FormatHms(double degrees, int decimals);
// Signed degrees, minutes, seconds: +12°34'56.7" (a '+' only with forceSign).
std::string FormatDms(double degrees, int decimals, bool forceSign);

// Altitude and azimuth (degrees; azimuth from the north through the east)
// of a topocentric J2000.0 direction, through the library's geometric
// horizontal system (whose azimuth counts from the south through the west).
struct Horizon {
    double altitude;
    double azimuth;
};
Horizon HorizonOf(const ATime &t, double raJ2000, double decJ2000);
// Azimuth from the north through the east, from one counted from the south.
double NorthAzimuth(double southAzimuth);
std::string FormatZone(double tz);       // +09:00
const char *WeekdayName(double jd, double tz);

// Minimal JSON writer: objects of keys to numbers, strings and nested values.
class Json {
public:
    Json &Num(const std::string &key, double v);
    Json &Int(const std::string &key, long long v);
    Json &Str(const std::string &key, const std::string &v);
    Json &Raw(const std::string &key, const std::string &json);
    Json &Array(const std::string &key, const double *v, int n);
    std::string Text() const;

private:
    std::vector<std::pair<std::string, std::string>> fields_;
};
std::string JsonString(const std::string &s);
std::string JsonNumber(double v);

}  // namespace kvx::cli
