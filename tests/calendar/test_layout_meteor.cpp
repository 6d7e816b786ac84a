// Pins the layout of the meteor record handed out by GetMeteorInfo.
#include <gtest/gtest.h>

#include <cstddef>

#include "kvxlib.h"

static_assert(sizeof(MeteorInfo) == 136);
static_assert(offsetof(MeteorInfo, number) == 0 && offsetof(MeteorInfo, code) == 4 && offsetof(MeteorInfo, name) == 8 &&
              offsetof(MeteorInfo, name2) == 40 && offsetof(MeteorInfo, value) == 72 &&
              offsetof(MeteorInfo, intValue) == 112 && offsetof(MeteorInfo, value6) == 120 &&
              offsetof(MeteorInfo, optional) == 128);

TEST(MeteorLayout, RecordsFollowEachOtherWithoutGaps) {
    MeteorInfo two[2];
    EXPECT_EQ(reinterpret_cast<char *>(&two[1]) - reinterpret_cast<char *>(&two[0]), 136);
}
