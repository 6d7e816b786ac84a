// Start-up scenarios, each a process running the probe (tests/startup/ probe.c) on a copy of the library in a
// temporary directory with private XDG directories; the settings-file reader and the data-file description.
#ifndef _WIN32
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "platform/settings.h"
#include "test_support.h"
#include "time/startup.h"

namespace {

namespace fs = std::filesystem;
using kvx::test::TestDataPath;

void Write(const fs::path &p, const std::string &text) {
    fs::create_directories(p.parent_path());
    std::ofstream(p, std::ios::binary) << text;
}

class Scenario {
  public:
    Scenario() {
        char tmpl[] = "/tmp/kvx_startup_XXXXXX";
        root = mkdtemp(tmpl);
        fs::create_directories(root / "lib");
        fs::copy_file(KVX_SHARED_LIBRARY, root / "lib/libkvxlib.so.6");
        env = {"XDG_CONFIG_HOME=" + (root / "user").string(),
               "XDG_CONFIG_DIRS=" + (root / "none").string() + ":" + (root / "machine").string(),
               "HOME=" + (root / "home").string()};
    }
    ~Scenario() {
        std::error_code ec;
        fs::remove_all(root, ec);
    }
    void Beside(const char *fixture, const char *as) { fs::copy_file(TestDataPath(fixture), root / "lib" / as); }
    void Conf(const char *who, const std::string &text) { Write(root / who / "Pelorin/kvxlib/6.0.conf", text); }

    // Runs the probe: its "name=value" lines, exit code and standard error.
    std::map<std::string, std::string> Run() {
        const fs::path out = root / "out.txt", err = root / "err.txt";
        const pid_t pid = fork();
        if (pid == 0) {
            std::vector<char *> envp;
            for (auto &e : env) envp.push_back(e.data());
            envp.push_back(nullptr);
            if (!freopen(out.c_str(), "w", stdout) || !freopen(err.c_str(), "w", stderr)) _exit(120);
            const std::string lib = (root / "lib/libkvxlib.so.6").string();
            execle(KVX_STARTUP_PROBE, KVX_STARTUP_PROBE, lib.c_str(), static_cast<char *>(nullptr), envp.data());
            _exit(121);
        }
        int status = -1;
        waitpid(pid, &status, 0);
        exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        std::stringstream e, o;
        e << std::ifstream(err).rdbuf(), o << std::ifstream(out).rdbuf();
        stderrText = e.str();
        std::map<std::string, std::string> values;
        for (std::string line; std::getline(o, line);)
            if (const auto eq = line.find('='); eq != std::string::npos) values[line.substr(0, eq)] = line.substr(eq + 1);
        return values;
    }

    fs::path root;
    std::vector<std::string> env;
    int exitCode = -1;
    std::string stderrText;
};

// Set-up, the "name=value" pairs the probe must print, its standard error ('@': the library's directory and a slash;
// null: not checked) and Delta T at J2000.0 in seconds (NaN: not checked; the JD's last place is 40 us).
struct Case {
    const char *name;
    std::function<void(Scenario &)> setup;
    const char *expected;
    const char *stderrText;
    double deltaT, deltaTTolerance;
};

TEST(Startup, ScenariosReportTheirFilesAndDiagnostics) {
    const std::string meteor = TestDataPath("meteor.txt"), planet = TestDataPath("planet.xyz");
    std::vector<Case> cases = {
        // The built-in polynomial; the default JPL path (the library's directory) and moon.xyz fail.
        {"nothing", [](Scenario &) {},
         "GetJplDeVersion=-1 IsValidMoonXyzFile=0 IsValidPlanetXyzFile=0 IsValidJdtFile=0 IsValidMeteorFile=0 "
         "GetMeteorInfoCount=-1 unloaded=1",
         "open @ failed\nopen @moon.xyz failed\n", 63.85, 0.01},
        // No JPL file without a setting; TAI-UTC 32 s from 1999-01-01, + 32.184 s.
        {"beside", [](Scenario &s) { for (const char *f : {"kvxjdt.dat", "planet.xyz", "moon.xyz", "meteor.txt"}) s.Beside(f, f); },
         "GetJplDeVersion=-1 IsValidMoonXyzFile=1 IsValidPlanetXyzFile=1 IsValidJdtFile=1 IsValidMeteorFile=1 "
         "GetMeteorInfoCount=13 FirstMeteorCode=QUA",
         "open @ failed\n", 64.184, 1e-4},
        // The user's meteor file hides only the machine's; nothing beside the library.
        {"user over machine", [&](Scenario &s) {
             Write(s.root / "one.txt", "7, \"ONE\", \"Only\", \"Hitotsu\", \"\", 1, 2, 3, 4, 5, 6, 7\n");
             s.Conf("machine", "# machine-wide settings\nMeteorFile=" + meteor + "\nPlanetXyzFile=" + planet + "\n");
             s.Conf("user", "MeteorFile=" + (s.root / "one.txt").string() + "\n");
         }, "GetMeteorInfoCount=1 FirstMeteorCode=ONE IsValidPlanetXyzFile=1 IsValidJdtFile=0", nullptr, NAN, 0},
        // A JPL file serves the Moon: a garbage moon.xyz is never opened (the opener's line for it: tests/solar/ephem).
        {"jpl moon", [](Scenario &s) {
             s.Beside("hostile/de_garbage.bin", "moon.xyz");
             s.Conf("user", "JplEphUnixFile=" + TestDataPath("de405_2000.bin") + "\n");
         }, "GetJplDeVersion=405 IsValidMoonXyzFile=1", "", NAN, 0},
        // HOME's .config without XDG_CONFIG_HOME; names without case or blanks, values as stored (" /path" fails);
        // 300 characters overflow 260 bytes: the machine's.
        {"home config", [&](Scenario &s) {
             Write(s.root / "home/.config/Pelorin/kvxlib/6.0.conf",
                   "\xEF\xBB\xBFjunk line without an equals sign\r\n  meteorfile = " + meteor +
                       "\r\nDtUtFile=" + std::string(300, 'x') + "\r\n");
             s.Conf("machine", "DtUtFile=" + TestDataPath("kvxjdt.dat") + "\n");
             s.env = {"HOME=" + (s.root / "home").string(), "XDG_CONFIG_DIRS=" + (s.root / "machine").string()};
         }, "GetMeteorInfoCount=-1 IsValidJdtFile=1", nullptr, NAN, 0},
    };
    // OnMemory is YES or TRUE in any case (not 1, no blank): the planet file is closed.
    for (const char *value : {"YES", "tRuE", "1", "yes "}) {
        const bool on = std::string(value) == "YES" || std::string(value) == "tRuE";
        cases.push_back({value, [=](Scenario &s) { s.Conf("user", std::string("OnMemory=") + value + "\nPlanetXyzFile=" + planet + "\n"); },
                       on ? "IsValidPlanetXyzFile=0" : "IsValidPlanetXyzFile=1", nullptr, NAN, 0});
    }
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        Scenario s;
        c.setup(s);
        auto v = s.Run();
        ASSERT_EQ(s.exitCode, 0) << s.stderrText;
        std::istringstream want(c.expected);
        for (std::string pair; want >> pair;) {
            const auto eq = pair.find('=');
            EXPECT_EQ(v[pair.substr(0, eq)], pair.substr(eq + 1)) << pair;
        }
        if (c.stderrText) {
            std::string text;
            for (const char *p = c.stderrText; *p; ++p) text += *p == '@' ? (s.root / "lib/").string() : std::string(1, *p);
            EXPECT_EQ(s.stderrText, text);
        }
        if (!std::isnan(c.deltaT)) { EXPECT_NEAR(std::stod(v["DeltaT2000"]), c.deltaT, c.deltaTTolerance); }
    }
}

