// Reading the committed constellation reference data: the derived code table
// and the directions with PyEphem's constellation abbreviations.
#pragma once

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "test_support.h"

namespace kvx::test {

// One line of constellation_codes.csv.
struct ConstellationCodeRow {
    int code;
    std::string pyephem;  // PyEphem's abbreviation (Se1/Se2 for the Serpens parts)
    std::string iau;      // IAU abbreviation
    std::string name;
};

// A direction with the constellation PyEphem gives it.
struct ConstellationSample {
    double ra;
    double dec;
    std::string pyephem;
};

inline std::vector<std::string> SplitCsv(const std::string &line) {
    std::vector<std::string> fields;
    std::stringstream ss(line);
    std::string field;
    while (std::getline(ss, field, ',')) {
        const size_t b = field.find_first_not_of(' ');
        const size_t e = field.find_last_not_of(' ');
        fields.push_back(b == std::string::npos ? "" : field.substr(b, e - b + 1));
    }
    return fields;
}

inline std::vector<std::vector<std::string>> CsvRows(const std::string &path) {
    std::vector<std::vector<std::string>> rows;
    std::ifstream in(path);
    std::string line;
    while (std::getline(in, line))
        if (!line.empty() && line[0] != '#') rows.push_back(SplitCsv(line));
    return rows;
}

inline std::vector<ConstellationCodeRow> ConstellationCodes() {
    std::vector<ConstellationCodeRow> out;
    for (const auto &f : CsvRows(ReferencePath("constellation_codes.csv")))
        if (f.size() == 4) out.push_back({std::stoi(f[0]), f[1], f[2], f[3]});
    return out;
}

inline std::vector<ConstellationSample> ConstellationSamples(const char *file) {
    std::vector<ConstellationSample> out;
    for (const auto &f : CsvRows(ReferencePath(file)))
        if (f.size() == 3) out.push_back({std::stod(f[0]), std::stod(f[1]), f[2]});
    return out;
}

}  // namespace kvx::test
