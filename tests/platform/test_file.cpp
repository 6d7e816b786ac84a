// Byte sources: a span of memory reads as the same bytes in a file do, the line reader splits lines exactly as the C
// library's fgets, and the DE reader answers from bytes in memory bit for bit as from the file.

#include <filesystem>
#include <iterator>

#include "platform/file.h"
#include "solar/ephem/jpl_de.h"
#include "test_support.h"

namespace {

namespace fs = std::filesystem;
using kvx::platform::LineReader;
using kvx::platform::MemorySource;
using kvx::platform::Source;

std::string Bytes(const std::string &path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

struct TempFile {
    fs::path path;
    explicit TempFile(const std::string &content)
        : path(fs::temp_directory_path() / ("kvx_source_" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()))) {
        std::ofstream(path, std::ios::binary) << content;
    }
    ~TempFile() { fs::remove(path); }
};

// glibc's fgets is the independent implementation: every call's whole buffer (pre-filled, so bytes past the
// terminator count too) and its result must match, for the file source and the memory source, with lines that are
// empty, hold NUL bytes, end without '\n', are longer than the buffer or straddle the file source's 4096-byte
// read-ahead.
TEST(Source, LineReaderSplitsAsFgets) {
    std::string content = std::string("a\n\nhalf\0nul\n", 12) + std::string(5000, 'x') + "\nyz";
    for (int i = 0; i < 300; ++i) content += std::string(i % 17, static_cast<char>('a' + i % 26)) + (i % 5 ? "\n" : "\r\n");
    content += "tail";
    const TempFile file(content);
    for (size_t room : {size_t{2}, size_t{3}, size_t{7}, size_t{128}, size_t{256}}) {
        for (bool memory : {false, true}) {
            std::FILE *f = std::fopen(file.path.c_str(), "rb");
            ASSERT_NE(f, nullptr);
            Source s = memory ? MemorySource(content.data(), content.size())
                              : kvx::platform::OpenSource(file.path.c_str(), kvx::platform::OpenMode::kBinary);
            LineReader lines(s);
            for (int call = 0;; ++call) {
                std::vector<char> want(room, '\x55'), got(room, '\x55');
                const bool more = std::fgets(want.data(), static_cast<int>(room), f) != nullptr;
                ASSERT_EQ(lines.Next(got.data(), room), more) << "call " << call << " room " << room;
                ASSERT_EQ(got, want) << "call " << call << " room " << room << " memory " << memory;
                if (!more) break;
            }
            std::fclose(f);
            kvx::platform::CloseSource(&s);
        }
    }
}

// The Windows C runtime's text mode, which the readers of text files get there: CR LF reads as LF (also when it is
// cut by the buffer), a lone CR stays, Ctrl-Z ends the text.
TEST(Source, TextModeFoldsCrLfAndStopsAtCtrlZ) {
    const std::string text = "ab\r\nc\rd\r\n\r\n\x1a" "after";
    const Source s = MemorySource(text.data(), text.size(), true);
    LineReader lines(s);
    char buf[4];
    std::vector<std::string> got;
    while (lines.Next(buf, sizeof buf)) got.emplace_back(buf);
    EXPECT_EQ(got, (std::vector<std::string>{"ab\n", "c\rd", "\n", "\n"}));
}

TEST(Source, MemoryReadsAtTheEndsAsAFile) {
    const std::string content = "0123456789";
    const TempFile file(content);
    Source f = kvx::platform::OpenSource(file.path.c_str(), kvx::platform::OpenMode::kBinary);
    Source m = MemorySource(content.data(), content.size());
    for (int64_t at : {int64_t{-1}, int64_t{0}, int64_t{7}, int64_t{10}, int64_t{11}}) {
        char a[4] = {}, b[4] = {};
        EXPECT_EQ(kvx::platform::ReadAt(f, at, a, 4), kvx::platform::ReadAt(m, at, b, 4)) << at;
        EXPECT_EQ(std::string(a, 4), std::string(b, 4)) << at;
    }
    EXPECT_EQ(kvx::platform::SourceLength(f), 10);
    ASSERT_EQ(kvx::platform::LoadIntoMemory(&f, nullptr), kvx::platform::LoadResult::kOk);
    EXPECT_EQ(std::string(reinterpret_cast<const char *>(f.bytes), 10), content);
    kvx::platform::CloseSource(&f);
    EXPECT_EQ(kvx::platform::ReadAt(f, 0, nullptr, 0), -1);  // closed
}

// Every target against two centres at both ends of the excerpt and inside it: the same bits, since both run the same
// record fetch and evaluation.
TEST(Source, DeReaderFromMemoryAnswersAsFromTheFile) {
    const std::string path = kvx::test::TestDataPath("de405_2000.bin");
    const std::string bytes = Bytes(path);
    kvx::jpl::Reader *file = kvx::jpl::Open(path.c_str());
    kvx::jpl::Reader *memory = kvx::jpl::OpenFrom(MemorySource(bytes.data(), bytes.size()), "excerpt");
    ASSERT_NE(file, nullptr);
    ASSERT_NE(memory, nullptr);
    for (double jd : {file->startJd, 2451545.0, 2451900.25, file->endJd})
        for (int target = 1; target <= 15; ++target)
            for (int centre : {3, 12}) {
                double a[6], b[6];
                ASSERT_EQ(kvx::jpl::Evaluate(file, jd, target, centre, a, true),
                          kvx::jpl::Evaluate(memory, jd, target, centre, b, true));
                for (int i = 0; i < 6; ++i) EXPECT_EQ(a[i], b[i]) << jd << " " << target << " " << centre;
            }
    kvx::jpl::Close(file);
    kvx::jpl::Close(memory);
}

}  // namespace
