// kvx physical: the physical ephemeris of a planet (orientation of the
// globe, central meridians, illumination, Saturn's rings) and its
// Mallama & Hilton magnitude.
#include <cstdio>
#include <string>

#include "commands.h"
#include "report.h"

namespace kvx::cli {

int RunPhysical(const Args &args) {
    args.ExpectPositional(1, 1);
    const std::string want = Lower(args.Positional()[0]);
    int code = -1;
    for (int c = 0; c <= 7; ++c)
        if (want == Lower(kPlanetNames[c])) code = c;
    if (code < 0) throw UsageError{"unknown planet \"" + args.Positional()[0] + "\" (mercury..pluto)"};
    Place place;
    ATime t = TimeFromArgs(args, &place);
    BodyPos sun, p;
    CalcSun(&t, &sun);
    CalcPlanet(code, &t, &sun, &p);
    const BodyLine line{kPlanetNames[code], p, true, code};
    const char *model;
    const double mag = ShownMagnitude(t, line, &model);
    const double *f = p.f;
    NpJupiter jup{};
    NpSaturn sat{};
    if (code == 3) GetNpJupiter(&t, &p, &jup);
    if (code == 4) GetNpSaturn(&t, &p, &sat);

    if (args.Flag("json")) {
        Json j;
        j.Str("name", kPlanetNames[code])
            .Num("jd", t.jd)
            .Num("jde", t.jde)
            .When(place, t.jd)
            .Num("distance_au", f[KVX_BP_DISTANCE - 1])
            .Num("diameter_arcsec", f[34])
            .Num("polar_diameter_arcsec", f[KVX_BP_POLAR_DIAM - 1])
            .Num("phase_angle_deg", f[KVX_BP_PHASE_ANGLE - 1])
            .Num("illuminated_fraction", f[18])
            .Num("defect_arcsec", f[KVX_BP_DEFECT - 1])
            .Num("bright_limb_deg", f[19])
            .Num("earth_lat_deg", f[KVX_BP_EARTH_LAT - 1])
            .Num("sun_lat_deg", f[KVX_BP_SUN_LAT - 1])
            .Num("axis_pa_deg", f[KVX_BP_AXIS_PA - 1])
            .Num("central_meridian_deg", f[KVX_BP_CM - 1])
            .Num("sun_lon_deg", f[KVX_BP_SUN_LON - 1])
            .Num("pole_ra_j2000_deg", f[KVX_BP_POLE_RA - 1])
            .Num("pole_dec_j2000_deg", f[KVX_BP_POLE_DEC - 1])
            .Num("magnitude", mag)
            .Str("magnitude_model", model);
        if (code == 3) j.Num("cm_system1_deg", jup.cm1).Num("cm_system2_deg", jup.cm2).Num("cm_system3_deg", jup.cm3);
        if (code == 4)
            j.Num("ring_earth_lat_deg", sat.earthLat)
                .Num("ring_sun_lat_deg", sat.sunLat)
                .Num("ring_delta_u_deg", sat.deltaU)
                .Num("ring_major_axis_arcsec", sat.majorAxis)
                .Num("ring_minor_axis_arcsec", sat.minorAxis);
        std::printf("%s\n", j.Text().c_str());
        return 0;
    }
    PrintHeader(place, t.jd);
    std::printf("%s  physical ephemeris  JDE %.6f\n", kPlanetNames[code], t.jde);
    std::printf("  distance     %.6f AU  diameter %.2f\" (polar %.2f\")\n", f[KVX_BP_DISTANCE - 1], f[34],
                f[KVX_BP_POLAR_DIAM - 1]);
    std::printf("  illumination phase angle %.2f  illuminated %.4f  defect %.2f\"  bright limb %.2f\n",
                f[KVX_BP_PHASE_ANGLE - 1], f[18], f[KVX_BP_DEFECT - 1], f[19]);
    std::printf("  orientation  DE %+.3f  DS %+.3f  P %.3f  (planetocentric declinations of the Earth and the Sun,\n"
                "               position angle of the north pole)\n",
                f[KVX_BP_EARTH_LAT - 1], f[KVX_BP_SUN_LAT - 1], f[KVX_BP_AXIS_PA - 1]);
    std::printf("  longitudes   central meridian %.3f%s  sub-solar %.3f\n", f[KVX_BP_CM - 1],
                code >= 3 && code <= 6 ? " (System III)" : "", f[KVX_BP_SUN_LON - 1]);
    if (code == 3) std::printf("  Jupiter      System I %.3f  System II %.3f\n", jup.cm1, jup.cm2);
    if (code == 4)
        std::printf("  rings        B %+.3f  B' %+.3f  dU %.3f  axes %.2f\" x %.2f\"\n", sat.earthLat, sat.sunLat,
                    sat.deltaU, sat.majorAxis, sat.minorAxis);
    std::printf("  pole (J2000) RA %s  Dec %s\n", FormatHms(f[KVX_BP_POLE_RA - 1], 1).c_str(),
                FormatDms(f[KVX_BP_POLE_DEC - 1], 1, true).c_str());
    std::printf("  magnitude    %+.2f (%s)\n", mag, model);
    return 0;
}

}  // namespace kvx::cli
