// kvx const: the CLI's own table of the 89 constellation codes against the
// table derived from PyEphem, and the lookup command's output and errors.
#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <set>
#include <sstream>
#include <string>

#include "apps/kvx_runner.h"
#include "place/constellation_reference.h"

namespace {

using ConstRun = kvx::test::KvxResult;

ConstRun Kvx(const std::string &args) { return kvx::test::RunKvx(args); }

TEST(KvxConst, EveryCodeNamesExactlyOneConstellation) {
    const ConstRun r = Kvx("const --list");
    ASSERT_EQ(r.status, 0);
    const auto derived = kvx::test::ConstellationCodes();
    ASSERT_EQ(derived.size(), 89u);

    std::map<int, std::pair<std::string, std::string>> listed;
    std::map<std::string, int> abbreviationUses;
    std::set<std::string> names;
    std::istringstream in(r.out);
    std::string line;
    while (std::getline(in, line)) {
        std::istringstream ls(line);
        int code = -1;
        std::string abbreviation, name;
        ls >> code >> abbreviation;
        std::getline(ls >> std::ws, name);
        EXPECT_EQ(listed.count(code), 0u) << "code " << code << " listed twice";
        listed[code] = {abbreviation, name};
        ++abbreviationUses[abbreviation];
        EXPECT_TRUE(names.insert(name).second) << name << " named twice";
    }
    ASSERT_EQ(listed.size(), 89u);
    for (const auto &row : derived) {
        ASSERT_EQ(listed.count(row.code), 1u) << row.code;
        EXPECT_EQ(listed[row.code].first, row.iau) << "code " << row.code;
        EXPECT_EQ(listed[row.code].second, row.name) << "code " << row.code;
    }
    // Every IAU abbreviation once, except Serpens: one constellation, two regions.
    for (const auto &[abbreviation, uses] : abbreviationUses)
        EXPECT_EQ(uses, abbreviation == "Ser" ? 2 : 1) << abbreviation;
}

TEST(KvxConst, PrintsCodeAbbreviationAndName) {
    ConstRun r = Kvx("const 83.8 -5.4 --epoch B1875");
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, "16 Ori Orion\n");
    r = Kvx("const 5:35:17 -5:23:28 --epoch B1875 --json");
    EXPECT_EQ(r.status, 0);
    EXPECT_NE(r.out.find("\"code\": 16, \"abbreviation\": \"Ori\", \"name\": \"Orion\""), std::string::npos) << r.out;
    // J2000.0 by default: Polaris and Betelgeuse.
    r = Kvx("const 37.95454 89.26411");
    EXPECT_EQ(r.out, "36 UMi Ursa Minor\n");
    r = Kvx("const 5:55:10.3 +7:24:25 --epoch J2000");
    EXPECT_EQ(r.out, "16 Ori Orion\n");
    r = Kvx("const 0 -90 --epoch B1875");
    EXPECT_EQ(r.out, "58 Oct Octans\n");
    // -360 deg reduces to 24h, outside every strip: no constellation.
    r = Kvx("const -360 10 --epoch B1875");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.out, "-1 (no constellation)\n");
}

TEST(KvxConst, BadArgumentsExitTwo) {
    for (const char *bad : {"const", "const 10", "const 10 20 30", "const 10 95", "const 10 -90.5", "const x 10",
                            "const 10 y", "const 1:99 10", "const 10 20 --epoch B1950", "const --list 10"})
        EXPECT_EQ(Kvx(bad).status, 2) << bad;
}

}  // namespace
