// Pieces shared by the commands that report bodies: the names of the
// planets, one line (or JSON object) per body, and the time of a command's
// --date and place options.
#pragma once

#include <string>
#include <vector>

#include "cli.h"

namespace kvx::cli {

// Names of body codes 0 (Mercury) to 11 (Haumea).
extern const char *const kPlanetNames[12];

// ASCII lower case, for matching names given on the command line.
std::string Lower(const std::string &s);

// One body's place for a listing: apparent place of date, horizon (from
// the J2000.0 place), distance, and for planets magnitude and phase.
struct BodyLine {
    std::string name;
    BodyPos p;
    bool hasMag;
};
void PrintBodyLine(const ATime &t, const BodyLine &l);
std::string BodyLineJson(const ATime &t, const BodyLine &l);

// The ATime of the --date and place options (now, Tokyo by default).
ATime TimeFromArgs(const Args &args, Place *place);

// The Sun (filled into *sun) followed by Mercury to Pluto.
std::vector<BodyLine> SunAndPlanets(ATime &t, BodyPos *sun);

}  // namespace kvx::cli
