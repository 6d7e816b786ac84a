// Replay driver: runs one harness over every file of the directories and
// files named on the command line (the seed corpus and the reproducers of
// past failures), with the ordinary compiler and no fuzzing engine. A crash,
// a sanitizer report or a hang (ctest's timeout) fails the test.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

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
            ++runs;
        }
    }
    std::printf("%d inputs replayed\n", runs);
    return runs > 0 ? 0 : 1;  // an empty corpus is a broken test
}
