// The JPL DE reader on the hostile corpus (tests/data/hostile, made by
// tools/make_hostile_fixtures.py): every file either opens or prints exactly
// one of the opener's lines; on the ones that open, queries over the whole
// range of dates and bodies never crash and print only the reader's lines.
#include <gtest/gtest.h>

#include <cmath>
#include <regex>
#include <sstream>
#include <string>

#include "solar/ephem/jpl_de.h"
#include "test_support.h"

namespace {

using kvx::test::TestDataPath;

std::string Hostile(const char *name) { return TestDataPath("hostile/") + name; }

struct OpenResult {
    kvx::jpl::Reader *reader;
    std::string err;
};

OpenResult OpenCapturing(const std::string &path) {
    testing::internal::CaptureStderr();
    kvx::jpl::Reader *r = kvx::jpl::Open(path.c_str());
    return {r, testing::internal::GetCapturedStderr()};
}

TEST(JplDeHostile, FilesTheOpenerRefusesWithItsLine) {
    const struct {
        const char *name;
        const char *line;
    } cases[] = {
        {"de_empty.bin", "read %s faield\n"},
        {"de_short.bin", "read %s faield\n"},
        {"de_header_truncated.bin", "read JPL header failed. file=%s\n"},
        {"de421.bin", "read JPL header failed. file=%s\n"},
        {"de_version_low.bin", "read JPL header failed. file=%s\n"},
        {"de_zero_step.bin", "read JPL header failed. file=%s\n"},
        {"de_nan_dates.bin", "read JPL header failed. file=%s\n"},
        {"de_huge_span.bin", "read JPL header failed. file=%s\n"},
        {"de_garbage.bin", "Unknown file format. file=%s\n"},
        {"kq_no_length.bin", "read %s faield\n"},
        {"kq_length_beyond_file.bin", "read %s faield\n"},
        {"meteor_binary.bin", "Unknown file format. file=%s\n"},
    };
    for (const auto &c : cases) {
        const std::string path = Hostile(c.name);
        const OpenResult r = OpenCapturing(path);
        EXPECT_EQ(r.reader, nullptr) << c.name;
        kvx::jpl::Close(r.reader);
        std::string want = c.line;
        want.replace(want.find("%s"), 2, path);
        EXPECT_EQ(r.err, want) << c.name;
    }
    const OpenResult missing = OpenCapturing("/nonexistent/de.bin");
    EXPECT_EQ(missing.reader, nullptr);
    EXPECT_EQ(missing.err, "open /nonexistent/de.bin failed\n");
    const OpenResult dir = OpenCapturing(TestDataPath("hostile/"));
    EXPECT_EQ(dir.reader, nullptr);
    EXPECT_EQ(dir.err, "open " + TestDataPath("hostile/") + " failed\n");
}

// Lines a query may print.
const std::regex kQueryLine(
    "getbuffer: seek error: pos=-?[0-9]+|getbuffer: read error: pos=-?[0-9]+ size=[0-9]+ num=[0-9]+|"
    "getbuffer failed: lRec=-?[0-9]+|getpv faield: jd=[-0-9.naif]+ target=[0-9]+");

// The first line of `err` that is not one of the query lines, or "" when
// every line is one (each ends with a newline).
std::string ForeignLine(const std::string &err) {
    if (!err.empty() && err.back() != '\n') return err.substr(err.rfind('\n') + 1);
    std::istringstream in(err);
    std::string line;
    while (std::getline(in, line))
        if (!std::regex_match(line, kQueryLine)) return line.empty() ? "(empty line)" : line;
    return "";
}

// Every target and centre at dates across and beyond the file's range.
std::string QueryEverything(kvx::jpl::Reader *r, int *answered) {
    testing::internal::CaptureStderr();
    *answered = 0;
    const double lo = std::isfinite(r->startJd) ? r->startJd : 2451536.5;
    const double hi = std::isfinite(r->endJd) ? r->endJd : lo + 64;
    for (int k = -2; k <= 42; ++k) {
        const double jd = lo + (hi - lo) * k / 40.0;
        for (int target = 0; target <= 16; ++target)
            for (int centre = 0; centre <= 13; ++centre) {
                double pv[6];
                if (kvx::jpl::Evaluate(r, jd, target, centre, pv, (target + centre) % 2 != 0) == 0) ++*answered;
            }
    }
    return testing::internal::GetCapturedStderr();
}

TEST(JplDeHostile, FilesThatOpenAnswerSafely) {
    const struct {
        const char *name;
        bool answers;  // some query succeeds
    } cases[] = {
        {"de_no_constants.bin", false},       // header only: every record read fails
        {"de_absurd_pointers.bin", true},     // bad components are missing, good ones answer
        {"de_truncated_records.bin", true},   // the first record reads, the second is cut
        {"kq_valid.bin", true},
        {"kq_short_fields.bin", false},       // not ready
        {"kq_huge_record.bin", false},        // not ready: the record would not fit the buffer
        {"kq_inconsistent_step.bin", false},  // not ready
        {"kq_absurd_pointers.bin", true},
    };
    for (const auto &c : cases) {
        const OpenResult r = OpenCapturing(Hostile(c.name));
        ASSERT_NE(r.reader, nullptr) << c.name << ": " << r.err;
        EXPECT_EQ(r.err, "") << c.name;
        int answered = 0;
        const std::string err = QueryEverything(r.reader, &answered);
        EXPECT_EQ(ForeignLine(err), "") << c.name;
        EXPECT_EQ(answered > 0, c.answers) << c.name << " answered " << answered;
        kvx::jpl::Close(r.reader);
    }
}

TEST(JplDeHostile, CutRecordPrintsTheReadErrorChain) {
    const std::string path = Hostile("de_truncated_records.bin");
    kvx::jpl::Reader *r = kvx::jpl::Open(path.c_str());
    ASSERT_NE(r, nullptr);
    double pv[6];
    ASSERT_EQ(kvx::jpl::Evaluate(r, 2451540.0, 5, 11, pv, true), 0);  // record 2 is whole
    testing::internal::CaptureStderr();
    EXPECT_EQ(kvx::jpl::Evaluate(r, 2451570.0, 5, 11, pv, true), kvx::jpl::kReadFailed);  // record 3 is cut
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "getbuffer: read error: pos=24432 size=8 num=509\n"
              "getbuffer failed: lRec=3\n"
              "getpv faield: jd=2451570.000000 target=5\n");
    // The Earth needs two components; its failure has no getpv line.
    testing::internal::CaptureStderr();
    EXPECT_EQ(kvx::jpl::Evaluate(r, 2451570.0, 3, 11, pv, true), kvx::jpl::kReadFailed);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "getbuffer: read error: pos=24432 size=8 num=509\ngetbuffer failed: lRec=3\n");
    kvx::jpl::Close(r);
}

TEST(JplDeHostile, AbsurdPointersMakeOnlyThoseComponentsMissing) {
    kvx::jpl::Reader *r = kvx::jpl::Open(Hostile("de_absurd_pointers.bin").c_str());
    ASSERT_NE(r, nullptr);
    double pv[6];
    // Mercury starts past the record, Venus runs past it, Mars has a
    // negative start: missing. Librations are untouched and answer.
    EXPECT_EQ(kvx::jpl::Evaluate(r, 2451540.0, 1, 12, pv, true), kvx::jpl::kBadTarget);
    EXPECT_EQ(kvx::jpl::Evaluate(r, 2451540.0, 2, 12, pv, true), kvx::jpl::kBadTarget);
    EXPECT_EQ(kvx::jpl::Evaluate(r, 2451540.0, 4, 12, pv, true), kvx::jpl::kBadTarget);
    EXPECT_EQ(kvx::jpl::Evaluate(r, 2451540.0, 15, 12, pv, true), 0);
    kvx::jpl::Close(r);
}

}  // namespace
