// Shared pieces of the kvx command-line tool: argument access, the observer
// and zone options, date parsing and output (text or JSON).
//
// Conventions every command follows (through the helpers below, so that a
// new command picks them up by using them):
//
// - Time zone, one rule everywhere (Place, ZoneAt): --tz, else KVX_TZ, else
//   the system's zone (TZ, else /etc/localtime) at the instant concerned,
//   daylight saving included. A date may carry its own zone, "Z" or
//   "+hh:mm"/"-hh:mm" (ISO 8601), which wins for that date. --tz and KVX_TZ
//   take hours (9, -3.5) or +hh:mm.
// - Dates: ISO 8601 "YYYY-MM-DD[Thh:mm[:ss]][Z|±hh:mm]", astronomical year
//   numbering, years kMinYear..kMaxYear; anything else is a usage error.
// - Every result starts with the local date-time and the zone that were
//   used (PrintHeader for text, Json::When for JSON), next to the Julian
//   date.
// - Angles in text: FormatDms "+12°34′56.7″", right ascension and hour
//   angles in hours FormatHms "12h34m56.78s". Azimuth counts from the north
//   through the east everywhere; altitudes say whether refraction is in.
// - JSON: units in key names ("ra_deg", "distance_au", "distance_km",
//   "jd_ut"), the same key the same unit for every body, true/false for
//   yes/no, null for "no value", an ISO 8601 time next to each Julian date.
// - Errors: a bad value throws UsageError naming where it came from (the
//   option or the environment variable); main prints one line and exits 2.
//   A healthy run prints nothing on stderr: the library's start-up lines
//   are captured (StartupDiagnostics) and shown by `kvx data` and --verbose.
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
// A number from --name, else the environment variable env, else fallback,
// checked to lie within lo..hi; an error names the source of the bad value.
double RangedNumber(const Args &args, const std::string &name, const char *env, double fallback, double lo,
                    double hi, const char *unit);

// The years the command line accepts (the Julian day epoch to the last
// four-digit year).
inline constexpr int kMinYear = -4712;
inline constexpr int kMaxYear = 9999;

// The default place (Tokyo), overridden by KVX_LAT, KVX_LON, KVX_HEIGHT in
// the environment and by --lat --lon --height; the zone by the rule above.
// tz is the offset in force at the command's instant (set by TimeFromArgs,
// DateOption and ParseDate; the offset now until then).
struct Place {
    Observer observer;
    double tz;
    bool systemZone;    // no --tz, no KVX_TZ: the system's zone rules
    std::string zone;   // where tz came from: "--tz", "KVX_TZ", "system (Europe/London)", "date"
};
Place PlaceFrom(const Args &args);
// The zone offset (hours east) of the place at a universal-time Julian date.
double ZoneAt(const Place &place, double jd);
// The local civil date of a universal-time Julian date in the place's zone.
ADate LocalDate(const Place &place, double jd);

// "YYYY-MM-DD[Thh:mm[:ss]][Z|±hh:mm]" in zone tz unless it names one.
ADate ParseDate(const std::string &text, double tz);
// The same under the place's zone rule; place->tz and place->zone become the
// zone that applied.
ADate ParseDate(const std::string &text, Place *place);
// The instant of --date, or now.
ADate DateOption(const Args &args, double tz);
ADate DateOption(const Args &args, Place *place);
// A year number as the command line accepts it (first..last, by default
// kMinYear..kMaxYear).
int ParseYear(const std::string &text, int first = kMinYear, int last = kMaxYear);

std::string FormatDate(const ADate &d);  // 2024-03-01T12:34:56.789
// The local date and time of a universal-time Julian date in zone tz,
// rounded to the nearest second (d.second is whole). Every printed clock
// time of kvx goes through it, so one instant prints alike everywhere.
ADate LocalSecond(double jd, double tz);
// The ISO 8601 date-time of LocalSecond: 2024-03-01T12:34:56+09:00.
std::string IsoTime(double jd, double tz);
// LocalSecond as the tables print it: 2024-03-01 12:34:56.
std::string LocalClock(double jd, double tz);
// Hours, minutes and seconds of an angle in degrees (reduced to 0..360),
// seconds with `decimals` places, rounded without ever showing 60: 12h34m56.78s
std::string FormatHms(double degrees, int decimals);
// Signed degrees, minutes, seconds: +12°34′56.7″ (a '+' only with forceSign).
std::string FormatDms(double degrees, int decimals, bool forceSign);

// Altitude and azimuth (degrees; azimuth from the north through the east).
struct Horizon {
    double altitude;
    double azimuth;
    bool refracted = false;
};
// Refraction asked for on the command line: --refraction [--pressure hPa]
// [--temperature C]; off by default (geometric altitudes).
struct Refraction {
    bool on = false;
    double pressure = 1010.0;     // hPa
    double temperature = 10.0;  // degrees Celsius
};
Refraction RefractionFrom(const Args &args);
// Of an apparent topocentric place of date (right ascension and declination
// of the true equator and equinox of date, as the body routines print it),
// with the local apparent sidereal time of t: the horizon of the very place
// that is shown, refracted on request.
Horizon HorizonOfApparent(const ATime &t, double ra, double dec, const Refraction &r);
// Of a topocentric J2000.0 direction, through the library's geometric
// horizontal system (mean place of date; for directions that have no
// apparent place of their own).
Horizon HorizonOf(const ATime &t, double raJ2000, double decJ2000);
// Azimuth from the north through the east, from one counted from the south.
double NorthAzimuth(double southAzimuth);
std::string FormatZone(double tz);       // +09:00
const char *WeekdayName(double jd, double tz);

// Minimal JSON writer: objects of keys to numbers, strings and nested values.
class Json {
public:
    Json &Num(const std::string &key, double v);  // not finite: null
    Json &Int(const std::string &key, long long v);
    Json &Str(const std::string &key, const std::string &v);
    Json &Bool(const std::string &key, bool v);
    Json &Null(const std::string &key);
    Json &Raw(const std::string &key, const std::string &json);
    Json &Array(const std::string &key, const double *v, int n);
    // year, month, day, hour, minute, second of a civil date.
    Json &DateFields(const ADate &d);
    // "jd_ut" and the same instant as "local" ISO 8601 date-time, with
    // "zone" and "tz_hours": the header of every result.
    Json &When(const Place &place, double jd);
    std::string Text() const;

private:
    std::vector<std::pair<std::string, std::string>> fields_;
};
// "[a, b, ...]" of JSON texts.
std::string JsonArray(const std::vector<std::string> &items);
std::string JsonString(const std::string &s);
std::string JsonNumber(double v);

// The first line of every text result: local date-time, zone and where the
// zone came from, the Julian date (UT).
void PrintHeader(const Place &place, double jd);

// The library's start-up lines on stderr (files it could not open), taken
// away from the terminal before main and kept here; --verbose and kvx data
// show them.
const std::vector<std::string> &StartupDiagnostics();
// Restores stderr and collects what start-up printed; main calls it first.
void CollectStartupDiagnostics();

}  // namespace kvx::cli
