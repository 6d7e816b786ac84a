// Data-file access. POSIX: fopen, fseeko/ftello with 64-bit offsets, and
// stat to keep directories out (fopen accepts them on Linux and the first
// read fails). Windows: _fsopen with writers denied, _fseeki64/_ftelli64.
#include "platform/file.h"

#ifdef _WIN32
#include <share.h>
#else
#include <sys/stat.h>
#include <sys/types.h>
#endif

namespace kvx::platform {

namespace {

#ifdef _WIN32
int Seek64(std::FILE *f, int64_t offset, int whence) { return _fseeki64(f, offset, whence); }
int64_t Tell64(std::FILE *f) { return _ftelli64(f); }
#else
int Seek64(std::FILE *f, int64_t offset, int whence) { return fseeko(f, static_cast<off_t>(offset), whence); }
int64_t Tell64(std::FILE *f) { return static_cast<int64_t>(ftello(f)); }
#endif

}  // namespace

std::FILE *OpenForReading(const char *path, const char *mode) {
    if (!path || !mode) return nullptr;
#ifdef _WIN32
    return _fsopen(path, mode, _SH_DENYWR);
#else
    struct stat st {};
    if (stat(path, &st) == 0 && S_ISDIR(st.st_mode)) return nullptr;
    return std::fopen(path, mode);
#endif
}

bool SeekTo(std::FILE *f, int64_t offset) {
    if (!f || offset < 0) return false;
    return Seek64(f, offset, SEEK_SET) == 0;
}

int64_t FileLength(std::FILE *f) {
    if (!f || Seek64(f, 0, SEEK_END) != 0) return -1;
    const int64_t n = Tell64(f);
    return n < 0 ? -1 : n;
}

}  // namespace kvx::platform
