/* The public header compiles as C99 and the shared library links from C:
 * the README's example, checked. */
#include <stdio.h>

#include "kvxlib.h"

int main(void) {
    ADate date = {2000, 1, 1, 21, 0, 0.0, 9.0};
    double jd = GetJd(&date);
    if (jd != 2451545.0) {
        printf("GetJd gave %.6f\n", jd);
        return 1;
    }
    printf("JD %.6f\n", jd);
    return 0;
}
