// Per-thread caches of the hot paths: the calling thread's object of type
// T (default-constructed on the thread's first use), reached through one
// call that is never inlined. In position-independent code (the shared
// library) every inlined use of a thread_local object may call the TLS
// resolver again, even inside loops; a reference returned once stays in a
// register.
#pragma once

namespace kvx::platform {

template <class T>
[[gnu::noinline]] T &ThreadCache() {
    thread_local T value;
    return value;
}

}  // namespace kvx::platform
