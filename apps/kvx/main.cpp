// kvx: the command-line almanac over kvxlib. With no subcommand it prints
// the almanac for the default place and the current time; every subcommand
// prints text by default and one JSON object with --json. Bad arguments give
// a one-line error and a usage hint on stderr and exit status 2.
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "commands.h"

namespace {

using namespace kvx::cli;

struct Command {
    const char *name;
    const char *usage;               // shown after "kvx "
    std::vector<std::string> flags;  // options that take no value
    int (*run)(const Args &args);
    const char *help = nullptr;      // what it prints, for `kvx NAME --help`
};

#define KVX_PLACE "[--lat D --lon D --height M --tz H|±hh:mm]"

// Every subcommand, in the order of the help listing; the first is the
// default when no subcommand is named.
const Command kCommands[] = {
    {"almanac", "[almanac] [--date YYYY-MM-DDThh:mm] " KVX_PLACE " [--json]", {"json"}, RunAlmanac},
    {"jd", "jd YYYY-MM-DD[Thh:mm[:ss]] [--tz H] [--json]", {"json"}, RunJd},
    {"date", "date JD [--tz H] [--json]", {"json"}, RunDate},
    {"time", "time YYYY-MM-DD[Thh:mm[:ss]] " KVX_PLACE " [--geocentre] [--json]", {"json", "geocentre"}, RunTime},
    {"convert", "convert --from N --to N LON LAT [--date YYYY-MM-DDThh:mm] " KVX_PLACE " [--json]", {"json"},
     RunConvert},
    {"const", "const RA DEC [--epoch J2000|B1875] [--json] | const --list [--json]   (degrees, or H:M:S D:M:S)",
     {"json", "list"}, RunConst},
    {"sun", "sun [--date YYYY-MM-DDThh:mm] " KVX_PLACE " [--json]", {"json"}, RunSun},
    {"planet", "planet NAME|all [--date YYYY-MM-DDThh:mm] " KVX_PLACE " [--json]", {"json"}, RunPlanet},
    {"physical", "physical PLANET [--date YYYY-MM-DDThh:mm] " KVX_PLACE " [--json]", {"json"}, RunPhysical},
    {"comet",
     "comet --line 'MPC line' | --file CometEls.txt [--name TEXT] | --T JDE --q AU --e E --peri D --node D "
     "--incl D [--H M --K K] [--date ...] [--tail [--betas B,... --ages DAYS,... --wind KMS --ion-length AU] [--svg FILE]] "
     "[--json]",
     {"json", "tail"}, RunComet},
    {"moon", "moon [--date YYYY-MM-DDThh:mm] " KVX_PLACE " [--json]", {"json"}, RunMoon},
    {"phases", "phases YEAR [MONTH] [--tz H] [--json]", {"json"}, RunPhases},
    {"rise",
     "rise [sun|moon|PLANET|SATELLITE|all | --star RA DEC | --comet ELEMENTS] [--date YYYY-MM-DD] [--days N | --year Y] "
     KVX_PLACE " [--json]",
     {"json", "comet"}, RunRise},
    {"twilight", "twilight [--date YYYY-MM-DD] [--days N | --year Y] " KVX_PLACE " [--json]", {"json"}, RunTwilight},
    {"moons", "moons mars|jupiter|saturn|uranus|neptune|pluto [--date YYYY-MM-DDThh:mm] " KVX_PLACE " [--svg FILE] [--json]",
     {"json"}, RunMoons},
    {"jupiter", "jupiter --month YYYY-MM [--tz H] [--json]", {"json"}, RunJupiter},
    {"orbit", "orbit NAME [--date YYYY-MM-DD[Thh:mm]] [--tz H] [--points N] [--json]", {"json"}, RunOrbit},
    {"data", "data [--json]", {"json"}, RunData},
    {"meteors", "meteors [--json]", {"json"}, RunMeteors},
    {"calendar", "calendar YYYY-MM [--tz H] [--json]", {"json"}, RunCalendar},
    {"holidays", "holidays YEAR [--json]", {"json"}, RunHolidays},
    {"terms", "terms YEAR [--tz H] [--json]", {"json"}, RunTerms},
    {"eclipses", "eclipses YEAR [--tz H] [--json]", {"json"}, RunEclipses},
    {"events", "events YEAR [--body moon|PLANET] [--tz H] [--json]", {"json"}, RunEvents},
    {"sat", "sat FILE|- [--name NAME] [--days N] [--visible] [--now] [--date YYYY-MM-DDThh:mm] " KVX_PLACE " [--json]",
     {"json", "visible", "now"}, RunSat},
};

// The help text is also the source of the manual page (cmake/kvx-man.cmake):
// a first line "kvx: summary", then sections, each a heading line ending in
// ':' followed by indented lines.
// The sections every command's help shares: units, environment, exit status.
void PrintCommonHelp(FILE *out) {
    std::fprintf(out,
                 "options:\n"
                 "  --date YYYY-MM-DD[Thh:mm[:ss]][Z|±hh:mm]  local civil time (default now); years %d..%d\n"
                 "  --lat D, --lon D   observer's geodetic latitude (-90..90, north +) and longitude\n"
                 "                     (-180..180, east +) in degrees; default Tokyo 35.6895, 139.6917\n"
                 "  --height M         height above the ellipsoid in metres (-1000..100000; default 40)\n"
                 "  --tz H|±hh:mm      zone in hours east of Greenwich (-14..14); default KVX_TZ, else\n"
                 "                     the system's zone (TZ, /etc/localtime) with its daylight saving\n"
                 "  --refraction [--pressure HPA --temperature C]  refracted altitudes (standard\n"
                 "                     atmosphere 1010 hPa, 10 °C); altitudes are geometric without it\n"
                 "  --json             one JSON object: units in key names, null for no value\n"
                 "  --verbose          also show the library's start-up lines about its data files\n"
                 "environment:\n"
                 "  KVX_LAT, KVX_LON, KVX_HEIGHT, KVX_TZ: the default place and zone; options win.\n"
                 "exit status:\n"
                 "  0 on success, 2 for bad arguments (one line on stderr), 1 for other errors.\n",
                 kMinYear, kMaxYear);
}

void PrintUsage(FILE *out) {
    std::fprintf(out, "kvx: the command-line almanac of kvxlib, positional astronomy\n");
    std::fprintf(out, "usage:\n");
    for (const auto &c : kCommands) std::fprintf(out, "  kvx %s\n", c.usage);
    std::fprintf(out, "  kvx --help | --version\n");
    std::fprintf(out,
                 "description:\n"
                 "  With no command, the almanac of the Sun, the Moon and the planets for a place\n"
                 "  (default Tokyo) and the current time. Every command prints text, or one JSON\n"
                 "  object with --json. Dates are local civil time in the zone of --tz, else\n"
                 "  KVX_TZ, else the system's zone; every result starts with the local time and\n"
                 "  zone used. Angles print as 12°34′56.7″ (right ascension in hours); altitudes\n"
                 "  are geometric unless --refraction, and azimuths count from the north through\n"
                 "  the east. 'kvx COMMAND --help' describes one command.\n"
                 "environment:\n"
                 "  KVX_LAT, KVX_LON, KVX_HEIGHT, KVX_TZ: the default place and zone; options win.\n"
                 "files:\n"
#ifdef _WIN32
                 "  The library's data files come from the registry values under\n"
                 "  SOFTWARE\\Pelorin\\kvxlib\\6.0 (current user, then machine), else from\n"
                 "  the directory of kvxlib.dll; 'kvx data' shows them.\n"
#else
                 "  The library's data files come from the settings in\n"
                 "  $XDG_CONFIG_HOME/Pelorin/kvxlib/6.0.conf or Pelorin/kvxlib/6.0.conf under\n"
                 "  $XDG_CONFIG_DIRS, else from its own directory; 'kvx data' shows them.\n"
#endif
                 "exit status:\n"
                 "  0 on success, 2 for bad arguments (one line on stderr), 1 for other errors.\n");
}

const Command *Find(const std::string &name) {
    for (const auto &c : kCommands)
        if (name == c.name) return &c;
    return nullptr;
}

// Help of one command: its usage line, what it prints, the shared options.
void PrintCommandHelp(const Command &c) {
    std::printf("usage: kvx %s\n", c.usage);
    if (c.help) std::printf("%s\n", c.help);
    PrintCommonHelp(stdout);
}

bool Take(std::vector<std::string> &words, const char *word) {
    bool found = false;
    for (auto it = words.begin(); it != words.end();)
        if (*it == word) {
            it = words.erase(it);
            found = true;
        } else {
            ++it;
        }
    return found;
}

}  // namespace

