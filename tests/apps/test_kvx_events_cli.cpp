// kvx eclipses and kvx events: a year's lunar eclipses and planetary events
// in text and JSON.
#include <gtest/gtest.h>

#include <string>

#include "apps/kvx_runner.h"

namespace {

using kvx::test::RunKvx;

// 2025: total lunar eclipses on March 14 and September 7 (UT).
TEST(KvxEventsCli, EclipsesOfAYear) {
    const auto r = RunKvx("eclipses 2025 --tz 0");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.err, "");
    EXPECT_TRUE(r.Has("2025-03-14  total eclipse")) << r.out;
    EXPECT_TRUE(r.Has("2025-09-07  total eclipse")) << r.out;
    EXPECT_TRUE(r.Has("U2 totality begins")) << r.out;
    const auto j = RunKvx("eclipses 2020 --json");
    ASSERT_EQ(j.status, 0) << j.err;
    // 2020: four penumbral eclipses, no umbral contacts.
    EXPECT_TRUE(j.Has("\"type\": \"penumbral\"")) << j.out;
    EXPECT_TRUE(j.Has("\"u1_jd\": null")) << j.out;
    EXPECT_TRUE(j.Has("\"gamma_earth_radii\": ")) << j.out;
}

// Venus in 2025: inferior conjunction on March 23, greatest elongations
// east (January 10) and west (June 1).
TEST(KvxEventsCli, EventsOfOneBody) {
    const auto r = RunKvx("events 2025 --body venus --tz 0");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.err, "");
    EXPECT_TRUE(r.Has("2025-03-23")) << r.out;
    EXPECT_TRUE(r.Has("Venus inferior conjunction")) << r.out;
    EXPECT_TRUE(r.Has("2025-01-10")) << r.out;
    EXPECT_TRUE(r.Has("Venus greatest elongation east")) << r.out;
    EXPECT_TRUE(r.Has("Venus greatest elongation west")) << r.out;
    const auto j = RunKvx("events 2025 --body venus --json");
    ASSERT_EQ(j.status, 0) << j.err;
    EXPECT_TRUE(j.Has("\"kind\": \"inferior_conjunction\", \"body\": \"Venus\", \"other\": \"Sun\"")) << j.out;
}

}  // namespace
