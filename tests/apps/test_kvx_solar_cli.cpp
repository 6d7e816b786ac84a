// kvx orbit, sun, planet and comet: output shape, the values the library
// gives, and usage errors.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <sstream>
#include <string>

#include "apps/kvx_runner.h"
#include "kvxlib.h"

namespace {

using CliResult = kvx::test::KvxResult;

CliResult Kvx(const std::string &args) { return kvx::test::RunKvx(args); }

TEST(KvxOrbitCli, PointsOfTheMeanOrbit) {
    const CliResult r = Kvx("orbit Mars --date 2000-01-01T12:00 --points 5");
    ASSERT_EQ(r.status, 0);
    std::istringstream in(r.out);
    std::string line;
    std::getline(in, line);
    EXPECT_EQ(line.rfind("# Mars: mean orbit of JDE 2451545.0007", 0), 0u) << line;
    double x, y, z;
    int count = 0;
    double first = 0, third = 0;
    while (in >> x >> y >> z) {
        const double r = std::sqrt(x * x + y * y + z * z);
        if (count == 0) first = r;
        if (count == 2) third = r;
        ++count;
    }
    EXPECT_EQ(count, 5);
    OrbitElm el;
    GetPlanetOrbitElm(2, 2451545.0007, &el);
    EXPECT_NEAR(first, el.a * (1 - el.e), 1e-6);  // perihelion
    EXPECT_NEAR(third, el.a * (1 + el.e), 1e-6);  // aphelion
}

TEST(KvxOrbitCli, JsonAndUsageErrors) {
    const CliResult j = Kvx("orbit earth --points 2 --json --date 2024-01-01");
    ASSERT_EQ(j.status, 0);
    EXPECT_NE(j.out.find("\"code\": -3"), std::string::npos) << j.out;
    EXPECT_NE(j.out.find("\"points\": [["), std::string::npos) << j.out;
    EXPECT_EQ(Kvx("orbit vulcan").status, 2);
    EXPECT_EQ(Kvx("orbit mars --points 1").status, 2);
    EXPECT_EQ(Kvx("orbit").status, 2);
}

double JsonValue(const std::string &text, const std::string &key) {
    const size_t at = text.find("\"" + key + "\": ");
    if (at == std::string::npos) return NAN;
    return std::stod(text.substr(at + key.size() + 4));
}

TEST(KvxSunCli, EquinoxOf2024) {
    // March equinox 2024: 03:06 UT on March 20.
    const CliResult r = Kvx("sun --date 2024-03-20T03:06 --tz 0 --json --lat 0 --lon 0 --height 0");
    ASSERT_EQ(r.status, 0);
    EXPECT_LT(std::fabs(JsonValue(r.out, "dec")), 0.002) << r.out;
    EXPECT_LT(std::fabs(std::remainder(JsonValue(r.out, "ra"), 360.0)), 0.005) << r.out;
    EXPECT_NEAR(JsonValue(r.out, "distance"), 0.9959, 0.0002);
    const CliResult t = Kvx("sun --date 2024-03-20T12:00 --tz 9");
    ASSERT_EQ(t.status, 0);
    EXPECT_NE(t.out.find("disk       P "), std::string::npos) << t.out;
}

TEST(KvxPlanetCli, AllBodiesAndOne) {
    const CliResult all = Kvx("planet all --date 2024-01-01 --json");
    ASSERT_EQ(all.status, 0);
    for (const char *name : {"Mercury", "Pluto", "Eris", "Ceres", "Makemake", "Haumea"})
        EXPECT_NE(all.out.find(std::string("\"name\": \"") + name + "\""), std::string::npos) << name;
    const CliResult mars = Kvx("planet MARS --date 2024-01-01");
    ASSERT_EQ(mars.status, 0);
    EXPECT_NE(mars.out.find("Mars"), std::string::npos);
    EXPECT_EQ(Kvx("planet vulcan").status, 2);
    EXPECT_EQ(Kvx("planet").status, 2);
}

TEST(KvxCometCli, MpcLineMatchesTheLibrary) {
    const std::string line =
        "    CK23A030  2024 09 27.7405  0.391423  1.000093  308.4930   21.5601  139.1115  20240831   6.0  4.0  "
        "C/2023 A3 (Tsuchinshan-ATLAS)                            MPEC 2024-R22";
    const CliResult r = Kvx("comet --json --date 2024-10-13T09:00 --tz 0 --lat 0 --lon 0 --height 0 --line '" + line + "'");
    ASSERT_EQ(r.status, 0) << r.out;
    CometElements el{};
    el.kind = 'C';
    el.perihelionJd = CalcJd(2024, 9, 27.7405);
    el.q = 0.391423;
    el.e = 1.000093;
    el.peri = 308.4930;
    el.node = 21.5601;
    el.incl = 139.1115;
    el.equinox = 2000.0;
    el.h = 6.0;
    el.slope = 10.0;
    const ADate d{2024, 10, 13, 9, 0, 0.0, 0.0};
    const Observer o{0, 0, 0};
    ATime t;
    SetATimeDate(&d, &o, &t);
    BodyPos sun, c;
    CalcSun(&t, &sun);
    ASSERT_EQ(CalcComet(&el, &t, &sun, &c), 1);
    EXPECT_NEAR(JsonValue(r.out, "ra"), c.f[2], 1e-9);
    EXPECT_NEAR(JsonValue(r.out, "dec"), c.f[3], 1e-9);
    EXPECT_NEAR(JsonValue(r.out, "magnitude"), c.f[35], 1e-9);
    EXPECT_EQ(Kvx("comet --line 'too short'").status, 2);
    EXPECT_EQ(Kvx("comet --q 1").status, 2);
}

}  // namespace
