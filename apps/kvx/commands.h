// The kvx subcommands. Each lives in its own cmd_NAME.cpp and is listed in
// the command table of main.cpp; the almanac's sections are listed in
// cmd_almanac.cpp.
#pragma once

#include <string>
#include <vector>

#include "cli.h"

namespace kvx::cli {

// Command entry points: each returns the process exit status and throws
// UsageError for bad arguments.
int RunAlmanac(const Args &args);
int RunJd(const Args &args);
int RunDate(const Args &args);
int RunTime(const Args &args);
int RunConvert(const Args &args);
int RunConst(const Args &args);
int RunSun(const Args &args);
int RunPlanet(const Args &args);
int RunPhysical(const Args &args);
int RunComet(const Args &args);
int RunOrbit(const Args &args);
int RunMoon(const Args &args);
int RunPhases(const Args &args);
int RunData(const Args &args);
int RunMeteors(const Args &args);
int RunMoons(const Args &args);
int RunJupiter(const Args &args);
int RunCalendar(const Args &args);
int RunHolidays(const Args &args);
int RunTerms(const Args &args);
int RunRise(const Args &args);
int RunTwilight(const Args &args);
int RunSat(const Args &args);
int RunEclipses(const Args &args);
int RunEvents(const Args &args);

// What every almanac section is given: the place, the local date and the
// same instant as a universal-time Julian date.
struct AlmanacContext {
    Place place;
    ADate date;
    double jd;
};
// The ATime of the almanac's instant and place.
ATime AlmanacTime(const AlmanacContext &c);
// Almanac sections: the text form prints its lines, the JSON form adds its
// fields to the almanac's object.
void TimeAlmanacText(const AlmanacContext &c);
void TimeAlmanacJson(const AlmanacContext &c, Json &out);
void PlanetsAlmanacText(const AlmanacContext &c);
void PlanetsAlmanacJson(const AlmanacContext &c, Json &out);
void MoonAlmanacText(const AlmanacContext &c);
void MoonAlmanacJson(const AlmanacContext &c, Json &out);
void RiseSetAlmanacText(const AlmanacContext &c);
void RiseSetAlmanacJson(const AlmanacContext &c, Json &out);
void GalileansAlmanacText(const AlmanacContext &c);
void GalileansAlmanacJson(const AlmanacContext &c, Json &out);

// Satellites on one line of text, east on the left: offsets east (any unit),
// index digits, and which to leave out.
std::string ConfigurationStrip(const std::vector<double> &east, const std::vector<int> &index,
                               const std::vector<bool> &hidden);

}  // namespace kvx::cli
