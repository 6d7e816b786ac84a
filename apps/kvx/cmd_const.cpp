// kvx const: the constellation of a direction.
//
// The library answers with a code 0..88 and holds no names; the names live
// here. The code-to-constellation table below was derived by comparing the
// library's codes with PyEphem's ephem.constellation at many random
// directions away from boundaries (tests/reference/make_constellation_reference.py);
// Serpens is two regions with one IAU abbreviation, told apart by name.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "commands.h"

namespace kvx::cli {

namespace {

struct Constellation {
    const char *abbreviation;  // IAU three-letter abbreviation
    const char *name;
};

// Indexed by the library's constellation code.
constexpr Constellation kConstellations[89] = {
    {"And", "Andromeda"},                // 0
    {"Mon", "Monoceros"},                // 1
    {"Sgr", "Sagittarius"},              // 2
    {"Del", "Delphinus"},                // 3
    {"Ind", "Indus"},                    // 4
    {"Psc", "Pisces"},                   // 5
    {"Lep", "Lepus"},                    // 6
    {"Boo", "Bootes"},                   // 7
    {"Hya", "Hydra"},                    // 8
    {"Eri", "Eridanus"},                 // 9
    {"Tau", "Taurus"},                   // 10
    {"CMa", "Canis Major"},              // 11
    {"Lup", "Lupus"},                    // 12
    {"UMa", "Ursa Major"},               // 13
    {"Vir", "Virgo"},                    // 14
    {"Ari", "Aries"},                    // 15
    {"Ori", "Orion"},                    // 16
    {"Pic", "Pictor"},                   // 17
    {"Cas", "Cassiopeia"},               // 18
    {"Dor", "Dorado"},                   // 19
    {"Cnc", "Cancer"},                   // 20
    {"Com", "Coma Berenices"},           // 21
    {"Cha", "Chamaeleon"},               // 22
    {"Crv", "Corvus"},                   // 23
    {"CrB", "Corona Borealis"},          // 24
    {"Tuc", "Tucana"},                   // 25
    {"Aur", "Auriga"},                   // 26
    {"Cam", "Camelopardalis"},           // 27
    {"Pav", "Pavo"},                     // 28
    {"Cet", "Cetus"},                    // 29
    {"Cep", "Cepheus"},                  // 30
    {"Cen", "Centaurus"},                // 31
    {"Mic", "Microscopium"},             // 32
    {"CMi", "Canis Minor"},              // 33
    {"Equ", "Equuleus"},                 // 34
    {"Vul", "Vulpecula"},                // 35
    {"UMi", "Ursa Minor"},               // 36
    {"LMi", "Leo Minor"},                // 37
    {"Crt", "Crater"},                   // 38
    {"Lyr", "Lyra"},                     // 39
    {"Cir", "Circinus"},                 // 40
    {"Ara", "Ara"},                      // 41
    {"Sco", "Scorpius"},                 // 42
    {"Tri", "Triangulum"},               // 43
    {"Leo", "Leo"},                      // 44
    {"Nor", "Norma"},                    // 45
    {"Sct", "Scutum"},                   // 46
    {"Cae", "Caelum"},                   // 47
    {"Scl", "Sculptor"},                 // 48
    {"Gru", "Grus"},                     // 49
    {"Men", "Mensa"},                    // 50
    {"Lib", "Libra"},                    // 51
    {"Lac", "Lacerta"},                  // 52
    {"Hor", "Horologium"},               // 53
    {"Vol", "Volans"},                   // 54
    {"Pup", "Puppis"},                   // 55
    {"Mus", "Musca"},                    // 56
    {"Cyg", "Cygnus"},                   // 57
    {"Oct", "Octans"},                   // 58
    {"Col", "Columba"},                  // 59
    {"Aps", "Apus"},                     // 60
    {"Gem", "Gemini"},                   // 61
    {"Peg", "Pegasus"},                  // 62
    {"Ser", "Serpens Caput"},            // 63
    {"Oph", "Ophiuchus"},                // 64
    {"Her", "Hercules"},                 // 65
    {"Per", "Perseus"},                  // 66
    {"Vel", "Vela"},                     // 67
    {"Tel", "Telescopium"},              // 68
    {"Phe", "Phoenix"},                  // 69
    {"Ant", "Antlia"},                   // 70
    {"Aqr", "Aquarius"},                 // 71
    {"Hyi", "Hydrus"},                   // 72
    {"Cru", "Crux"},                     // 73
    {"PsA", "Piscis Austrinus"},         // 74
    {"CrA", "Corona Australis"},         // 75
    {"TrA", "Triangulum Australe"},      // 76
    {"Sge", "Sagitta"},                  // 77
    {"Cap", "Capricornus"},              // 78
    {"Lyn", "Lynx"},                     // 79
    {"Pyx", "Pyxis"},                    // 80
    {"Dra", "Draco"},                    // 81
    {"Car", "Carina"},                   // 82
    {"CVn", "Canes Venatici"},           // 83
    {"Ret", "Reticulum"},                // 84
    {"For", "Fornax"},                   // 85
    {"Sex", "Sextans"},                  // 86
    {"Aql", "Aquila"},                   // 87
    {"Ser", "Serpens Cauda"},            // 88
};

// A right ascension: decimal degrees, or hours as H:M[:S].
double ParseRa(const std::string &text) {
    if (text.find(':') == std::string::npos) return ParseNumber(text, "RA");
    double h = 0, m = 0, s = 0;
    char tail = 0;
    const int n = std::sscanf(text.c_str(), "%lf:%lf:%lf%c", &h, &m, &s, &tail);
    if (n < 2 || n > 3 || h < 0 || m < 0 || m >= 60 || s < 0 || s >= 60)
        throw UsageError{"RA: not degrees or H:M:S: '" + text + "'"};
    return (h + m / 60.0 + s / 3600.0) * 15.0;
}

// A declination: decimal degrees, or [+-]D:M[:S]; within -90..90.
double ParseDec(const std::string &text) {
    double dec;
    if (text.find(':') == std::string::npos) {
        dec = ParseNumber(text, "DEC");
    } else {
        const bool negative = !text.empty() && text[0] == '-';
        const std::string body = (!text.empty() && (text[0] == '-' || text[0] == '+')) ? text.substr(1) : text;
        double d = 0, m = 0, s = 0;
        char tail = 0;
        const int n = std::sscanf(body.c_str(), "%lf:%lf:%lf%c", &d, &m, &s, &tail);
        if (n < 2 || n > 3 || d < 0 || m < 0 || m >= 60 || s < 0 || s >= 60)
            throw UsageError{"DEC: not degrees or D:M:S: '" + text + "'"};
        dec = d + m / 60.0 + s / 3600.0;
        if (negative) dec = -dec;
    }
    if (std::fabs(dec) > 90.0) throw UsageError{"DEC must lie within -90..90"};
    return dec;
}

std::string ListJson() {
    std::string items = "[";
    for (int code = 0; code < 89; ++code) {
        if (code) items += ", ";
        items += Json()
                     .Int("code", code)
                     .Str("abbreviation", kConstellations[code].abbreviation)
                     .Str("name", kConstellations[code].name)
                     .Text();
    }
    return items + "]";
}

}  // namespace

int RunConst(const Args &args) {
    if (args.Flag("list")) {
        args.ExpectPositional(0, 0);
        if (args.Flag("json")) {
            std::printf("%s\n", Json().Raw("constellations", ListJson()).Text().c_str());
        } else {
            for (int code = 0; code < 89; ++code)
                std::printf("%2d  %-3s  %s\n", code, kConstellations[code].abbreviation, kConstellations[code].name);
        }
        return 0;
    }
    args.ExpectPositional(2, 2);
    const double ra = ParseRa(args.Positional()[0]);
    const double dec = ParseDec(args.Positional()[1]);
    const std::string epoch = args.Option("epoch").value_or("J2000");
    double epochJd;
    if (epoch == "J2000") {
        epochJd = 2451545.0;
    } else if (epoch == "B1875") {
        epochJd = 2405888.5;  // the equinox of the boundaries, looked up as given
    } else {
        throw UsageError{"--epoch must be J2000 or B1875"};
    }
    const double ad[2] = {ra, dec};
    const int32_t code = GetConstellation(ad, epochJd);
    const bool found = code >= 0 && code < 89;
    const char *abbreviation = found ? kConstellations[code].abbreviation : "";
    const char *name = found ? kConstellations[code].name : "";
    if (args.Flag("json")) {
        std::printf("%s\n", Json()
                                .Num("ra", ra)
                                .Num("dec", dec)
                                .Str("epoch", epoch)
                                .Int("code", code)
                                .Str("abbreviation", abbreviation)
                                .Str("name", name)
                                .Text()
                                .c_str());
    } else if (found) {
        std::printf("%d %s %s\n", code, abbreviation, name);
    } else {
        std::printf("%d (no constellation)\n", code);
    }
    return found ? 0 : 1;
}

}  // namespace kvx::cli
