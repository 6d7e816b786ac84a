// Built-in osculating elements of the dwarf planets (codes 8..11).
#pragma once

#include "kvxlib.h"

namespace kvx::planet {

// Rows for codes 8 Eris, 9 Ceres, 10 Makemake, 11 Haumea.
extern const CometElements kDwarfPlanetElements[4];

}  // namespace kvx::planet