TEST(StartupSettings, ConfigurationFileLines) {
    const fs::path conf = fs::temp_directory_path() / "kvx_settings_test.conf";
    Write(conf, "# comment\n  \t\nDtUtFile=/first\nDTUTFILE=/second\nMeteorFile = /with blank/and=equals \r\nEmpty=\n"
                "Long=" + std::string(259, 'a') + "\nTooLong=" + std::string(260, 'a') + "\nNoNewline=/last");
    // The first line of a name wins, in any case; the value as stored.
    const struct {
        const char *name;
        bool found;
        const char *value;  // null: not compared
    } cases[] = {{"DtUtFile", true, "/first"}, {"meteorfile", true, " /with blank/and=equals "}, {"Empty", true, ""},
                 {"Long", true, nullptr}, {"NoNewline", true, "/last"}, {"TooLong", false, nullptr},
                 {"comment", false, nullptr}, {"Missing", false, nullptr}};
    char buf[260];
    for (const auto &c : cases) {
        const bool found = kvx::platform::ReadSettingFromFile(conf.c_str(), c.name, buf, sizeof buf);
        EXPECT_EQ(found, c.found) << c.name;
        if (c.value) { EXPECT_STREQ(buf, c.value) << c.name; }
    }
    EXPECT_FALSE(kvx::platform::ReadSettingFromFile("/nonexistent.conf", "DtUtFile", buf, sizeof buf));
    fs::remove(conf);
}

TEST(StartupSettings, DataFileInfoDescribesWhatWasLoaded) {
    const fs::path dir = fs::temp_directory_path() / "kvx_startup_info";
    Write(dir / "Pelorin/kvxlib/6.0.conf", "PlanetXyzFile=" + TestDataPath("planet.xyz") + "\nJplEphUnixFile=" +
                                               TestDataPath("de405_2000.bin") + "\nDtUtFile=" +
                                               TestDataPath("kvxjdt.dat") + "\n");
    setenv("XDG_CONFIG_HOME", dir.c_str(), 1);
    kvx::startup::Load();
    // The planet blocks in file order, Mercury (199, code 0) to Pluto (999, code 7), each a whole number of steps
    // (other spans: through kvx data).
    DataFileInfo info{};
    ASSERT_EQ(GetDataFileInfo(KVX_DATA_JPL_DE, 0, &info), 1);
    const int32_t codes[] = {0, 1, -3, 2, 3, 4, 5, 6, 7};
    int32_t blocks = 0;
    for (; GetDataFileInfo(KVX_DATA_PLANET, blocks, &info) && blocks < 9; ++blocks) {
        EXPECT_TRUE(info.number == 100 * blocks + 199 && info.body == codes[blocks] && info.start == 2451536.5) << blocks;
        EXPECT_GE(info.count, (info.end - info.start) / info.step + 1) << info.number;
    }
    EXPECT_EQ(blocks, 9);
    info.count = -7;  // refused indices and files write nothing
    EXPECT_EQ(GetDataFileInfo(KVX_DATA_JPL_DE, 1, &info) + GetDataFileInfo(KVX_DATA_PLANET, -1, &info) +
                  GetDataFileInfo(5, 0, &info) + GetDataFileInfo(KVX_DATA_JPL_DE, 0, nullptr), 0);
    EXPECT_EQ(info.count, -7);
    kvx::startup::Release();
    for (const int32_t file : {KVX_DATA_JPL_DE, KVX_DATA_MOON, KVX_DATA_PLANET, KVX_DATA_DELTA_T})
        EXPECT_EQ(GetDataFileInfo(file, 0, &info), 0) << file;
    unsetenv("XDG_CONFIG_HOME");
    fs::remove_all(dir);
}

}  // namespace
#endif
