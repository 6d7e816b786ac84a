// The shared library exports exactly the functions the public header
// declares: nothing internal leaks, nothing declared is missing.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <regex>
#include <set>
#include <string>

namespace {

std::set<std::string> HeaderNames() {
    std::ifstream in(std::string(KVX_SOURCE_DIR) + "/include/kvxlib.h");
    std::set<std::string> names;
    std::string line;
    const std::regex decl(R"(^KVX_API .*?([A-Za-z_][A-Za-z0-9_]*)\s*\()");
    std::smatch m;
    while (std::getline(in, line))
        if (std::regex_search(line, m, decl)) names.insert(m[1]);
    return names;
}

std::set<std::string> DynamicSymbols() {
    std::set<std::string> names;
    const std::string cmd = std::string("nm -D --defined-only '") + KVX_SHARED_LIBRARY + "'";
    FILE *p = popen(cmd.c_str(), "r");
    if (!p) return names;
    char buf[512];
    while (std::fgets(buf, sizeof buf, p)) {
        char addr[64], type[8], name[400];
        if (std::sscanf(buf, "%63s %7s %399s", addr, type, name) != 3) continue;
        const std::string t = type;
        if (t == "T" || t == "W" || t == "D" || t == "B" || t == "R" || t == "V" || t == "i") {
            std::string n = name;
            const size_t at = n.find('@');
            if (at != std::string::npos) n = n.substr(0, at);
            if (n != "KVXLIB_6") names.insert(n);
        }
    }
    pclose(p);
    return names;
}

TEST(Exports, DynamicSymbolTableEqualsHeaderDeclarations) {
    const auto declared = HeaderNames();
    const auto exported = DynamicSymbols();
    ASSERT_GT(declared.size(), 50u);
    for (const auto &n : declared) EXPECT_TRUE(exported.count(n)) << "declared but not exported: " << n;
    for (const auto &n : exported) EXPECT_TRUE(declared.count(n)) << "exported but not declared: " << n;
}

TEST(Exports, SonameIsMajorVersion) {
    const std::string cmd = std::string("objdump -p '") + KVX_SHARED_LIBRARY + "' | grep SONAME";
    FILE *p = popen(cmd.c_str(), "r");
    ASSERT_NE(p, nullptr);
    char buf[256] = {0};
    const bool got = std::fgets(buf, sizeof buf, p) != nullptr;
    pclose(p);
    ASSERT_TRUE(got);
    EXPECT_NE(std::string(buf).find("libkvxlib.so.6"), std::string::npos) << buf;
}

}  // namespace
