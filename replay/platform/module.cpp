#include "replay/platform/module.h"

namespace replay::platform {
namespace {

HMODULE FindThisModule(DWORD flags) {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | flags,
                       reinterpret_cast<LPCWSTR>(&FindThisModule), &module);
    return module;
}

}  // namespace

HMODULE ThisModule() {
    static const HMODULE module = FindThisModule(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT);
    return module;
}

void PinThisModule() {
    FindThisModule(GET_MODULE_HANDLE_EX_FLAG_PIN);
}

}  // namespace replay::platform
