// kvx comet --tail and the SVG views of comet tails and planetary
// satellites: the listing's structure and the pictures' well-formedness and
// content (no pixels are compared).
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "apps/kvx_runner.h"

namespace {

using kvx::test::RunKvx;

// A small XML check: elements close in order under one <svg> root, every
// attribute is name="value", text holds no '<' or bare '&'. Returns the
// count of each element, with "error" on the first fault.
std::map<std::string, int> XmlElements(const std::string &x) {
    static const std::regex tag(R"(<(/?)([a-z]+)((?:\s+[a-zA-Z0-9:-]+="[^"<&]*(?:&[a-z]+;[^"<&]*)*")*)\s*(/?)>([^<&]*(?:&[a-z]+;[^<&]*)*))");
    std::map<std::string, int> count;
    std::vector<std::string> open;
    size_t at = x.find("<svg");
    for (std::smatch m; at < x.size() && std::regex_search(x.begin() + at, x.end(), m, tag, std::regex_constants::match_continuous); at += m.length(0)) {
        if (m[1].length() && (open.empty() || open.back() != m[2])) return {{"error", 1}};
        if (m[1].length()) open.pop_back();
        else if (open.empty() && count.count("svg")) return {{"error", 1}};
        else if (++count[m[2]], !m[4].length()) open.push_back(m[2]);
    }
    if (at < x.size() || !open.empty()) count["error"] = 1;
    return count;
}

std::string Slurp(const std::string &path) {
    std::ifstream in(path);
    std::stringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

const char *const kNeowise =
    "comet --T 2459034.1784 --q 0.2946494 --e 0.9991780 --peri 37.27865 --node 61.01042 --incl 128.93750 "
    "--name 'C/2020 F3 & co' --date 2020-07-20T00:00 --tz 0";

// Three syndynes by four synchrones: the JSON lists both families over
// the one grid, the picture draws one curve per syndyne and synchrone plus
// the ion tail and the sunward arrow.
TEST(KvxSvgCli, CometTailListingAndPicture) {
    const std::string svg = ::testing::TempDir() + "kvx_tail.svg";
    const auto r = RunKvx(std::string(kNeowise) + " --tail --betas 0.1,0.5,1 --ages 2,5,10,15 --svg '" + svg + "' --json");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_TRUE(r.err.empty()) << r.err;
    const auto j = r.json();
    ASSERT_TRUE(j["syndynes"].size() == 3u && j["synchrones"].size() == 4u && j["syndynes"][1]["points"].size() == 4u);
    EXPECT_EQ(j["syndynes"][2]["points"][3]["ra_deg"].num(), j["synchrones"][3]["points"][2]["ra_deg"].num());
    // The farthest grain (beta 1, 15 days) makes the tip.
    EXPECT_EQ(j["dust_tail"]["length_deg"].num(), j["syndynes"][2]["points"][3]["separation_deg"].num());
    const std::string x = Slurp(svg);
    const auto n = XmlElements(x);
    ASSERT_EQ(n.count("error"), 0u) << x.substr(0, 400);
    EXPECT_EQ(n.at("polyline"), 3 + 4 + 2);
    EXPECT_NE(x.find("C/2020 F3 &amp; co"), std::string::npos);
    for (const char *label : {">N<", ">E<", ">beta 0.5<", ">10 d<", ">ion<", "east to the left"})
        EXPECT_NE(x.find(label), std::string::npos) << label;
    std::remove(svg.c_str());
    // The text form names both families.
    const auto t = RunKvx(std::string(kNeowise) + " --tail");
    ASSERT_EQ(t.status, 0) << t.err;
    EXPECT_TRUE(t.Has("Syndynes") && t.Has("Synchrones") && t.Has("Ion tail (400 km/s)")) << t.out;
}

// Saturn's disc and its eight satellites, each named.
TEST(KvxSvgCli, MoonsPicture) {
    const std::string svg = ::testing::TempDir() + "kvx_moons.svg";
    const auto r = RunKvx("moons saturn --date 2024-09-08T00:00 --tz 0 --svg '" + svg + "'");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_TRUE(r.err.empty()) << r.err;
    const std::string x = Slurp(svg);
    ASSERT_EQ(XmlElements(x).count("error"), 0u) << x.substr(0, 400);
    EXPECT_EQ(XmlElements(x).at("circle"), 1 + 8);
    for (const char *name : {">Titan<", ">Iapetus<", ">Mimas<", "arcsec"}) EXPECT_NE(x.find(name), std::string::npos) << name;
    std::remove(svg.c_str());
}

}  // namespace
