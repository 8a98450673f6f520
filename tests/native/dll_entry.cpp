// Calls the replay service's DllMain as the Windows loader does.

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
