// Helpers shared by the tests: the toolkit in support/ and the CLI's standard-error filter.
#pragma once

#include <cmath>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "kvxlib.h"
#include "support/angles.h"
#include "support/reference.h"

namespace kvx::test {

// Standard error without the data-file readers' load-time lines about files they cannot open or read (in the build
// tree: the default JPL path and moon.xyz).
inline std::string WithoutLoadDiagnostics(const std::string &err) {
    std::istringstream in(err);
    std::string kept;
    for (std::string line; std::getline(in, line);) {
        const bool diagnostic = (line.starts_with("open ") && line.ends_with(" failed")) ||
                                (line.starts_with("read ") && line.ends_with(" faield")) ||
                                line.starts_with("read JPL header failed. file=") ||
                                line.starts_with("Unknown file format. file=");
        if (!diagnostic) kept += line + "\n";
    }
    return kept;
}

}  // namespace kvx::test
