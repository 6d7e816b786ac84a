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

// Where a body's position comes from at a dynamical Julian date, as the
// library chooses it: the JPL DE file when it covers the date, then the
// planet position file (extrapolated by two-body motion past its ends),
// then the built-in theories. `holds` is false outside the span over which
// that source's stated accuracy holds; `what` says which source and how far.
struct Source {
    std::string what;   // "JPL DE405", "planet file, extrapolated 120 days past its end", ...
    std::string span;   // where the stated accuracy holds, e.g. "AD 1000-3000"
    bool holds;
};
// code: -2 the Sun, -1 the Moon, 0..11 the planets and dwarf planets,
// kElementsBody a body on orbital elements given on the command line.
inline constexpr int kElementsBody = 1000;
Source SourceOf(int code, double jde);
// Once per run: a warning on stderr when a source's stated accuracy does
// not hold at the date (the listings mark each such result).
void WarnIfOutside(const std::string &body, const Source &s);
// Whether the large files were read wholly into memory (OnMemory), so that
// the JPL DE file answers no position query.
bool DataOnMemory();

// One body's place for a listing: apparent topocentric place of date, the
// horizon of that same place, distance, for planets magnitude and phase,
// and the source of the position.
struct BodyLine {
    std::string name;
    BodyPos p;
    bool hasMag;
    int code = kElementsBody;  // for SourceOf: -2 Sun, -1 Moon, 0..11, else orbital elements
};
// The magnitude a listing shows for a body line and the name of its model:
// for planets (code 0..11) that of Mallama & Hilton 2018 (GetPlanetMagMH)
// where it has one ("Mallama-Hilton 2018"), else the record's field 36
// ("classic"); model is null when the body is no planet.
double ShownMagnitude(const ATime &t, const BodyLine &l, const char **model);
void PrintBodyLine(const ATime &t, const BodyLine &l, const Refraction &r = {});
std::string BodyLineJson(const ATime &t, const BodyLine &l, const Refraction &r = {});

// The ATime of the --date and place options (now, Tokyo by default), under
// the one zone rule: place->tz is the offset at that instant.
ATime TimeFromArgs(const Args &args, Place *place);

// A comet's elements from --line 'MPC line', --file F [--name TEXT], or
// --T --q --e --peri --node --incl [--equinox --H --K --name].
CometElements CometFromArgs(const Args &args);

// The Sun (filled into *sun) followed by Mercury to Pluto, with their codes.
std::vector<BodyLine> SunAndPlanets(ATime &t, BodyPos *sun);

}  // namespace kvx::cli
