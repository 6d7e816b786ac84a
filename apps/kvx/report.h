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
// For planets (code 0..11, CalcPlanet's record) the magnitude shown is
// that of Mallama & Hilton 2018 (GetPlanetMagMH) where it has one, else
// the record's field 36; the line says which.
struct BodyLine {
    std::string name;
    BodyPos p;
    bool hasMag;
    int code = -100;  // CalcPlanet's code, or -100 for another body
};
// The magnitude a listing shows for a body line and the name of its model
// ("Mallama-Hilton 2018", "classic"; null when the body is no planet).
double ShownMagnitude(const ATime &t, const BodyLine &l, const char **model);
void PrintBodyLine(const ATime &t, const BodyLine &l);
std::string BodyLineJson(const ATime &t, const BodyLine &l);

// The ATime of the --date and place options (now, Tokyo by default).
ATime TimeFromArgs(const Args &args, Place *place);

// A comet's elements from --line 'MPC line', --file F [--name TEXT], or
// --T --q --e --peri --node --incl [--equinox --H --K --name].
CometElements CometFromArgs(const Args &args);

// The Sun (filled into *sun) followed by Mercury to Pluto.
std::vector<BodyLine> SunAndPlanets(ATime &t, BodyPos *sun);

}  // namespace kvx::cli
