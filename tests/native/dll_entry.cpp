// Calls the entry of the replay service's library, as the loader of Windows does.

#include <windows.h>

extern "C++" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID reserved);

namespace {

[[gnu::constructor]] void Attach() {
    DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr);
}

[[gnu::destructor]] void Detach() {
    DllMain(nullptr, DLL_PROCESS_DETACH, nullptr);
}

}  // namespace
