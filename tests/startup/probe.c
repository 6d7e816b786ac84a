/* Start-up probe: loads the kvxlib shared library named on the command line
 * with dlopen (which runs the library's load sequence), prints what the
 * exported functions report as "name=value" lines, and unloads it (which
 * runs the release sequence). Used by tests/startup/test_startup.cpp, one
 * process per scenario. */
#ifdef _WIN32
/* The Windows build runs the same probe under wine: LoadLibraryA runs
 * DllMain's attach, FreeLibrary its detach. */
#include <string.h>
#include <windows.h>
#define RTLD_NOW 0
#define RTLD_LOCAL 0
static void *dlopen(const char *path, int flags) { (void)flags; return (void *)LoadLibraryA(path); }
static void *dlsym(void *lib, const char *name) {
    void *p;
    FARPROC f = GetProcAddress((HMODULE)lib, name);
    memcpy(&p, &f, sizeof p);
    return p;
}
static int dlclose(void *lib) { return FreeLibrary((HMODULE)lib) ? 0 : 1; }
static const char *dlerror(void) { return "LoadLibraryA failed"; }
#else
#include <dlfcn.h>
#endif
#include <stdint.h>
#include <stdio.h>
#include <string.h>

typedef int32_t (*IntFn)(void);
typedef double (*DtFn)(double);
typedef const void *(*MeteorFn)(int32_t);

static void PrintInt(void *lib, const char *name) {
    IntFn f = (IntFn)dlsym(lib, name);
    if (f) printf("%s=%d\n", name, (int)f());
    else printf("%s=missing\n", name);
}

int main(int argc, char **argv) {
    if (argc < 2) return 2;
    void *lib = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    if (!lib) {
        fprintf(stderr, "probe: %s\n", dlerror());
        return 3;
    }
    const char *ints[] = {"GetJplDeVersion", "IsValidMoonXyzFile", "IsValidPlanetXyzFile",
                          "IsValidJdtFile", "IsValidMeteorFile", "GetMeteorInfoCount"};
    for (size_t i = 0; i < sizeof ints / sizeof ints[0]; ++i) PrintInt(lib, ints[i]);
    DtFn utToDt = (DtFn)dlsym(lib, "UtToDt");
    if (utToDt) printf("DeltaT2000=%.6f\n", (utToDt(2451545.0) - 2451545.0) * 86400.0);
    MeteorFn meteor = (MeteorFn)dlsym(lib, "GetMeteorInfo");
    const char *first = meteor ? (const char *)meteor(0) : NULL;
    printf("FirstMeteorCode=%s\n", first ? first + 4 : "none"); /* code follows the int32 number */
    fflush(stdout);
    if (dlclose(lib) != 0) return 4;
    printf("unloaded=1\n");
    return 0;
}
