// Shared by the harnesses: the fuzzer's bytes as a file the readers open by
// path. The file is an anonymous memory file (memfd) reached through
// /proc/self/fd, rewritten for every input, so nothing touches the disk and
// the readers run exactly as they do on a data file.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace kvx::fuzz {

class MemoryFile {
public:
    MemoryFile() {
        fd_ = memfd_create("kvx-fuzz", 0);
        if (fd_ < 0) std::abort();
        std::snprintf(path_, sizeof path_, "/proc/self/fd/%d", fd_);
    }
    // Replaces the content with data[0..size).
    const char *Write(const uint8_t *data, size_t size) {
        if (ftruncate(fd_, 0) != 0) std::abort();
        size_t done = 0;
        while (done < size) {
            const ssize_t n = pwrite(fd_, data + done, size - done, static_cast<off_t>(done));
            if (n <= 0) std::abort();
            done += static_cast<size_t>(n);
        }
        return path_;
    }
    const char *Path() const { return path_; }

private:
    int fd_ = -1;
    char path_[48] = {};
};

// The process-wide file of a harness.
inline MemoryFile &File() {
    static MemoryFile f;
    return f;
}

// Reads the double at byte `at` of data (0 beyond the end): lets the input
// choose dates and arguments as well as file content.
inline double DoubleAt(const uint8_t *data, size_t size, size_t at) {
    double d = 0.0;
    unsigned char *p = reinterpret_cast<unsigned char *>(&d);
    for (size_t i = 0; i < sizeof d; ++i) p[i] = at + i < size ? data[at + i] : 0;
    return d;
}

}  // namespace kvx::fuzz
