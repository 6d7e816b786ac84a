// MPC one-line comet elements: fixed columns, each a decimal number.
#include "mpc_line.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace kvx::cli {

namespace {

// A whole field as a finite decimal number (leading blanks allowed, nothing
// after the number).
bool Number(const std::string &text, const char *what, double *v, std::string *error) {
    const char *s = text.c_str();
    char *end = nullptr;
    *v = std::strtod(s, &end);
    if (text.empty() || end == s || *end != '\0' || !std::isfinite(*v)) {
        *error = std::string(what) + ": not a number: '" + text + "'";
        return false;
    }
    return true;
}

}  // namespace

bool ParseMpcLine(const std::string &line, CometElements *out, std::string *error) {
    auto field = [&](size_t from, size_t to) {
        if (line.size() < from) return std::string();
        return line.substr(from - 1, std::min(line.size(), to) - (from - 1));
    };
    if (line.size() < 79) {
        *error = "an MPC comet line has at least 79 columns";
        return false;
    }
    CometElements el;
    std::memset(&el, 0, sizeof el);
    const std::string type = field(5, 5);
    el.kind = type.empty() || type[0] == ' ' ? 'C' : type[0];
    std::string name = field(103, 158);
    while (!name.empty() && name.back() == ' ') name.pop_back();
    if (name.empty()) name = field(1, 12);
    std::strncpy(el.designation, name.c_str(), sizeof el.designation - 1);
    double year, month, day, g = 4.0;
    el.h = 10.0;
    if (!Number(field(15, 18), "perihelion year", &year, error) ||
        !Number(field(20, 21), "perihelion month", &month, error) ||
        !Number(field(23, 29), "perihelion day", &day, error) || !Number(field(31, 39), "q", &el.q, error) ||
        !Number(field(42, 49), "e", &el.e, error) ||
        !Number(field(52, 59), "argument of perihelion", &el.peri, error) ||
        !Number(field(62, 69), "node", &el.node, error) || !Number(field(72, 79), "inclination", &el.incl, error) ||
        (line.size() >= 95 && !Number(field(92, 95), "H", &el.h, error)) ||
        (line.size() >= 100 && !Number(field(97, 100), "G", &g, error)))
        return false;
    el.perihelionJd = CalcJd(year, month, day);
    el.equinox = 2000.0;
    el.slope = 2.5 * g;  // g = 4 when absent: K = 10
    el.validFrom = -1e30;
    el.validTo = 1e30;
    *out = el;
    return true;
}

}  // namespace kvx::cli
