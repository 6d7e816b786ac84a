// Helpers shared by the tests: the toolkit in support/ and the CLI's
// standard-error filter.
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

// Standard-error text of a program that loads the shared library, without
// the lines the library's data-file readers print at load time about files
// they cannot open or read (in the build tree: the default JPL path, which
// is the library's own directory, and a missing moon.xyz).
inline std::string WithoutLoadDiagnostics(const std::string &err) {
    std::istringstream in(err);
    std::string line, kept;
    auto starts = [&](const char *p) { return line.rfind(p, 0) == 0; };
    auto ends = [&](const char *p) {
        const std::string t = p;
        return line.size() >= t.size() && line.compare(line.size() - t.size(), t.size(), t) == 0;
    };
    while (std::getline(in, line)) {
        const bool diagnostic = (starts("open ") && ends(" failed")) || (starts("read ") && ends(" faield")) ||
                                starts("read JPL header failed. file=") || starts("Unknown file format. file=");
        if (!diagnostic) kept += line + "\n";
    }
    return kept;
}

}  // namespace kvx::test
