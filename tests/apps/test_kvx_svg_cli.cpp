// kvx comet --tail and the SVG views of comet tails and planetary
// satellites: the listing's structure and the pictures' well-formedness and
// content (no pixels are compared).
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "apps/kvx_runner.h"

namespace {

using kvx::test::RunKvx;

// A small XML check: every element closes in order, attribute values are
// quoted, the root is <svg>. Returns the count of each element name, or an
// entry "error" naming the first fault.
std::map<std::string, int> XmlElements(const std::string &x) {
    std::map<std::string, int> count;
    std::vector<std::string> open;
    size_t at = x.rfind("?>", 200);
    at = at == std::string::npos ? 0 : at + 2;
    auto fail = [&](const std::string &why) {
        count["error"] = 1;
        count[why + " at " + std::to_string(at)] = 1;
        return count;
    };
    while ((at = x.find('<', at)) != std::string::npos) {
        const size_t end = x.find('>', at);
        if (end == std::string::npos) return fail("unclosed tag");
        std::string tag = x.substr(at + 1, end - at - 1);
        if (tag.find('<') != std::string::npos) return fail("'<' inside a tag");
        if (tag[0] == '/') {
            if (open.empty() || open.back() != tag.substr(1)) return fail("mismatched </" + tag.substr(1) + ">");
            open.pop_back();
        } else {
            const bool empty = tag.back() == '/';
            if (empty) tag.pop_back();
            const std::string name = tag.substr(0, tag.find_first_of(" \n"));
            if (open.empty() && count.empty() && name != "svg") return fail("root is not svg");
            if (!open.empty() || count.empty()) ++count[name];
            else return fail("second root");
            size_t q = 0, quotes = 0;
            while ((q = tag.find('"', q)) != std::string::npos) ++quotes, ++q;
            if (quotes % 2 || tag.find("= ") != std::string::npos) return fail("unquoted attribute");
            if (!empty) open.push_back(name);
        }
        // Character data may not hold a bare '&' (only entities).
        const size_t next = x.find('<', end);
        const std::string text = x.substr(end + 1, next == std::string::npos ? std::string::npos : next - end - 1);
        for (size_t a = text.find('&'); a != std::string::npos; a = text.find('&', a + 1))
            if (text.find(';', a) == std::string::npos) return fail("bare &");
        at = end + 1;
    }
    if (!open.empty()) return fail("unclosed <" + open.back() + ">");
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
    ASSERT_EQ(j["syndynes"].size(), 3u);
    ASSERT_EQ(j["synchrones"].size(), 4u);
    EXPECT_EQ(j["syndynes"][1]["points"].size(), 4u);
    EXPECT_EQ(j["syndynes"][2]["points"][3]["ra_deg"].num(), j["synchrones"][3]["points"][2]["ra_deg"].num());
    // The farthest grain (beta 1, 15 days) makes the tip.
    EXPECT_EQ(j["dust_tail"]["length_deg"].num(), j["syndynes"][2]["points"][3]["separation_deg"].num());
    EXPECT_GT(j["ion_tail"]["aberration_deg"].num(), 0.0);
    const std::string x = Slurp(svg);
    const auto n = XmlElements(x);
    ASSERT_EQ(n.count("error"), 0u) << x.substr(0, 400);
    EXPECT_EQ(n.at("svg"), 1);
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
    const auto n = XmlElements(x);
    ASSERT_EQ(n.count("error"), 0u) << x.substr(0, 400);
    EXPECT_EQ(n.at("circle"), 1 + 8);
    for (const char *name : {">Titan<", ">Iapetus<", ">Mimas<", "arcsec"}) EXPECT_NE(x.find(name), std::string::npos) << name;
    std::remove(svg.c_str());
}

}  // namespace
