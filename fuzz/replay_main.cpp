// Replay driver: runs one harness over every file of the directories and
// files named on the command line (the seed corpus and the reproducers of
// past failures), with the ordinary compiler and no fuzzing engine. Each
// input runs once as it is and then under kSteerings other sets of steering
// bytes (see fuzz_input.h). A crash, a sanitizer report or a hang (ctest's
// timeout) fails the test.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

int main(int argc, char **argv) {
    namespace fs = std::filesystem;
    int runs = 0;
    for (int a = 1; a < argc; ++a) {
        std::vector<fs::path> files;
        if (fs::is_directory(argv[a])) {
            for (const auto &e : fs::directory_iterator(argv[a]))
                if (e.is_regular_file()) files.push_back(e.path());
        } else {
            files.emplace_back(argv[a]);
        }
        for (const auto &p : files) {
            std::ifstream in(p, std::ios::binary);
            if (!in) {
                std::fprintf(stderr, "cannot read %s\n", p.string().c_str());
                return 1;
            }
            const std::vector<uint8_t> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
            LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
            // Steering bytes from a linear congruential sequence (Knuth's
            // MMIX constants): the same sets on every run.
            constexpr int kSteerings = 64;
            uint64_t x = 1;
            for (int k = 0; k < kSteerings; ++k) {
                uint8_t steer[32];
                for (uint8_t &b : steer) {
                    x = x * 6364136223846793005u + 1442695040888963407u;
                    b = static_cast<uint8_t>(x >> 56);
                }
                kvx::fuzz::gOverride = {steer, sizeof steer};
                LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
                kvx::fuzz::gOverride = {};
            }
            ++runs;
        }
    }
    std::printf("%d inputs replayed\n", runs);
    return runs > 0 ? 0 : 1;  // an empty corpus is a broken test
}
