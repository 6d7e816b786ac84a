// Every export taking a pointer returns its documented failure value and
// writes nothing when a pointer it needs is null.
#include "test_support.h"

namespace {

TEST(NullPointers, EveryExportReturnsItsFailureValue) {
    ATime t;
    SetATimeJd2(2451545.0, 64.0, 0.0, nullptr, &t);
    BodyPos sun{}, body{};
    CalcSun(&t, &sun);
    body.f[0] = 123.0;
    Ad ad{10.0, 20.0};
    Dc dc{0.0, 0.0, 1.0};
    double v[3] = {1.0, 0.0, 0.0}, m[9], x = 7.0;
    const double pm[2] = {0.0, 0.0};
    ADate date{2000, 1, 1, 0, 0, 0.0, 0.0};
    MoonPhase phases[6];
    OrbitElm elm{};
    CometElements comet{};
    Observer obs{35.0, 135.0, 0.0};
    int32_t year = 0;
    // Each case: one null pointer, the documented result, the records above untouched.
    const std::pair<const char *, std::function<bool()>> cases[] = {
        {"DcToAdR", [&] { return DcToAdR(nullptr, &ad) == 0 && DcToAdR(&dc, nullptr) == 0; }},
        {"DcAbs", [&] { return DcAbs(nullptr) == 0.0; }},
        {"DcMul", [&] { return DcMul(&dc, 2.0, nullptr) == nullptr && DcDiv(nullptr, 2.0, &dc) == nullptr; }},
        {"RotateDc", [&] { return RotateDc(&dc, nullptr, &dc) == nullptr; }},
        {"Lagrange", [&] { return Lagrange(1.0, 3, nullptr, v) == 0.0; }},
        {"GetJd", [&] { return GetJd(nullptr) == 0.0 && CheckDate(nullptr) == 0; }},
        {"ChangeDate", [&] { return ChangeDate(&date, nullptr, 0) == 0 && ChangeTimezone(nullptr, 9.0) == 0; }},
        {"JdToDate", [&] { return JdToDate(2451545.0, &year, nullptr, nullptr) == 2000 && year == 2000; }},
        {"GetNowDate", [&] { return GetNowDate(nullptr, 0.0, 9.0) == 0; }},
        {"SetATime", [&] {
             SetATimeDate(nullptr, nullptr, &t), SetATimeJd(2451545.0, 0.0, nullptr, nullptr);
             SetATimeJd2(2451545.0, 0.0, 0.0, nullptr, nullptr);
             return t.jd == 2451545.0;
         }},
        {"GetTopocenter", [&] { GetTopocenter(nullptr, 2451545.0, v); return v[0] == 0.0 && v[1] == 0.0 && v[2] == 0.0; }},
        {"GcEqtXyzToObs", [&] {
             GcEqtXyzToObs(nullptr, 2451545.0, &obs), GcEqtXyzToObs(v, 2451545.0, nullptr);
             return obs.latitude == 35.0;
         }},
        {"Nutation", [&] {
             GetNutationParam(2451545.0, nullptr), GetNutationMtx(nullptr, 23.4, m);
             PrecEqt(nullptr, &ad, m), PrecEqt(&ad, &ad, nullptr);
             return ad.a == 10.0;
         }},
        {"AnnualAberration", [&] {
             v[0] = 1.0;
             AnnualAberration(nullptr, v, 1, v), AnnualAberration(&t, nullptr, 1, v), AnnualAberration(&t, v, 1, nullptr);
             StarApparent(&t, v, pm, 0.0, nullptr, v), StarApparent(nullptr, v, pm, 0.0, &sun, v);
             return v[0] == 1.0;
         }},
        {"Refraction", [&] {
             return AtmosphericRefraction(nullptr, &ad) == nullptr && DeAtmosphericRefraction(&ad, nullptr) == nullptr;
         }},
        {"Coordinates", [&] {
             return Coordinates(nullptr, 3, &ad, 5, &ad) == nullptr && Coordinates(&t, 3, nullptr, 5, &ad) == nullptr &&
                    Coordinates(&t, 3, &ad, 5, nullptr) == nullptr && ad.a == 10.0;
         }},
        {"PositionAngle", [&] {
             PaDistToAd(nullptr, 0.0, 1.0, &ad), PaDistToAd(&ad, 0.0, 1.0, nullptr), Deg2Point(nullptr, &ad, &x, &x);
             return AdToPaDist(nullptr, &ad, &x, &x) == nullptr && x == 7.0 && ad.a == 10.0;
         }},
        {"GetConstellation", [&] { return GetConstellation(nullptr, 2451545.0) == -1; }},
        {"CalcSun", [&] { CalcSun(nullptr, &body); CalcSun(&t, nullptr); return body.f[0] == 123.0; }},
        {"CalcMoon", [&] {
             CalcMoon2(nullptr, &body), CalcMoon2(&t, nullptr), CalcMoon(nullptr, &body, &sun), CalcMoon(&t, nullptr, &sun);
             return body.f[0] == 123.0;
         }},
        {"CalcMoonLbr", [&] { return CalcMoonLbr(2451545.0, nullptr, &x) == 0 && x == 7.0; }},
        {"GetMoonPhases", [&] { return GetMoonPhases(nullptr, phases, 6) == 0 && GetMoonPhases(&date, nullptr, 6) == 0; }},
        {"CalcLunarEclipse", [&] { return CalcLunarEclipse(2451564.7, nullptr) == 0 && GetLunarEclipses(2000, nullptr, 4) == 0; }},
        {"GetMoonAge", [&] { return GetMoonAge(1000000.0, nullptr, &body) == 0.0; }},
        {"CalcPlanet", [&] {
             return CalcPlanet(2, nullptr, &sun, &body) == 0 && CalcPlanet(2, &t, &sun, nullptr) == 0 &&
                    body.f[0] == 123.0;
         }},
        {"PhysicalEphemeris", [&] {
             NpJupiter jup{};
             return GetPoleXyz(3, 2451545.0, nullptr, &x) == 0 && x == 7.0 && GetNpJupiter(nullptr, &body, &jup) == 0 &&
                    GetNpJupiter(&t, nullptr, &jup) == 0 && GetNpSaturn(&t, &body, nullptr) == 0 &&
                    GetPlanetMagMH(3, &t, nullptr, &x) == 0 && GetPlanetMagMH(3, &t, &body, nullptr) == 0 &&
                    x == 7.0 && jup.cm1 == 0.0 && GetPlanetPhysicalTable(nullptr) != nullptr;
         }},
        {"GetPlanetOrbitElm", [&] {
             return GetPlanetOrbitElm(0, 2451545.0, nullptr) == 0 &&
                    GetPlanetByElement(nullptr, 2451545.0, v, nullptr) == 0 &&
                    CalPVtoElm(nullptr, v, 2451545.0, 0.0, 2000.0, &elm) == 0;
         }},
        {"CometTails", [&] {
             CometTailPoint pt[2] = {};
             CometTail tl{};
             const double b = 0.5;
             return GetCometSyndyname(&comet, &t, &sun, b, 9.0, 2, nullptr) == 0 &&
                    CalcCometDustTail(&comet, &t, &sun, nullptr, 1, &b, 1, pt, &tl) == 0 &&
                    CalcCometIonTail(&comet, &t, &sun, 400.0, 0.1, 2, pt, nullptr) == 0 && pt[0].ra == 0.0;
         }},
        {"CalcComet", [&] {
             return CalcComet(nullptr, &t, &sun, &body) == 0 && GetCometOrbit(nullptr, 41, 6.0, v) == 0 &&
                    GetCometOrbit(&comet, 41, 6.0, nullptr) == 0 && body.f[0] == 123.0;
         }},
    };
    for (const auto &[name, call] : cases) EXPECT_TRUE(call()) << name;
}

}  // namespace
