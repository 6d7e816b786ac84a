// POSIX file access: fopen, fseeko/ftello with 64-bit offsets; stat to keep
// directories out (fopen accepts them on Linux and the first read fails).
#ifndef _WIN32
#include <sys/stat.h>
#include <sys/types.h>

#include "platform/file.h"

namespace kvx::platform {

std::FILE *OpenForReading(const char *path, const char *mode) {
    if (!path || !mode) return nullptr;
    struct stat st {};
    if (stat(path, &st) == 0 && S_ISDIR(st.st_mode)) return nullptr;
    return std::fopen(path, mode);
}

bool SeekTo(std::FILE *f, int64_t offset) {
    if (!f || offset < 0) return false;
    return fseeko(f, static_cast<off_t>(offset), SEEK_SET) == 0;
}

int64_t FileLength(std::FILE *f) {
    if (!f || fseeko(f, 0, SEEK_END) != 0) return -1;
    const off_t n = ftello(f);
    return n < 0 ? -1 : static_cast<int64_t>(n);
}

}  // namespace kvx::platform
#endif
