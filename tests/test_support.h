// Helpers shared by the tests: reading the committed reference data.
#pragma once

#include <cmath>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "kvxlib.h"

namespace kvx::test {

// Rows of whitespace- or comma-separated numbers from a reference file;
// lines starting with '#' are comments.
inline std::vector<std::vector<double>> ReadRows(const std::string &path) {
    std::vector<std::vector<double>> rows;
    std::ifstream in(path);
    std::string line;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#') continue;
        for (char &c : line)
            if (c == ',') c = ' ';
        std::istringstream ss(line);
        std::vector<double> row;
        double v;
        while (ss >> v) row.push_back(v);
        if (!row.empty()) rows.push_back(row);
    }
    return rows;
}

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

// Angular separation of two directions (right ascension and declination,
// or longitude and latitude, in degrees), arcseconds.
inline double SepArcsec(double ra1, double de1, double ra2, double de2) {
    const double d2r = 3.141592653589793 / 180.0;
    const double c = std::sin(de1 * d2r) * std::sin(de2 * d2r) +
                     std::cos(de1 * d2r) * std::cos(de2 * d2r) * std::cos((ra1 - ra2) * d2r);
    const double s = std::hypot(std::cos(de2 * d2r) * std::sin((ra1 - ra2) * d2r),
                                std::cos(de1 * d2r) * std::sin(de2 * d2r) -
                                    std::sin(de1 * d2r) * std::cos(de2 * d2r) * std::cos((ra1 - ra2) * d2r));
    return std::atan2(s, c) / d2r * 3600.0;
}

// An ATime at dynamical Julian date jde, Delta T fixed at 64 s, zone 0:
// reference positions are tabulated in dynamical time.
inline ATime AtJde(double jde, const Observer *obs = nullptr) {
    ATime t;
    SetATimeJd2(jde - 64.0 / 86400.0, 64.0, 0.0, obs, &t);
    return t;
}

inline std::string ReferencePath(const char *name) { return std::string(KVX_REFERENCE_DIR) + "/" + name; }
inline std::string TestDataPath(const char *name) { return std::string(KVX_TEST_DATA_DIR) + "/" + name; }

}  // namespace kvx::test
