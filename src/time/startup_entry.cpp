// The library's load-time entry: the data files are loaded when the shared
// library is loaded into a process and released when it is unloaded. Only
// the shared library is built with this file; the tests call the sequences
// themselves.
#include "platform/settings.h"
#include "time/startup.h"

#ifdef _WIN32
#include <windows.h>

// Process attach: remember the module, load; detach: release. Thread
// notifications do nothing. Attach always succeeds.
BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID) {
    switch (reason) {
    case DLL_PROCESS_ATTACH:
        kvx::platform::SetModuleHandle(module);
        kvx::startup::Load();
        break;
    case DLL_PROCESS_DETACH:
        kvx::startup::Release();
        break;
    default:
        break;
    }
    return TRUE;
}

#else

namespace {

__attribute__((constructor)) void KvxLoadDataFiles() { kvx::startup::Load(); }
__attribute__((destructor)) void KvxReleaseDataFiles() { kvx::startup::Release(); }

}  // namespace

#endif
