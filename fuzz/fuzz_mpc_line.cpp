// An MPC one-line comet record through the command line's parser, then the
// comet's place and orbit from the elements it gives.
#include <initializer_list>
#include <string>

#include "kvxlib.h"
#include "mpc_line.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::string line(reinterpret_cast<const char *>(data), size);
    CometElements el;
    std::string error;
    if (!kvx::cli::ParseMpcLine(line, &el, &error)) return 0;
    for (double jde : {el.perihelionJd, el.perihelionJd + 30.0, 2451545.0}) {
        ATime t;
        SetATimeJd2(jde, 0.0, 0.0, nullptr, &t);
        BodyPos sun{}, comet{};
        CalcSun(&t, &sun);
        CalcComet(&el, &t, &sun, &comet);
    }
    double xyz[3 * 16];
    GetCometOrbit(&el, 16, 50.0, xyz);
    return 0;
}
