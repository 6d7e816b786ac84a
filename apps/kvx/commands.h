// The kvx subcommands. Each lives in its own cmd_*.cpp and is listed in the
// table of main.cpp.
#pragma once

#include "cli.h"

namespace kvx::cli {

struct Command {
    const char *name;
    const char *usage;                     // shown after "kvx "
    std::vector<std::string> flags;        // options that take no value
    int (*run)(const Args &args);
};

const std::vector<Command> &Commands();

int RunAlmanac(const Args &args);
int RunJd(const Args &args);
int RunDate(const Args &args);

}  // namespace kvx::cli
