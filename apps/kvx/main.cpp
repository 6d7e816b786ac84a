// kvx: the command-line almanac over kvxlib. With no subcommand it prints
// the almanac for the default place and the current time; every subcommand
// prints text by default and one JSON object with --json. Bad arguments give
// a one-line error and a usage hint on stderr and exit status 2.
#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "commands.h"

namespace kvx::cli {

namespace {
std::vector<Command> &Registry() {
    static std::vector<Command> commands;
    return commands;
}
}  // namespace

CommandRegistrar::CommandRegistrar(const Command &c) {
    auto &r = Registry();
    r.push_back(c);
    std::stable_sort(r.begin(), r.end(), [](const Command &a, const Command &b) { return a.order < b.order; });
}

const std::vector<Command> &Commands() { return Registry(); }

}  // namespace kvx::cli

namespace {

void PrintUsage(FILE *out) {
    std::fprintf(out, "usage:\n");
    for (const auto &c : kvx::cli::Commands()) std::fprintf(out, "  kvx %s\n", c.usage);
}

}  // namespace

int main(int argc, char **argv) {
    using namespace kvx::cli;
    std::vector<std::string> words(argv + 1, argv + argc);
    if (!words.empty() && (words[0] == "--help" || words[0] == "-h" || words[0] == "help")) {
        PrintUsage(stdout);
        return 0;
    }
    if (Commands().empty()) return 1;
    const Command *command = &Commands()[0];
    if (!words.empty() && words[0].rfind("--", 0) != 0) {
        command = nullptr;
        for (const auto &c : Commands())
            if (words[0] == c.name) command = &c;
        if (!command) {
            std::fprintf(stderr, "kvx: unknown command '%s'\n", words[0].c_str());
            std::fprintf(stderr, "try 'kvx --help'\n");
            return 2;
        }
        words.erase(words.begin());
    }
    try {
        const Args args(words, command->flags);
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
