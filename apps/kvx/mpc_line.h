// The MPC one-line orbit format of comets (CometEls.txt), read into the
// library's CometElements. Shared by `kvx comet` and the comet fuzz harness,
// so it reports failures by value and needs nothing of the command line.
#pragma once

#include <string>

#include "kvxlib.h"

namespace kvx::cli {

// Parses one line; on failure returns false and sets *error to one line of
// text (the field and its content). Fields: columns 5 orbit type, 6-12
// provisional designation, 15-18/20-21/23-29 perihelion year, month, day
// (TT), 31-39 q, 42-49 e, 52-59 argument of perihelion, 62-69 node, 72-79
// inclination (J2000.0), 92-95 H, 97-100 G (K = 2.5 G), 103-158 designation
// and name. H and G are optional (10 and K = 10 when the line is short).
bool ParseMpcLine(const std::string &line, CometElements *out, std::string *error);

}  // namespace kvx::cli
