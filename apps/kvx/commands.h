// The kvx subcommands. Each lives in its own cmd_*.cpp and registers itself
// with a KVX_COMMAND line, so adding a command touches no shared file.
#pragma once

#include <vector>

#include "cli.h"

namespace kvx::cli {

struct Command {
    const char *name;
    const char *usage;               // shown after "kvx "
    std::vector<std::string> flags;  // options that take no value
    int (*run)(const Args &args);
    int order;                       // position in the help listing
};

// All registered commands, sorted by order; the first is the default.
const std::vector<Command> &Commands();

struct CommandRegistrar {
    explicit CommandRegistrar(const Command &c);
};

// The almanac is built from sections, each in its own file, registered
// with KVX_ALMANAC_SECTION and printed in order.
struct AlmanacContext {
    Place place;
    ADate date;  // local time in place.tz
    double jd;   // universal time
};
struct AlmanacSection {
    int order;
    void (*text)(const AlmanacContext &ctx);            // prints its lines
    void (*json)(const AlmanacContext &ctx, Json &out); // adds its fields
};
const std::vector<AlmanacSection> &AlmanacSections();
struct AlmanacRegistrar {
    explicit AlmanacRegistrar(const AlmanacSection &s);
};

}  // namespace kvx::cli

#define KVX_COMMAND_CAT2(a, b) a##b
#define KVX_COMMAND_CAT(a, b) KVX_COMMAND_CAT2(a, b)
// KVX_COMMAND(order, "name", "usage", {"flag", ...}, RunFunction)
#define KVX_COMMAND(order, name, usage, flags, fn) \
    static const ::kvx::cli::CommandRegistrar KVX_COMMAND_CAT(kvxCommand_, __LINE__)({name, usage, flags, fn, order})
// KVX_ALMANAC_SECTION(order, TextFunction, JsonFunction)
#define KVX_ALMANAC_SECTION(order, text, json) \
    static const ::kvx::cli::AlmanacRegistrar KVX_COMMAND_CAT(kvxAlmanac_, __LINE__)({order, text, json})
