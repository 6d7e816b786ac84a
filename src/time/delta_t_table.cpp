// TAI - UTC before the introduction of leap seconds, 1961 January 1 to
// 1972 January 1: the rate-and-offset steps of the early UTC system as
// published by the U.S. Naval Observatory (file tai-utc.dat) and the BIH
// Annual Report; MJD = JD - 2400000.5.
#include "time/delta_t.h"

namespace kvx::deltat {

const TaiUtcRow kTaiUtc[] = {
    {2437300.5, 1.422818, 37300.0, 0.001296},   // 1961 Jan  1
    {2437512.5, 1.372818, 37300.0, 0.001296},   // 1961 Aug  1
    {2437665.5, 1.845858, 37665.0, 0.0011232},  // 1962 Jan  1
    {2438334.5, 1.945858, 37665.0, 0.0011232},  // 1963 Nov  1
    {2438395.5, 3.24013, 38761.0, 0.001296},    // 1964 Jan  1
    {2438486.5, 3.34013, 38761.0, 0.001296},    // 1964 Apr  1
    {2438639.5, 3.44013, 38761.0, 0.001296},    // 1964 Sep  1
    {2438761.5, 3.54013, 38761.0, 0.001296},    // 1965 Jan  1
    {2438820.5, 3.64013, 38761.0, 0.001296},    // 1965 Mar  1
    {2438942.5, 3.74013, 38761.0, 0.001296},    // 1965 Jul  1
    {2439004.5, 3.84013, 38761.0, 0.001296},    // 1965 Sep  1
    {2439126.5, 4.31317, 39126.0, 0.002592},    // 1966 Jan  1
    {2439887.5, 4.21317, 39126.0, 0.002592},    // 1968 Feb  1
    {2441317.5, 10.0, 41317.0, 0.0},            // 1972 Jan  1: end of the table
};
const int kTaiUtcRows = sizeof(kTaiUtc) / sizeof(kTaiUtc[0]);

}  // namespace kvx::deltat
