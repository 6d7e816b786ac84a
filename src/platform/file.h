// Binary and text file access for the data-file readers: opening with the
// sharing the readers need, 64-bit seeks, positioned reads and the size of
// an open file; and the byte source the readers parse and query through,
// which is either an open file or a span of memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace kvx::platform {

// Opens `path` for reading with `mode` ("rb" or "r"), letting other readers
// share the file and keeping writers out where the platform can (Windows).
// A path that names a directory does not open (as on Windows, where a
// directory cannot be opened as a file). Null on failure.
std::FILE *OpenForReading(const char *path, const char *mode);

// Moves to an absolute byte offset; false on failure or a negative offset.
bool SeekTo(std::FILE *f, int64_t offset);

// Length of the open file in bytes, -1 when it cannot be told. The file
// position is left at the end of the file.
int64_t FileLength(std::FILE *f);

// Positioned read: up to n bytes from byte `offset` of the open file into
// dst, without using or moving the stream's position or buffer, so several
// threads may read one file at once (pread; ReadFile with an OVERLAPPED
// offset on Windows). Returns the count read (short at the end of the file),
// or -1 on an error or a negative offset. The stream must not be read
// through stdio at the same time.
int64_t ReadAt(std::FILE *f, int64_t offset, void *dst, size_t n);

// ---- byte sources -------------------------------------------------------

enum class SourceKind : uint8_t { kNone, kFile, kMemory };

// The bytes of a data file as a reader sees them: an open file read with
// positioned reads, or a span of memory (a file read in whole, or bytes the
// caller holds). Readers parse and query through SourceLength and ReadAt
// only, so the same code serves a file, a file read into memory and bytes
// that never were a file. All-zero is a closed source, so a calloc'ed
// reader state starts with one. Reads change nothing in the source: any
// number of threads may read one at once.
struct Source {
    SourceKind kind;
    bool ownsBytes;  // bytes were allocated by LoadIntoMemory; CloseSource frees them
    bool crlfText;   // LineReader folds CR LF to LF and stops at Ctrl-Z (Windows text mode)
    std::FILE *file;             // kFile
    const unsigned char *bytes;  // kMemory
    int64_t size;                // kMemory: bytes in the span
};

enum class OpenMode { kBinary, kText };

// Opens `path` as a file source (OpenForReading, always in binary: text
// mode's translation is LineReader's, so a file and its bytes in memory read
// the same). kText sets crlfText on Windows. A closed source on failure.
Source OpenSource(const char *path, OpenMode mode);

// Opens `path` (null: false), hands the source to `load` and closes it: the
// file form of a text reader's LoadFrom. The result of load, false when the
// path does not open.
bool LoadFromPath(const char *path, OpenMode mode, bool (*load)(const Source &));

// A source over bytes[0..size) that the caller keeps alive and unchanged
// until CloseSource; bytes may be null when size is 0.
Source MemorySource(const void *bytes, size_t size, bool crlfText = false);

inline bool IsOpen(const Source &s) { return s.kind != SourceKind::kNone; }

// Length in bytes, -1 when it cannot be told or the source is closed.
int64_t SourceLength(const Source &s);

// Up to n bytes from byte `offset` into dst: the count read (short at the
// end), or -1 on an error, a closed source or a negative offset.
int64_t ReadAt(const Source &s, int64_t offset, void *dst, size_t n);

// Replaces a source by a copy of all its bytes in memory (the file is
// closed). On failure the source is left as it was; `got` (may be null)
// receives the bytes read when the read came up short.
enum class LoadResult { kOk, kNoLength, kNoMemory, kShortRead };
LoadResult LoadIntoMemory(Source *s, size_t *got);

// Closes the file or frees the owned bytes; the source becomes closed.
void CloseSource(Source *s);

// Reads a source line by line with the rules of fgets: each line into buf
// up to and including its '\n', at most size - 1 bytes (a longer line
// continues in the next call), NUL-terminated. Bytes are copied as they are,
// NUL bytes included. With crlfText, CR LF reads as LF and a Ctrl-Z byte
// ends the text, as the Windows C runtime reads a file opened in text mode.
class LineReader {
public:
    explicit LineReader(const Source &s) : s_(s) {}
    // False, buf untouched, when nothing is left.
    bool Next(char *buf, size_t size);

private:
    // The bytes from the next one on that can be had at once (the rest of a
    // memory span, the rest of the read-ahead of a file); false at the end.
    bool Window(const unsigned char **p, size_t *avail);
    const Source &s_;
    int64_t at_ = 0;  // offset of the next byte
    bool ended_ = false;
    unsigned char chunk_[4096];
    int64_t chunkAt_ = 0, chunkLength_ = 0;  // file sources: the bytes read ahead
};

}  // namespace kvx::platform