int main(int argc, char **argv) {
    CollectStartupDiagnostics();
    std::vector<std::string> words(argv + 1, argv + argc);
    if (Take(words, "--verbose"))
        for (const auto &line : StartupDiagnostics()) std::fprintf(stderr, "kvxlib: %s\n", line.c_str());
    if (!words.empty() && (words[0] == "--help" || words[0] == "-h" || words[0] == "help")) {
        PrintUsage(stdout);
        return 0;
    }
    if (!words.empty() && words[0] == "--version") {
        std::printf("kvx %s\n", KVX_VERSION_STRING);
        return 0;
    }
    const Command *command = &kCommands[0];
    if (!words.empty() && words[0].rfind("--", 0) != 0) {
        command = Find(words[0]);
        if (!command) {
            std::fprintf(stderr, "kvx: unknown command '%s'\n", words[0].c_str());
            std::fprintf(stderr, "try 'kvx --help'\n");
            return 2;
        }
        words.erase(words.begin());
    }
    if (Take(words, "--help") || Take(words, "-h")) {
        PrintCommandHelp(*command);
        return 0;
    }
    if (Take(words, "--version")) {
        std::printf("kvx %s\n", KVX_VERSION_STRING);
        return 0;
    }
    try {
        std::vector<std::string> flags = command->flags;
        flags.push_back("refraction");  // every command that shows altitudes takes it
        const Args args(words, flags);
        return command->run(args);
    } catch (const UsageError &e) {
        std::fprintf(stderr, "kvx: %s\n", e.message.c_str());
        std::fprintf(stderr, "usage: kvx %s\n", command->usage);
        return 2;
    } catch (const std::exception &e) {
        std::fprintf(stderr, "kvx: %s\n", e.what());
        return 1;
    }
}
