// The meteor-shower catalogue: the line grammar, loading with growth, the sample file, hostile files.
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <string>
#include <tuple>
#include <vector>

#include "calendar/meteor.h"
#include "kvxlib.h"
#include "test_support.h"

namespace {

using kvx::meteor::ParseLine;
using kvx::test::TestDataPath;

bool Parses(const std::string &line, MeteorInfo *m = nullptr) {
    MeteorInfo tmp;
    return ParseLine(line.c_str(), m ? m : &tmp);
}

// Every field of a line, blanks around every comma and at the line end,
// empty texts, signed and bare-point numbers, the optional last integer.
TEST(MeteorLine, FieldsBlanksAndTheOptionalInteger) {
    MeteorInfo m;
    ASSERT_TRUE(Parses(" \t12 ,\t\"GEM\" , \"Geminids\",\"Futago-za\" , \"12/04-12/20\",262.2 , 112,33 ,35,2.6,150 ,17, 4 \r\n",
                       &m));
    EXPECT_EQ(std::string(m.code) + "|" + m.name + "|" + m.name2, "GEM|Geminids|Futago-za");
    EXPECT_EQ(std::vector<double>(m.value, m.value + 5), (std::vector<double>{262.2, 112, 33, 35, 2.6}));
    EXPECT_EQ(std::tuple(m.number, m.intValue, m.value6, m.optional), std::tuple(12, 150, 17.0, 4));
    ASSERT_TRUE(Parses("3,\"A\",\"\",\"\",\"\",-1.5,-0,0.25,10.,.5,0,0\n", &m));
    EXPECT_EQ(std::string(m.code) + "|" + m.name, "A|");
    EXPECT_EQ(std::vector<double>(m.value, m.value + 5), (std::vector<double>{-1.5, 0, 0.25, 10, 0.5}));
    EXPECT_EQ(m.optional, -1);
}

// Each line of the grammar's cases is accepted or refused as its flag says.
TEST(MeteorLine, AcceptedAndRefusedLines) {
    std::ifstream in(TestDataPath("expected/meteor_lines.txt"));
    int n = 0;
    for (std::string line; std::getline(in, line); n += line[0] != '#')
        EXPECT_TRUE(line[0] == '#' || Parses(line.substr(2)) == (line[0] == '1')) << line;
    EXPECT_EQ(n, 19);
    EXPECT_FALSE(Parses("") || Parses("   \t\r\n"));  // empty and blank lines
}

TEST(MeteorCatalogue, SampleFileLoadsEveryShower) {
    const int32_t before = GetMeteorInfoCount();
    EXPECT_FALSE(kvx::meteor::LoadFile(TestDataPath("hostile/meteor_comments_only.txt").c_str()));
    EXPECT_EQ(GetMeteorInfoCount(), before);  // a failed load keeps the count
    EXPECT_EQ(IsValidMeteorFile(), 0);

    ASSERT_TRUE(kvx::meteor::LoadFile(TestDataPath("meteor.txt").c_str()));
    EXPECT_EQ(IsValidMeteorFile(), 1);
    ASSERT_EQ(GetMeteorInfoCount(), 13);  // beyond the first ten: the array grew
    const MeteorInfo *per = GetMeteorInfo(5), *urs = GetMeteorInfo(12);
    ASSERT_TRUE(per && urs);
    EXPECT_EQ(std::string(per->code) + "|" + per->name, "PER|Perseids");
    EXPECT_EQ(std::tuple(per->value[0], per->intValue, per->optional, urs->number), std::tuple(140.0, 100, 7, 13));
    EXPECT_EQ(GetMeteorInfo(13), nullptr);

    kvx::meteor::Release();
    EXPECT_EQ(IsValidMeteorFile(), 0);
    EXPECT_EQ(GetMeteorInfoCount(), 13);  // release keeps the count
    EXPECT_EQ(GetMeteorInfo(0), nullptr);
}

TEST(MeteorCatalogue, HostileFiles) {
    for (const std::string &path : {std::string("/nonexistent/meteor.txt"), TestDataPath("hostile/meteor_empty.txt"),
                                    TestDataPath("hostile/meteor_unterminated.txt"), TestDataPath("hostile")})
        EXPECT_FALSE(kvx::meteor::LoadFile(path.c_str())) << path;  // the last: a directory
    // Lines longer than the 255-character buffer are read in pieces that are
    // all rejected; the one ordinary line is kept.
    ASSERT_TRUE(kvx::meteor::LoadFile(TestDataPath("hostile/meteor_long_lines.txt").c_str()));
    EXPECT_EQ(GetMeteorInfoCount(), 1);
    EXPECT_STREQ(GetMeteorInfo(0)->name, "x");
    kvx::meteor::Release();
    // Random bytes: whatever is accepted, nothing is read out of bounds.
    if (kvx::meteor::LoadFile(TestDataPath("hostile/meteor_binary.bin").c_str())) kvx::meteor::Release();
    EXPECT_EQ(IsValidMeteorFile(), 0);
}

}  // namespace
