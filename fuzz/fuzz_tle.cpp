// Two-line elements: the name line and the two element lines cut from the
// input, the elements, and the propagators at the epoch and a day later.
#include <algorithm>
#include <cstring>
#include <initializer_list>

#include "kvxlib.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    TleLines lines;
    std::memset(&lines, 0, sizeof lines);
    char *dst[3] = {lines.name, lines.line1, lines.line2};
    size_t at = 0;
    for (char *d : dst) {  // newline-separated, each cut to 70 bytes
        size_t n = 0;
        while (at < size && data[at] != '\n') {
            if (n < 70) d[n++] = static_cast<char>(data[at]);
            ++at;
        }
        ++at;
    }
    Elm elm;
    ASatTleToElm(&lines, &elm);
    for (double jd : {elm.epoch, elm.epoch + 1.0, elm.epoch + 365.0}) {
        double p[3], v[3];
        CalcASat(jd, &elm, p, v);
        CalcASatFull(jd, &elm, p, v);
    }
    return 0;
}
