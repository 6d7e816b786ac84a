// Table-driven comparison with committed reference data: rows of numbers
// (whitespace or commas, '#' comment lines) under tests/reference/data made
// by a committed script from an independent implementation. A test names
// the columns, adds each row's errors, and bounds each quantity with its
// reason; the check fails with the worst row beyond a bound, or when
// nothing was compared.
//
//   const Reference sun("sun_swe_1900_2100.txt", {"jde", "lon", "lat", "r", ...});
//   Comparison cmp({{"apparent_arcsec", 1.5, "Newcomb's theory on the FK4 equinox"}});
//   for (const auto &row : sun) { ...; cmp.Add("apparent_arcsec", err, row); }
//   cmp.Check();
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <functional>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace kvx::test {

// Rows of numbers from a file; lines starting with '#' are comments.
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
// A scratch file of this test process: test programs of several build trees may share the temporary folder.
inline std::string TempPath(const std::string &name) {
    static const std::string tag = std::to_string(std::random_device{}());
    return ::testing::TempDir() + "kvx" + tag + "_" + name;
}

// Hand-checked expected values under tests/data/expected (rows of numbers, a header naming their source).
inline std::vector<std::vector<double>> ExpectedRows(const char *name) {
    auto rows = ReadRows(TestDataPath((std::string("expected/") + name).c_str()));
    EXPECT_FALSE(rows.empty()) << name << ": no rows";
    return rows;
}

// A reference file with named columns. Rows shorter than the column list fail the test (a truncated or misformatted
// file).
class Reference {
public:
    // One row; it is also its own iterator over the file.
    class Row {
    public:
        Row(const Reference &ref, std::size_t index) : ref_(&ref), index_(index) {}
        double operator[](std::string_view column) const { return ref_->rows_[index_][ref_->Column(column)]; }
        double at(std::size_t k) const { return ref_->rows_[index_].at(k); }
        // The numbers from a column on, for vectors and matrices stored in consecutive columns.
        const double *From(std::string_view column) const { return &ref_->rows_[index_][ref_->Column(column)]; }
        // "row 17 (jde=2451545.5)": the row number and its first column.
        std::string Label() const {
            char buf[96];
            std::snprintf(buf, sizeof buf, "row %zu (%s=%.10g)", index_, ref_->columns_[0].c_str(),
                          ref_->rows_[index_][0]);
            return buf;
        }
        const Row &operator*() const { return *this; }
        Row &operator++() { return ++index_, *this; }
        bool operator!=(const Row &o) const { return index_ != o.index_; }

    private:
        const Reference *ref_;
        std::size_t index_;
    };

    Reference(const char *file, std::vector<std::string> columns)
        : file_(file), columns_(std::move(columns)), rows_(ReadRows(ReferencePath(file))) {
        EXPECT_FALSE(rows_.empty()) << file_ << ": no rows";
        for (std::size_t i = 0; i < rows_.size(); ++i)
            if (rows_[i].size() < columns_.size()) {
                ADD_FAILURE() << file_ << ": row " << i << " has " << rows_[i].size() << " numbers, "
                              << columns_.size() << " columns expected";
                rows_.resize(i);
                break;
            }
    }
    std::size_t size() const { return rows_.size(); }
    Row operator[](std::size_t i) const { return Row(*this, i); }
    Row begin() const { return Row(*this, 0); }
    Row end() const { return Row(*this, rows_.size()); }

private:
    std::size_t Column(std::string_view name) const {
        for (std::size_t k = 0; k < columns_.size(); ++k)
            if (columns_[k] == name) return k;
        ADD_FAILURE() << file_ << ": no column '" << name << "'";
        return 0;
    }
    std::string file_;
    std::vector<std::string> columns_;
    std::vector<std::vector<double>> rows_;
};

// A bound on one measured quantity and why it is that large (theory, required algorithm or reference precision).
struct Bound {
    std::string quantity;
    double limit;
    std::string reason;
};

// The worst error of each bounded quantity over a table, with its row.
class Comparison {
public:
    explicit Comparison(std::vector<Bound> bounds) : bounds_(std::move(bounds)) {
        for (const auto &b : bounds_) worst_[b.quantity] = Worst{};
    }
    // Adds |error| for a quantity; a NaN error counts as a failure. The label names the row in the failure message.
    void Add(std::string_view quantity, double error, const std::string &label) {
        Update(quantity, error, [&] { return label; });
    }
    void Add(std::string_view quantity, double error, const Reference::Row &row) {
        Update(quantity, error, [&] { return row.Label(); });
    }
    // Rows deliberately left out; the test asserts how many with Skipped().
    void Skip() { ++skipped_; }
    int Skipped() const { return skipped_; }

    // Every quantity was measured at least once and stays within its bound. The measured worst values are printed
    // once, for closing notes.
    void Check() const {
        for (const auto &b : bounds_) {
            const Worst &w = worst_.at(b.quantity);
            EXPECT_GT(w.count, 0) << b.quantity << ": nothing compared";
            if (w.count == 0) continue;
            EXPECT_TRUE(w.value <= b.limit) << b.quantity << ": worst " << w.value << " at " << w.label
                                            << " exceeds " << b.limit << " (" << b.reason << ")";
            std::printf("[ measured ] %s: worst %.4g at %s over %d (bound %.4g)\n", b.quantity.c_str(), w.value,
                        w.label.c_str(), w.count, b.limit);
        }
    }

private:
    template <typename Label>
    void Update(std::string_view quantity, double error, Label label) {
        auto it = worst_.find(quantity);
        if (it == worst_.end()) {
            ADD_FAILURE() << "no bound stated for '" << quantity << "'";
            return;
        }
        Worst &w = it->second;
        ++w.count;
        const double e = std::fabs(error);
        if (std::isnan(w.value)) return;  // a NaN stays the worst
        if (std::isnan(e) || e > w.value || w.count == 1) {
            w.value = e;
            w.label = label();
        }
    }
    struct Worst {
        double value = 0.0;
        std::string label;
        int count = 0;
    };
    std::vector<Bound> bounds_;
    std::map<std::string, Worst, std::less<>> worst_;
    int skipped_ = 0;
};

}  // namespace kvx::test
