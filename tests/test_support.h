// Helpers shared by the tests: reading the committed reference data.
#pragma once

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

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

inline std::string ReferencePath(const char *name) { return std::string(KVX_REFERENCE_DIR) + "/" + name; }
inline std::string TestDataPath(const char *name) { return std::string(KVX_TEST_DATA_DIR) + "/" + name; }

}  // namespace kvx::test
