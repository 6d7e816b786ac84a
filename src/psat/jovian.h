// The start and end times of the phenomena of Jupiter's four Galilean
// satellites over a date range.
#pragma once

namespace kvx::psat {

enum JovianEventKind { kTransit = 0, kOccultation = 1, kShadowTransit = 2, kEclipse = 3 };

struct JovianEvent {
    double jd;  // universal time, to one second
    int satellite;  // 1 Io .. 4 Callisto
    JovianEventKind kind;
    bool start;  // true: the phenomenon begins; false: it ends
};

// Longest range searched in one call, days.
inline constexpr double kMaxSearchDays = 400.0;
// Sampling step: shorter than the briefest phenomenon worth listing
// (grazing ones shorter than this can be missed), days.
inline constexpr double kSearchStep = 10.0 / 1440.0;
inline constexpr double kSecond = 1.0 / 86400.0;

// Every start and end of a transit, occultation, shadow transit or eclipse
// of Io..Callisto between universal-time Julian dates jd0 and jd1 (at most
// kMaxSearchDays), geocentric, found by sampling JoviSatPhenomena every
// kSearchStep and bisecting each change to one second. Writes at most max
// events in time order; returns their number.
int FindJovianEvents(double jd0, double jd1, JovianEvent *out, int max);

}  // namespace kvx::psat
