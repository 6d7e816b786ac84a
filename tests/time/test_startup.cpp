// Start-up scenarios, each in a process of its own: a copy of the shared
// library in a temporary directory (its "own directory"), private XDG
// configuration directories, and the probe (tests/startup/probe.c) that
// loads the library, prints what the exports report and unloads it.
// Also the settings-file reader and the path builder in this process.
#ifndef _WIN32
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "kvxlib.h"
#include "platform/settings.h"
#include "test_support.h"
#include "time/startup.h"

namespace {

namespace fs = std::filesystem;
using kvx::test::TestDataPath;

std::string Slurp(const fs::path &p) {
    std::ifstream in(p, std::ios::binary);
    std::stringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

void Write(const fs::path &p, const std::string &text) {
    fs::create_directories(p.parent_path());
    std::ofstream(p, std::ios::binary) << text;
}

class Scenario {
  public:
    Scenario() {
        char tmpl[] = "/tmp/kvx_startup_XXXXXX";
        root_ = mkdtemp(tmpl);
        lib_ = root_ / "lib";
        fs::create_directories(lib_);
        fs::copy_file(KVX_SHARED_LIBRARY, lib_ / "libkvxlib.so.6");
        user_ = root_ / "user";
        machine_ = root_ / "machine";
        env_ = {"XDG_CONFIG_HOME=" + user_.string(), "XDG_CONFIG_DIRS=" + (root_ / "none").string() + ":" +
                                                          machine_.string(),
                "HOME=" + (root_ / "home").string()};
    }
    ~Scenario() {
        std::error_code ec;
        fs::remove_all(root_, ec);
    }
    fs::path LibDir() const { return lib_; }
    fs::path Root() const { return root_; }
    void Beside(const char *fixture, const char *as) { fs::copy_file(TestDataPath(fixture), lib_ / as); }
    void UserConf(const std::string &text) { Write(user_ / "Pelorin/kvxlib/6.0.conf", text); }
    void MachineConf(const std::string &text) { Write(machine_ / "Pelorin/kvxlib/6.0.conf", text); }
    void SetEnv(std::vector<std::string> env) { env_ = std::move(env); }

    // Runs the probe; fills the reported values and the captured stderr.
    std::map<std::string, std::string> Run() {
        const fs::path out = root_ / "out.txt", err = root_ / "err.txt";
        const pid_t pid = fork();
        if (pid == 0) {
            std::vector<char *> envp;
            for (auto &e : env_) envp.push_back(e.data());
            envp.push_back(nullptr);
            if (!freopen(out.c_str(), "w", stdout) || !freopen(err.c_str(), "w", stderr)) _exit(120);
            const std::string lib = (lib_ / "libkvxlib.so.6").string();
            execle(KVX_STARTUP_PROBE, KVX_STARTUP_PROBE, lib.c_str(), static_cast<char *>(nullptr), envp.data());
            _exit(121);
        }
        int status = -1;
        waitpid(pid, &status, 0);
        exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        stderrText = Slurp(err);
        std::map<std::string, std::string> values;
        std::istringstream in(Slurp(out));
        std::string line;
        while (std::getline(in, line)) {
            const auto eq = line.find('=');
            if (eq != std::string::npos) values[line.substr(0, eq)] = line.substr(eq + 1);
        }
        return values;
    }

    int exitCode = -1;
    std::string stderrText;

  private:
    fs::path root_, lib_, user_, machine_;
    std::vector<std::string> env_;
};

// The probe's values of the given names, "name=value" joined by blanks.
std::string Pick(std::map<std::string, std::string> &v, std::initializer_list<const char *> names) {
    std::string out;
    for (const char *n : names) out += std::string(out.empty() ? "" : " ") + n + "=" + v[n];
    return out;
}

TEST(Startup, NothingConfiguredAndNoFiles) {
    Scenario s;
    auto v = s.Run();
    ASSERT_EQ(s.exitCode, 0) << s.stderrText;
    EXPECT_EQ(Pick(v, {"GetJplDeVersion", "IsValidMoonXyzFile", "IsValidPlanetXyzFile", "IsValidJdtFile",
                       "IsValidMeteorFile", "GetMeteorInfoCount", "unloaded"}),
              "GetJplDeVersion=-1 IsValidMoonXyzFile=0 IsValidPlanetXyzFile=0 IsValidJdtFile=0 "
              "IsValidMeteorFile=0 GetMeteorInfoCount=-1 unloaded=1");
    // The built-in polynomial (about 63.85 s), not a file's step. The probe
    // prints (UtToDt(jd) - jd) in seconds: the JD's last place is 40 us.
    EXPECT_NEAR(std::stod(v["DeltaT2000"]), 63.85, 0.01);
    // The readers' own lines: the default JPL path is the library's
    // directory, which is no file, and there is no moon.xyz.
    const std::string dir = s.LibDir().string() + "/";
    EXPECT_EQ(s.stderrText, "open " + dir + " failed\nopen " + dir + "moon.xyz failed\n");
}

TEST(Startup, FilesBesideTheLibrary) {
    Scenario s;
    s.Beside("kvxjdt.dat", "kvxjdt.dat");
    s.Beside("planet.xyz", "planet.xyz");
    s.Beside("moon.xyz", "moon.xyz");
    s.Beside("meteor.txt", "meteor.txt");
    auto v = s.Run();
    ASSERT_EQ(s.exitCode, 0) << s.stderrText;
    // No JPL file without a setting.
    EXPECT_EQ(Pick(v, {"GetJplDeVersion", "IsValidMoonXyzFile", "IsValidPlanetXyzFile", "IsValidJdtFile",
                       "IsValidMeteorFile", "GetMeteorInfoCount", "FirstMeteorCode"}),
              "GetJplDeVersion=-1 IsValidMoonXyzFile=1 IsValidPlanetXyzFile=1 IsValidJdtFile=1 "
              "IsValidMeteorFile=1 GetMeteorInfoCount=13 FirstMeteorCode=QUA");
    EXPECT_NEAR(std::stod(v["DeltaT2000"]), 64.184, 1e-4);  // TAI-UTC 32 s from 1999-01-01, + 32.184 s
    EXPECT_EQ(s.stderrText, "open " + s.LibDir().string() + "/ failed\n");
}

TEST(Startup, UserValueHidesOnlyTheSameMachineValue) {
    Scenario s;
    const fs::path one = s.Root() / "one_meteor.txt";
    Write(one, "7, \"ONE\", \"Only\", \"Hitotsu\", \"\", 1, 2, 3, 4, 5, 6, 7\n");
    s.MachineConf("# machine-wide settings\nMeteorFile=" + TestDataPath("meteor.txt") +
                  "\nPlanetXyzFile=" + TestDataPath("planet.xyz") + "\n");
    s.UserConf("MeteorFile=" + one.string() + "\n");
    auto v = s.Run();
    ASSERT_EQ(s.exitCode, 0) << s.stderrText;
    // The user's meteor file, still the machine's planet file, and by
    // default nothing beside the library.
    EXPECT_EQ(Pick(v, {"GetMeteorInfoCount", "FirstMeteorCode", "IsValidPlanetXyzFile", "IsValidJdtFile"}),
              "GetMeteorInfoCount=1 FirstMeteorCode=ONE IsValidPlanetXyzFile=1 IsValidJdtFile=0");
}

TEST(Startup, OnMemoryYesOrTrueInAnyCaseButNotOne) {
    for (const char *value : {"YES", "tRuE", "1", "yes "}) {
        Scenario s;
        s.UserConf(std::string("OnMemory=") + value + "\nPlanetXyzFile=" + TestDataPath("planet.xyz") + "\n");
        auto v = s.Run();
        ASSERT_EQ(s.exitCode, 0) << s.stderrText;
        // In memory the planet file is closed (and still used).
        const bool on = std::string(value) == "YES" || std::string(value) == "tRuE";
        EXPECT_EQ(v["IsValidPlanetXyzFile"], on ? "0" : "1") << "OnMemory=" << value;
    }
}

TEST(Startup, JplFileServesTheMoonEvenWhenMoonXyzExists) {
    Scenario s;
    // A moon.xyz that would print "Unknown file format" if it were opened.
    s.Beside("hostile/de_garbage.bin", "moon.xyz");
    s.UserConf("JplEphUnixFile=" + TestDataPath("de405_2000.bin") + "\n");
    auto v = s.Run();
    ASSERT_EQ(s.exitCode, 0) << s.stderrText;
    EXPECT_EQ(v["GetJplDeVersion"], "405");
    EXPECT_EQ(v["IsValidMoonXyzFile"], "1");
    EXPECT_EQ(s.stderrText, "");

    Scenario without;
    without.Beside("hostile/de_garbage.bin", "moon.xyz");
    v = without.Run();
    EXPECT_EQ(v["IsValidMoonXyzFile"], "0");
    const std::string dir = without.LibDir().string() + "/";
    EXPECT_EQ(without.stderrText, "open " + dir + " failed\nUnknown file format. file=" + dir + "moon.xyz\n");
}


TEST(Startup, HomeConfigWhenXdgConfigHomeIsUnsetAndBrokenSettings) {
    Scenario s;
    const fs::path home = s.Root() / "home";
    Write(home / ".config/Pelorin/kvxlib/6.0.conf",
          "\xEF\xBB\xBFjunk line without an equals sign\r\n  meteorfile = " + TestDataPath("meteor.txt") +
              "\r\nDtUtFile=" + std::string(300, 'x') + "\r\n");
    s.MachineConf("DtUtFile=" + TestDataPath("kvxjdt.dat") + "\n");
    s.SetEnv({"HOME=" + home.string(), "XDG_CONFIG_DIRS=" + (s.Root() / "machine").string()});
    auto v = s.Run();
    ASSERT_EQ(s.exitCode, 0) << s.stderrText;
    // Names compare without regard to case and blanks around them; the value
    // is taken as stored. The 300-character user value does not fit the
    // 260-byte path buffer, so the machine's value is used.
    EXPECT_EQ(v["GetMeteorInfoCount"], "-1");  // " /path" with its leading blank does not open
    EXPECT_EQ(v["IsValidJdtFile"], "1");
}

TEST(StartupSettings, ConfigurationFileLines) {
    const fs::path conf = fs::temp_directory_path() / "kvx_settings_test.conf";
    Write(conf,
          "# comment\n"
          "  \t\n"
          "DtUtFile=/first\n"
          "DTUTFILE=/second\n"
          "MeteorFile = /with blank/and=equals \r\n"
          "Empty=\n"
          "Long=" + std::string(259, 'a') + "\n"
          "TooLong=" + std::string(260, 'a') + "\n"
          "NoNewline=/last");
    char buf[260];
    ASSERT_TRUE(kvx::platform::ReadSettingFromFile(conf.c_str(), "DtUtFile", buf, sizeof buf));
    EXPECT_STREQ(buf, "/first");
    ASSERT_TRUE(kvx::platform::ReadSettingFromFile(conf.c_str(), "meteorfile", buf, sizeof buf));
    EXPECT_STREQ(buf, " /with blank/and=equals ");
    ASSERT_TRUE(kvx::platform::ReadSettingFromFile(conf.c_str(), "Empty", buf, sizeof buf));
    EXPECT_STREQ(buf, "");
    EXPECT_TRUE(kvx::platform::ReadSettingFromFile(conf.c_str(), "Long", buf, sizeof buf));
    EXPECT_FALSE(kvx::platform::ReadSettingFromFile(conf.c_str(), "TooLong", buf, sizeof buf));
    ASSERT_TRUE(kvx::platform::ReadSettingFromFile(conf.c_str(), "NoNewline", buf, sizeof buf));
    EXPECT_STREQ(buf, "/last");
    EXPECT_FALSE(kvx::platform::ReadSettingFromFile(conf.c_str(), "comment", buf, sizeof buf));
    EXPECT_FALSE(kvx::platform::ReadSettingFromFile(conf.c_str(), "Missing", buf, sizeof buf));
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
    // The spans of the DE, Moon and Delta T files are checked through kvx
    // data (KvxData.ReportsEveryLoadedFileAndItsSpan); here the planet
    // blocks, the refused indices and the release.
    DataFileInfo info{};
    ASSERT_EQ(GetDataFileInfo(KVX_DATA_JPL_DE, 0, &info), 1);
    // The planet file's blocks in file order: Mercury (199, code 0) to Pluto
    // (999, code 7), each a whole number of steps over its span.
    const int32_t codes[] = {0, 1, -3, 2, 3, 4, 5, 6, 7};
    int32_t blocks = 0;
    while (GetDataFileInfo(KVX_DATA_PLANET, blocks, &info)) {
        ASSERT_LT(blocks, 9);
        EXPECT_EQ(info.number, 100 * blocks + 199);
        EXPECT_EQ(info.body, codes[blocks]);
        EXPECT_EQ(info.start, 2451536.5);
        EXPECT_GE(info.count, (info.end - info.start) / info.step + 1) << info.number;
        ++blocks;
    }
    EXPECT_EQ(blocks, 9);
    info.count = -7;
    EXPECT_EQ(GetDataFileInfo(KVX_DATA_JPL_DE, 1, &info), 0);
    EXPECT_EQ(GetDataFileInfo(KVX_DATA_PLANET, -1, &info), 0);
    EXPECT_EQ(GetDataFileInfo(5, 0, &info), 0);
    EXPECT_EQ(info.count, -7);  // nothing written
    EXPECT_EQ(GetDataFileInfo(KVX_DATA_JPL_DE, 0, nullptr), 0);
    kvx::startup::Release();
    for (const int32_t file : {KVX_DATA_JPL_DE, KVX_DATA_MOON, KVX_DATA_PLANET, KVX_DATA_DELTA_T})
        EXPECT_EQ(GetDataFileInfo(file, 0, &info), 0) << file;
    unsetenv("XDG_CONFIG_HOME");
    fs::remove_all(dir);
}

}  // namespace
#endif
