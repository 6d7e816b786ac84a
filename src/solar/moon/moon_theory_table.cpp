// Coefficient tables of the built-in lunar theory.
//
// Source: Hydrographic Department, Maritime Safety Agency of Japan,
// simplified formulas for the position of the Moon (time argument in Julian
// years from 1975 January 0.0, TT), as tabulated in K. Nagasawa, "Tentai no
// ichi keisan" (Computation of the positions of celestial bodies), enlarged
// edition, Chijin Shokan, Tokyo, 1985. Where two transcriptions of that
// table differ (latitude rows 0.0005 at rate -8485.3, 0.0004 with phases 119
// and 301), the J2000.0 form below and the Delaunay combination of the rate
// decide.
//
// Cross-check: every longitude and latitude row was carried to the J2000.0
// epoch (phase + rate x 25.003422 years, the sine turned round for negative
// rates) and compared with the J2000.0-epoch form of the same formulas in
// K. Nagasawa, "Hi no de, hi no iri no keisan" (Computing sunrise and
// sunset), Chijin Shokan, 1999; all 108 rows agree within the rounding of the
// two tabulations (test_moon_theory.cpp keeps that comparison). The rates of
// the parallax rows are those of the matching longitude arguments.
//
// Each row: amplitude (degrees), phase (degrees), rate (degrees per Julian
// year); the term is amplitude x sin(phase + rate T) for longitude and
// latitude and amplitude x cos(phase + rate T) for the parallax.
#include "solar/moon/moon_theory.h"

namespace kvx::moon {

// Longitude: the rows after the equation of the centre (6.2887 degrees,
// evaluated in moon_theory.cpp with its argument corrections).
const TheoryTerm kLongitudeTerms[kLongitudeTermCount] = {
    {1.2740, 107.248, -4133.3536},
    {0.6583, 51.668, 8905.3422},
    {0.2136, 317.831, 9543.9773},
    {0.1856, 176.531, 359.9905},
    {0.1143, 292.463, 9664.0404},
    {0.0588, 86.16, 638.635},
    {0.0572, 103.78, -3773.363},
    {0.0533, 30.58, 13677.331},
    {0.0459, 124.86, -8545.352},
    {0.0410, 342.38, 4411.998},
    {0.0348, 25.83, 4452.671},
    {0.0305, 155.45, 5131.979},
    {0.0153, 240.79, 758.698},
    {0.0125, 271.38, 14436.029},
    {0.0110, 226.45, -4892.052},
    {0.0107, 55.58, -13038.696},
    {0.0100, 296.75, 14315.966},
    {0.0085, 34.5, -8266.71},
    {0.0079, 290.7, -4493.34},
    {0.0068, 228.2, 9265.33},
    {0.0052, 133.1, 319.32},
    {0.0050, 202.4, 4812.66},
    {0.0048, 68.6, -19.34},
    {0.0040, 34.1, 13317.34},
    {0.0040, 9.5, 18449.32},
    {0.0040, 93.8, -1.33},
    {0.0039, 103.3, 17810.68},
    {0.0037, 65.1, 5410.62},
    {0.0027, 321.3, 9183.99},
    {0.0026, 174.8, -13797.39},
    {0.0024, 82.7, 998.63},
    {0.0024, 4.7, 9224.66},
    {0.0022, 121.4, -8185.36},
    {0.0021, 134.4, 9903.97},
    {0.0021, 173.1, 719.98},
    {0.0021, 100.3, -3413.37},
    {0.0020, 248.6, -19.34},
    {0.0018, 98.1, 4013.29},
    {0.0016, 344.1, 18569.38},
    {0.0012, 52.1, -12678.71},
    {0.0011, 250.3, 19208.02},
    {0.0009, 81.0, -8586.0},
    {0.0008, 207.0, 14037.3},
    {0.0008, 31.0, -7906.7},
    {0.0007, 346.0, 4052.0},
    {0.0007, 294.0, -4853.3},
    {0.0007, 90.0, 278.6},
    {0.0006, 237.0, 1118.7},
    {0.0005, 82.0, 22582.7},
    {0.0005, 276.0, 19088.0},
    {0.0005, 73.0, -17450.7},
    {0.0005, 112.0, 5091.3},
    {0.0004, 116.0, -398.7},
    {0.0004, 25.0, -120.1},
    {0.0004, 181.0, 9584.7},
    {0.0004, 18.0, 720.0},
    {0.0003, 60.0, -3814.0},
    {0.0003, 13.0, -3494.7},
    {0.0003, 13.0, 18089.3},
    {0.0003, 152.0, 5492.0},
    {0.0003, 317.0, -40.7},
    {0.0003, 348.0, 23221.3},
};

// Latitude: the rows after the main term (5.1282 degrees).
const TheoryTerm kLatitudeTerms[kLatitudeTermCount] = {
    {0.2806, 215.147, 9604.0088},
    {0.2777, 77.316, 60.0316},
    {0.1732, 4.563, -4073.322},
    {0.0554, 308.98, 8965.374},
    {0.0463, 343.48, 698.667},
    {0.0326, 287.9, 13737.362},
    {0.0172, 194.06, 14375.997},
    {0.0093, 25.6, -8845.31},
    {0.0088, 98.4, -4711.96},
    {0.0082, 1.1, -3713.33},
    {0.0043, 322.4, 5470.66},
    {0.0042, 266.8, 18509.35},
    {0.0034, 188.0, -4433.31},
    {0.0025, 312.5, 8605.38},
    {0.0022, 291.4, 13377.37},
    {0.0021, 340.0, 1058.66},
    {0.0019, 218.6, 9244.02},
    {0.0018, 291.8, -8206.68},
    {0.0018, 52.8, 5192.01},
    {0.0017, 168.7, 14496.06},
    {0.0016, 73.8, 420.02},
    {0.0015, 262.1, 9284.69},
    {0.0015, 31.7, 9964.0},
    {0.0014, 260.8, -299.96},
    {0.0013, 239.7, 4472.03},
    {0.0013, 30.4, 379.35},
    {0.0012, 304.9, 4812.68},
    {0.0012, 12.4, -4851.36},
    {0.0011, 173.0, 19147.99},
    {0.0010, 312.9, -12978.66},
    {0.0008, 1.0, 17870.7},
    {0.0008, 190.0, 9724.1},
    {0.0007, 22.0, 13098.7},
    {0.0006, 117.0, 5590.7},
    {0.0006, 47.0, -13617.3},
    {0.0005, 22.0, -8485.3},
    {0.0005, 150.0, 4193.4},
    {0.0004, 119.0, -9483.9},
    {0.0004, 246.0, 23281.3},
    {0.0004, 301.0, 10242.6},
    {0.0004, 126.0, 9325.4},
    {0.0004, 104.0, 14097.4},
    {0.0003, 340.0, 22642.7},
    {0.0003, 270.0, 18149.4},
    {0.0003, 358.0, -3353.3},
    {0.0003, 148.0, 19268.0},
};

// Horizontal parallax: the rows after the constant 0.9507 degrees.
const TheoryTerm kParallaxTerms[kParallaxTermCount] = {
    {0.0518, 338.92, 4771.989},
    {0.0095, 287.2, -4133.35},
    {0.0078, 51.7, 8905.34},
    {0.0028, 317.8, 9543.98},
    {0.0009, 31.0, 13677.3},
    {0.0005, 305.0, -8545.4},
    {0.0004, 284.0, -3773.4},
    {0.0003, 342.0, 4412.0},
};

}  // namespace kvx::moon
