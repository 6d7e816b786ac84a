// kvx orbit (and later kvx sun / planet / comet): output shape, the values
// the library gives, and usage errors.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cmath>
#include <cstdio>
#include <sstream>
#include <string>

#include "kvxlib.h"

namespace {

struct CliResult {
    int status;
    std::string out;
};

CliResult Kvx(const std::string &args) {
    const std::string cmd = std::string("'") + KVX_CLI + "' " + args + " 2>/dev/null";
    CliResult r{-1, ""};
    FILE *p = popen(cmd.c_str(), "r");
    if (!p) return r;
    char buf[4096];
    size_t n;
    while ((n = std::fread(buf, 1, sizeof buf, p)) > 0) r.out.append(buf, n);
    const int st = pclose(p);
    r.status = WIFEXITED(st) ? WEXITSTATUS(st) : -1;
    return r;
}

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

}  // namespace
