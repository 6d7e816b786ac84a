// Element sets for the satellite tests: two-line files under tests/reference/data ('#' comments, an optional
// name line before each pair of element lines).
#pragma once

#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "kvxlib.h"
#include "support/reference.h"

namespace kvx::test {

inline Elm ElmFromLines(const std::string &name, const std::string &l1, const std::string &l2) {
    TleLines t{};
    std::strncpy(t.name, name.c_str(), sizeof t.name - 1);
    std::strncpy(t.line1, l1.c_str(), sizeof t.line1 - 1);
    std::strncpy(t.line2, l2.c_str(), sizeof t.line2 - 1);
    Elm e;
    ASatTleToElm(&t, &e);
    return e;
}

inline std::vector<Elm> ReadTleFile(const char *file) {
    std::ifstream in(ReferencePath(file));
    std::vector<Elm> sets;
    std::string line, name, l1;
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.empty() || line[0] == '#') continue;
        if (line.rfind("1 ", 0) == 0) l1 = line;
        else if (line.rfind("2 ", 0) == 0 && !l1.empty()) {
            sets.push_back(ElmFromLines(name, l1, line));
            l1.clear();
            name.clear();
        } else name = line;
    }
    EXPECT_FALSE(sets.empty()) << file;
    return sets;
}

inline double Dist3(const double a[3], const double b[3]) { return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]); }

}  // namespace kvx::test
