// Shared by the harnesses. A harness hands the input to a reader as a
// memory source (platform/file.h), so the reader parses and queries it with
// the code it runs on a data file but without a system call per input. The
// last bytes of the input also steer the harness: the reading mode, the
// dates, the targets and the arguments, so that a mutation near the end
// changes the queries and one elsewhere the data (the bytes still belong to
// the file too; a data file's last bytes are the least interesting ones).
// One mode of the replay gives the reader a real file: an anonymous memory
// file (memfd) reached by its /proc/self/fd path.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace kvx::fuzz {

class MemoryFile {
public:
    MemoryFile() {
        fd_ = memfd_create("kvx-fuzz", 0);
        if (fd_ < 0) std::abort();
        std::snprintf(path_, sizeof path_, "/proc/self/fd/%d", fd_);
    }
    // Replaces the content with data[0..size) and returns the path.
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

private:
    int fd_ = -1;
    char path_[48] = {};
};

// The process-wide file of a harness.
inline MemoryFile &File() {
    static MemoryFile f;
    return f;
}

// Steering bytes that replace the input's own (null: none). The replay
// program runs every input once with its own and then under many other
// sets, so that a stored input is queried in every mode and at every kind
// of date, as the fuzzer may have reached it.
struct Override {
    const uint8_t *data = nullptr;
    size_t size = 0;
};
inline Override gOverride;

// The steering bytes, taken from the end of the input (or of the override)
// backwards; 0 once they run out.
class Controls {
public:
    Controls(const uint8_t *data, size_t size)
        : data_(gOverride.data ? gOverride.data : data), size_(gOverride.data ? gOverride.size : size) {}
    uint8_t Byte() { return used_ < size_ ? data_[size_ - 1 - used_++] : 0; }
    // A choice among n (n >= 1).
    unsigned Pick(unsigned n) { return Byte() % n; }
    bool Flag() { return Byte() & 1; }
    // Any double, NaN and infinities included.
    double Double() {
        unsigned char b[sizeof(double)];
        for (unsigned char &c : b) c = Byte();
        double d;
        std::memcpy(&d, b, sizeof d);
        return d;
    }
    // A fraction in [0, 1].
    double Fraction() {
        const unsigned hi = Byte(), lo = Byte();
        return (hi * 256 + lo) / 65535.0;
    }
    // One date of a coverage [a, b]: an end, just outside either end, a
    // point inside, or any double.
    double DateIn(double a, double b) {
        switch (Pick(6)) {
        case 0: return a;
        case 1: return b;
        case 2: return std::nextafter(b, INFINITY);
        case 3: return std::nextafter(a, -INFINITY);
        case 4: return a + (b - a) * Fraction();
        default: return Double();
        }
    }

private:
    const uint8_t *data_;
    size_t size_;
    size_t used_ = 0;
};

// How a harness hands the input to the reader.
enum class Mode { kMemory, kFile, kOnMemory };

// Mostly the memory source, one input in eight the reader's own
// read-into-memory mode, and in the replay program one in 32 the real file.
// The fuzzer itself never takes the file: its system calls cost more than
// the rest of an input, the parsing behind them is the same, and an input
// that once took it would pass the choice on to its mutants.
inline Mode PickMode(Controls &c) {
    const unsigned k = c.Pick(32);
    if (k == 0) return gOverride.data ? Mode::kFile : Mode::kMemory;
    return k <= 4 ? Mode::kOnMemory : Mode::kMemory;
}

}  // namespace kvx::fuzz
