// The meteor-shower catalogue: the line grammar, loading with growth, the sample file, hostile files.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <tuple>
#include <vector>

#include "calendar/meteor.h"
#include "kvxlib.h"
#include "test_support.h"

namespace {

using kvx::meteor::ParseLine;
using kvx::test::TestDataPath;

const char kBase[] = "1,\"ABC\",\"x\",\"y\",\"z\",1,2,3,4,5,6,7";

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

// Limits: three-letter codes, 31-character names (the unstored fourth text any length), quotes required;
// numbers of digits, '.' and '-' only, the integer field digits only; an empty number reads as 0.
TEST(MeteorLine, AcceptedAndRefusedLines) {
    const std::string n31(31, 'n'), n32(32, 'n'), q = "1,\"ABC\",\"x\",\"y\",\"z\",";
    const std::pair<std::string, bool> cases[] = {
        {"1,\"ABCD\",\"x\",\"y\",\"z\",1,2,3,4,5,6,7", false},
        {"1,\"ABC\",\"" + n31 + "\",\"" + n31 + "\",\"z\",1,2,3,4,5,6,7", true},
        {"1,\"ABC\",\"" + n32 + "\",\"y\",\"z\",1,2,3,4,5,6,7", false},
        {"1,\"ABC\",\"x\",\"" + n32 + "\",\"z\",1,2,3,4,5,6,7", false},
        {"1,\"ABC\",\"x\",\"y\",\"" + std::string(150, 'z') + "\",1,2,3,4,5,6,7", true},
        {"1,\"ABC\",\"x\",\"y\",\"z,1,2,3,4,5,6,7", false},
        {"1,ABC,\"x\",\"y\",\"z\",1,2,3,4,5,6,7", false},
        {q + "1e3,2,3,4,5,6,7", false}, {q + "+1,2,3,4,5,6,7", false}, {q + "1,2,3,4,5,-6,7", false},
        {q + "1,2,3,4,5,6,7e1", false}, {q + "1,2,3,4,5,6", false}, {q + "1,,3,4,5,6,7,", true},
        {"", false}, {"   \t\r\n", false}, {"# " + q + "1,2,3,4,5,6,7", false}, {"x1,\"ABC\"", false},
        {"-1,\"ABC\",\"x\",\"y\",\"z\",1,2,3,4,5,6,7", false}, {std::string(kBase) + ",8 x", false},
        {std::string(kBase) + ",8,9", false}, {std::string(kBase) + " x", false},
    };
    for (const auto &[line, accepted] : cases) EXPECT_EQ(Parses(line), accepted) << line;
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
