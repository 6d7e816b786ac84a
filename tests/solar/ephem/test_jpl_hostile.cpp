// The JPL DE reader on the hostile corpus (tools/make_hostile_fixtures.py): a file opens or prints exactly one
// of the opener's lines; queries on the ones that open never crash and print only the reader's lines.

#include <regex>

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
    // "" is the corpus directory itself, a leading '/' an absolute path.
    const struct { const char *line; std::vector<const char *> names; } cases[] = {
        {"open %s failed\n", {"/nonexistent/de.bin", ""}},
        {"read %s faield\n", {"de_empty.bin", "de_short.bin", "kq_no_length.bin", "kq_length_beyond_file.bin"}},
        {"read JPL header failed. file=%s\n", {"de_header_truncated.bin", "de421.bin", "de_version_low.bin",
                                                "de_zero_step.bin", "de_nan_dates.bin", "de_huge_span.bin"}},
        {"Unknown file format. file=%s\n", {"de_garbage.bin", "meteor_binary.bin"}},
    };
    for (const auto &c : cases)
        for (const char *name : c.names) {
            const std::string path = name[0] == '/' ? name : Hostile(name);
            const OpenResult r = OpenCapturing(path);
            EXPECT_EQ(r.reader, nullptr) << name;
            kvx::jpl::Close(r.reader);
            std::string want = c.line;
            EXPECT_EQ(r.err, want.replace(want.find("%s"), 2, path)) << name;
        }
}

// Lines a query may print.
const std::regex kQueryLine(
    "getbuffer: seek error: pos=-?[0-9]+|getbuffer: read error: pos=-?[0-9]+ size=[0-9]+ num=[0-9]+|"
    "getbuffer failed: lRec=-?[0-9]+|getpv faield: jd=[-0-9.naif]+ target=[0-9]+");

// The first line of `err` that is no query line (or lacks its newline), or "".
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
    const struct { const char *name; bool answers; /* some query succeeds */ } cases[] = {
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

// A cut record fails with the read-error chain (an Earth query, from two components, without the getpv line).
// Absurd pointers (Mercury past the record, Venus running past it, Mars negative) make only those bodies
// missing; the librations answer.
TEST(JplDeHostile, DamagedFilesFailOnlyTheAffectedQueries) {
    kvx::jpl::Reader *r = kvx::jpl::Open(Hostile("de_truncated_records.bin").c_str());
    ASSERT_NE(r, nullptr);
    double pv[6];
    ASSERT_EQ(kvx::jpl::Evaluate(r, 2451540.0, 5, 11, pv, true), 0);  // record 2 is whole, record 3 cut
    const std::string chain = "getbuffer: read error: pos=24432 size=8 num=509\ngetbuffer failed: lRec=3\n";
    for (int target : {5, 3}) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(kvx::jpl::Evaluate(r, 2451570.0, target, 11, pv, true), kvx::jpl::kReadFailed);
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  chain + (target == 5 ? "getpv faield: jd=2451570.000000 target=5\n" : ""));
    }
    kvx::jpl::Close(r);
    r = kvx::jpl::Open(Hostile("de_absurd_pointers.bin").c_str());
    ASSERT_NE(r, nullptr);
    for (int target : {1, 2, 4, 15})
        EXPECT_EQ(kvx::jpl::Evaluate(r, 2451540.0, target, 12, pv, true), target == 15 ? 0 : kvx::jpl::kBadTarget);
    kvx::jpl::Close(r);
}

}  // namespace
