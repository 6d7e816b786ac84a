// Windows file access: _fsopen with writers denied, _fseeki64/_ftelli64.
#ifdef _WIN32
#include <share.h>

#include "platform/file.h"

namespace kvx::platform {

std::FILE *OpenForReading(const char *path, const char *mode) {
    if (!path || !mode) return nullptr;
    return _fsopen(path, mode, _SH_DENYWR);
}

bool SeekTo(std::FILE *f, int64_t offset) {
    if (!f || offset < 0) return false;
    return _fseeki64(f, offset, SEEK_SET) == 0;
}

int64_t FileLength(std::FILE *f) {
    if (!f || _fseeki64(f, 0, SEEK_END) != 0) return -1;
    const __int64 n = _ftelli64(f);
    return n < 0 ? -1 : static_cast<int64_t>(n);
}

}  // namespace kvx::platform
#endif
