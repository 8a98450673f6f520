#include "replay/platform/file.h"

namespace replay::platform {
namespace {

UniqueKernelHandle Open(const std::wstring& path, DWORD access, DWORD share, DWORD disposition) {
    const HANDLE file = CreateFileW(path.c_str(), access, share, nullptr, disposition,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    return UniqueKernelHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

}  // namespace

UniqueKernelHandle OpenSharedFile(const std::wstring& path) {
    return Open(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                OPEN_EXISTING);
}

UniqueKernelHandle CreateOutputFile(const std::wstring& path) {
    return Open(path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, CREATE_ALWAYS);
}

void WriteBytes(HANDLE file, std::string_view bytes) {
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

}  // namespace replay::platform
