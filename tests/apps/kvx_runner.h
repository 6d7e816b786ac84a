// Runs the kvx command line for the CLI tests: exit status, standard output and standard error as it is (kvx keeps
// the library's load-time lines off the terminal, so a healthy run leaves it empty).
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <string>

#include "support/json.h"
#include "support/reference.h"
#include "test_support.h"

namespace kvx::test {

struct KvxResult {
    int status;       // exit status, -1 when the command did not exit normally
    std::string out;  // standard output
    std::string err;  // standard error
    bool Has(const std::string &text) const { return out.find(text) != std::string::npos; }
    Json json() const { return Json::Parse(out); }
    int ErrLines() const { return static_cast<int>(std::count(err.begin(), err.end(), '\n')); }
};

// The whole of a file; empty when it cannot be read.
inline std::string ReadFile(const std::string &path) {
    std::ifstream in(path);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline std::string ReadWhole(FILE *f) {
    std::string s;
    char buf[4096];
    for (size_t n; (n = std::fread(buf, 1, sizeof buf, f)) > 0;) s.append(buf, n);
    return s;
}

// `env` is an optional prefix of shell variable assignments ("NAME='v' ...").
inline KvxResult RunKvx(const std::string &args, const std::string &env = "") {
    const std::string errFile = kvx::test::TempPath("stderr.txt");
    // The system's zone is Tokyo's, as is the default place, unless the case sets TZ itself.
    const bool setsZone = env.rfind("TZ=", 0) == 0 || env.find(" TZ=") != std::string::npos;
    const std::string zone = setsZone ? "" : "TZ=Asia/Tokyo ";
    const std::string cmd = zone + env + (env.empty() ? "" : " ") + "'" + KVX_CLI + "' " + args + " 2>'" + errFile + "'";
    KvxResult r{-1, "", ""};
    FILE *p = popen(cmd.c_str(), "r");
    if (!p) return r;
    r.out = ReadWhole(p);
    const int st = pclose(p);
    r.status = WIFEXITED(st) ? WEXITSTATUS(st) : -1;
    r.err = ReadFile(errFile);
    std::remove(errFile.c_str());
    return r;
}

// A healthy run (exit status 0, nothing at all on stderr) that prints each of `texts`.
inline KvxResult Ok(const std::string &args, std::initializer_list<const char *> texts = {},
                    const std::string &env = "") {
    const KvxResult r = RunKvx(args, env);
    EXPECT_EQ(r.status, 0) << args << ": " << r.err;
    EXPECT_EQ(r.err, "") << args;
    for (const char *text : texts) EXPECT_TRUE(r.Has(text)) << args << ": " << text << "\n" << r.out;
    return r;
}

// How often `what` occurs in `text`.
inline int Count(const std::string &text, const std::string &what) {
    int n = 0;
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
    return n;
}

// An instant (JD, UT) as local time at `tz` hours, rounded to `unit` seconds the way kvx prints it,
// formatted from year, month, day, hour, minute, second.
inline std::string LocalText(double jd, double tz, const char *format, double unit = 1.0) {
    ADate d{};
    JdToDate2(jd + tz / 24.0 + 0.5 * unit / 86400.0, &d);
    char text[80];
    std::snprintf(text, sizeof text, format, d.year, d.month, d.day, d.hour, d.minute, static_cast<int>(d.second));
    return text;
}

}  // namespace kvx::test
