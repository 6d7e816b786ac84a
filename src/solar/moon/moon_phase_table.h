// Coefficients of the series of the true phases of the Moon.
#pragma once

namespace kvx::moon {

// Amplitude (days), the power of the eccentricity factor E that multiplies
// it (as printed: only the larger terms in M carry E), and the argument
// multipliers of the Sun's mean anomaly M, the Moon's mean anomaly M', the
// argument of latitude F and the longitude of the node.
struct PhaseTerm {
    double amplitude;
    int ePower;
    int m, mp, f, node;
};

extern const PhaseTerm kNewMoonTerms[25];
extern const PhaseTerm kFullMoonTerms[25];
extern const PhaseTerm kQuarterTerms[25];

// The additional corrections: amplitude (days) of sin A1 .. sin A14.
extern const double kPlanetaryAmplitudes[14];

}  // namespace kvx::moon
