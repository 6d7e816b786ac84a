// The shared library exports exactly the functions the public header
// declares: nothing internal leaks, nothing declared is missing.
#include "test_support.h"

#include <regex>
#include <set>

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

// The standard output of a shell command.
std::string Output(const std::string &cmd) {
    std::string out;
    if (FILE *p = popen(cmd.c_str(), "r")) {
        char buf[512];
        while (std::fgets(buf, sizeof buf, p)) out += buf;
        pclose(p);
    }
    return out;
}

TEST(Exports, DynamicSymbolTableEqualsHeaderDeclarationsAndSonameIsMajorVersion) {
    std::set<std::string> declared = HeaderNames(), exported;
    std::istringstream nm(Output(std::string("nm -D --defined-only '") + KVX_SHARED_LIBRARY + "'"));
    for (std::string addr, type, name; nm >> addr >> type >> name;) {
        if (type.size() != 1 || std::string("TWDBRVi").find(type) == std::string::npos) continue;
        name = name.substr(0, name.find('@'));
        if (name != "KVXLIB_6") exported.insert(name);
    }
    ASSERT_GT(declared.size(), 50u);
    for (const auto &n : declared) EXPECT_TRUE(exported.count(n)) << "declared but not exported: " << n;
    for (const auto &n : exported) EXPECT_TRUE(declared.count(n)) << "exported but not declared: " << n;
    const std::string soname = Output(std::string("objdump -p '") + KVX_SHARED_LIBRARY + "' | grep SONAME");
    EXPECT_NE(soname.find("libkvxlib.so.6"), std::string::npos) << soname;
}

}  // namespace
