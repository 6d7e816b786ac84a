// Data-file access. POSIX: fopen, fseeko/ftello with 64-bit offsets, pread,
// and stat to keep directories out (fopen accepts them on Linux and the
// first read fails). Windows: _fsopen with writers denied,
// _fseeki64/_ftelli64, ReadFile with an OVERLAPPED offset.
#include "platform/file.h"

#ifdef _WIN32
#include <io.h>
#include <share.h>
#include <windows.h>
#else
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
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

int64_t ReadAt(std::FILE *f, int64_t offset, void *dst, size_t n) {
    if (!f || offset < 0) return -1;
    auto *out = static_cast<unsigned char *>(dst);
    size_t done = 0;
    // Each pass reads at least one byte or ends the loop (a read interrupted
    // by a signal is retried), so it runs at most n times; a whole record
    // normally comes in one pass.
    while (done < n) {
        const int64_t at = offset + static_cast<int64_t>(done);
#ifdef _WIN32
        const HANDLE h = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(f)));
        if (h == INVALID_HANDLE_VALUE) return -1;
        OVERLAPPED ov{};
        ov.Offset = static_cast<DWORD>(static_cast<uint64_t>(at) & 0xffffffffu);
        ov.OffsetHigh = static_cast<DWORD>(static_cast<uint64_t>(at) >> 32);
        const size_t want = n - done;
        const DWORD chunk = want > 0x40000000u ? 0x40000000u : static_cast<DWORD>(want);
        DWORD got = 0;
        if (!ReadFile(h, out + done, chunk, &got, &ov)) {
            if (GetLastError() == ERROR_HANDLE_EOF) break;
            return -1;
        }
        if (got == 0) break;
        done += got;
#else
        const ssize_t got = pread(fileno(f), out + done, n - done, static_cast<off_t>(at));
        if (got < 0) {
            if (errno == EINTR) continue;
            return -1;
        }
        if (got == 0) break;
        done += static_cast<size_t>(got);
#endif
    }
    return static_cast<int64_t>(done);
}

}  // namespace kvx::platform
