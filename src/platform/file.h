// Binary and text file access for the data-file readers: opening with the
// sharing the readers need, 64-bit seeks, positioned reads and the size of
// an open file.
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

}  // namespace kvx::platform
