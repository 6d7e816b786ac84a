// Mean elements of the satellites computed as precessing ellipses (table in
// mean_element_table.cpp).
#pragma once

namespace kvx::psat {

struct MeanElements {
    int code;
    double epoch;        // dynamical Julian date
    double a;            // km
    double e;
    double w, m, i, node;  // degrees at the epoch
    double n;            // mean motion, degrees per day
    double pw, pnode;    // precession periods of w (advancing) and of the node (regressing), years; 0 = fixed
    double poleRa, poleDec;  // pole of the reference (Laplace) plane, J2000.0 equator, degrees
    int ecliptic;        // 1: elements on the J2000.0 ecliptic instead of a Laplace plane
};

inline constexpr int kMeanElementCount = 4;
extern const MeanElements kMeanElements[kMeanElementCount];

}  // namespace kvx::psat
