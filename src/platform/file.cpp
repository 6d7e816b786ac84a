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

#include <cstdlib>
#include <cstring>

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

bool LoadFromPath(const char *path, OpenMode mode, bool (*load)(const Source &)) {
    if (!path) return false;
    Source source = OpenSource(path, mode);
    if (!IsOpen(source)) return false;
    const bool kept = load(source);
    CloseSource(&source);
    return kept;
}

Source OpenSource(const char *path, OpenMode mode) {
    Source s{};
    s.file = OpenForReading(path, "rb");
    if (!s.file) return s;
    s.kind = SourceKind::kFile;
#ifdef _WIN32
    s.crlfText = mode == OpenMode::kText;
#else
    (void)mode;
#endif
    return s;
}

Source MemorySource(const void *bytes, size_t size, bool crlfText) {
    Source s{};
    s.kind = SourceKind::kMemory;
    s.crlfText = crlfText;
    s.bytes = static_cast<const unsigned char *>(bytes);
    s.size = bytes ? static_cast<int64_t>(size) : 0;
    return s;
}

int64_t SourceLength(const Source &s) {
    switch (s.kind) {
    case SourceKind::kFile: return FileLength(s.file);
    case SourceKind::kMemory: return s.size;
    default: return -1;
    }
}

int64_t ReadAt(const Source &s, int64_t offset, void *dst, size_t n) {
    if (s.kind == SourceKind::kFile) return ReadAt(s.file, offset, dst, n);
    if (s.kind != SourceKind::kMemory || offset < 0) return -1;
    if (offset >= s.size) return 0;
    const size_t avail = static_cast<size_t>(s.size - offset);
    const size_t take = n < avail ? n : avail;
    std::memcpy(dst, s.bytes + offset, take);
    return static_cast<int64_t>(take);
}

LoadResult LoadIntoMemory(Source *s, size_t *got) {
    if (got) *got = 0;
    const int64_t length = s ? SourceLength(*s) : -1;
    if (length < 0) return LoadResult::kNoLength;
    const size_t size = static_cast<size_t>(length);
    auto *image = static_cast<unsigned char *>(std::calloc(size ? size : 1, 1));
    if (!image) return LoadResult::kNoMemory;
    const int64_t read = ReadAt(*s, 0, image, size);
    if (read != length) {
        if (got) *got = read < 0 ? 0 : static_cast<size_t>(read);
        std::free(image);
        return LoadResult::kShortRead;
    }
    const bool crlfText = s->crlfText;
    CloseSource(s);
    *s = MemorySource(image, size, crlfText);
    s->ownsBytes = true;
    return LoadResult::kOk;
}

void CloseSource(Source *s) {
    if (!s) return;
    if (s->file) std::fclose(s->file);
    if (s->ownsBytes) std::free(const_cast<unsigned char *>(s->bytes));
    *s = Source{};
}

bool LineReader::Window(const unsigned char **p, size_t *avail) {
    if (ended_) return false;
    if (s_.kind == SourceKind::kMemory) {
        if (at_ >= s_.size) return false;
        *p = s_.bytes + at_;
        *avail = static_cast<size_t>(s_.size - at_);
        return true;
    }
    if (at_ < chunkAt_ || at_ >= chunkAt_ + chunkLength_) {
        const int64_t n = ReadAt(s_, at_, chunk_, sizeof chunk_);
        chunkAt_ = at_;
        chunkLength_ = n < 0 ? 0 : n;
        if (chunkLength_ == 0) return false;
    }
    *p = chunk_ + (at_ - chunkAt_);
    *avail = static_cast<size_t>(chunkAt_ + chunkLength_ - at_);
    return true;
}

bool LineReader::Next(char *buf, size_t size) {
    if (!buf || size < 2) return false;
    size_t n = 0;
    const unsigned char *p;
    size_t avail;
    // Each pass takes at least one byte, so there are at most size - 1. The
    // bytes are scanned with memchr: up to the newline, the room left or the
    // end of the window, whichever comes first, and in text mode up to a CR
    // or a Ctrl-Z before that.
    while (n + 1 < size && Window(&p, &avail)) {
        size_t take = avail < size - 1 - n ? avail : size - 1 - n;
        const auto *nl = static_cast<const unsigned char *>(std::memchr(p, '\n', take));
        if (nl) take = static_cast<size_t>(nl - p) + 1;
        if (s_.crlfText) {
            const size_t plain = nl ? take - 1 : take;
            const auto *z = static_cast<const unsigned char *>(std::memchr(p, '\x1a', plain));
            const size_t beforeZ = z ? static_cast<size_t>(z - p) : plain;
            const auto *cr = static_cast<const unsigned char *>(std::memchr(p, '\r', beforeZ));
            if (cr) {  // the bytes before it, then LF for CR LF or the CR itself
                const size_t k = static_cast<size_t>(cr - p);
                std::memcpy(buf + n, p, k);
                n += k;
                at_ += static_cast<int64_t>(k) + 1;
                const bool crlf = Window(&p, &avail) && *p == '\n';
                buf[n++] = crlf ? '\n' : '\r';
                if (!crlf) continue;
                ++at_;
                break;
            }
            if (z) {
                std::memcpy(buf + n, p, beforeZ);
                n += beforeZ;
                ended_ = true;
                break;
            }
        }
        std::memcpy(buf + n, p, take);
        n += take;
        at_ += static_cast<int64_t>(take);
        if (nl) break;
    }
    if (n == 0) return false;
    buf[n] = '\0';
    return true;
}

}  // namespace kvx::platform
