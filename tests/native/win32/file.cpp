#include "file.h"

#include <atomic>
#include <cerrno>
#include <algorithm>
#include <string>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "text.h"

namespace native {
namespace {

// Converts a Windows path to a path of the host.
std::string HostPath(LPCWSTR path) {
    std::string host = ToUtf8(path);
    std::ranges::replace(host, '\\', '/');
    return host;
}

int OpenFlags(DWORD access, DWORD disposition) {
    const int creation = disposition == CREATE_ALWAYS ? O_CREAT | O_TRUNC : 0;
    return creation | O_CLOEXEC | ((access & GENERIC_WRITE) != 0 ? O_WRONLY : O_RDONLY);
}

void SetErrorOfHost() {
    SetLastError(errno == ENOENT ? ERROR_FILE_NOT_FOUND : ERROR_ACCESS_DENIED);
}

std::atomic<HANDLE>& ErrorOutput() {
    static std::atomic<HANDLE> handle = OpenHandle(std::make_shared<File>(dup(STDERR_FILENO)));
    return handle;
}

}  // namespace

File::~File() {
    close(descriptor_);
}

std::uint64_t File::Size() const {
    struct stat status {};
    return fstat(descriptor_, &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
}

}  // namespace native

using namespace native;

HANDLE CreateFileW(LPCWSTR path, DWORD access, DWORD, LPSECURITY_ATTRIBUTES, DWORD disposition,
                   DWORD, HANDLE) {
    constexpr mode_t kMode = 0644;
    const int descriptor = open(HostPath(path).c_str(), OpenFlags(access, disposition), kMode);
    if (descriptor < 0) {
        SetErrorOfHost();
        return INVALID_HANDLE_VALUE;
    }
    return OpenHandle(std::make_shared<File>(descriptor));
}

BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD size, LPDWORD read, OVERLAPPED* at) {
    const int descriptor = ObjectAs<File>(file)->Descriptor();
    const ssize_t count =
        at == nullptr ? ::read(descriptor, buffer, size)
                      : pread(descriptor, buffer, size,
                              static_cast<off_t>(std::uint64_t{at->OffsetHigh} << 32 | at->Offset));
    *read = static_cast<DWORD>(std::max<ssize_t>(count, 0));
    return count >= 0;
}

BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD size, LPDWORD written, OVERLAPPED*) {
    const ssize_t count = write(ObjectAs<File>(file)->Descriptor(), buffer, size);
    *written = static_cast<DWORD>(std::max<ssize_t>(count, 0));
    return count >= 0;
}

BOOL GetFileSizeEx(HANDLE file, LARGE_INTEGER* size) {
    size->QuadPart = static_cast<LONGLONG>(ObjectAs<File>(file)->Size());
    return TRUE;
}

DWORD GetFileAttributesW(LPCWSTR path) {
    return access(HostPath(path).c_str(), F_OK) == 0 ? FILE_ATTRIBUTE_NORMAL
                                                     : INVALID_FILE_ATTRIBUTES;
}

HANDLE GetStdHandle(DWORD) {
    return ErrorOutput();
}

BOOL SetStdHandle(DWORD, HANDLE handle) {
    ErrorOutput() = handle;
    return TRUE;
}

BOOL CreatePipe(HANDLE* read, HANDLE* write, LPSECURITY_ATTRIBUTES, DWORD) {
    int ends[2]{};
    if (pipe2(ends, O_CLOEXEC) != 0)
        return FALSE;
    *read = OpenHandle(std::make_shared<File>(ends[0]));
    *write = OpenHandle(std::make_shared<File>(ends[1]));
    return TRUE;
}

BOOL PeekNamedPipe(HANDLE pipe, LPVOID, DWORD, LPDWORD, LPDWORD available, LPDWORD) {
    int bytes = 0;
    if (ioctl(ObjectAs<File>(pipe)->Descriptor(), FIONREAD, &bytes) != 0)
        return FALSE;
    *available = static_cast<DWORD>(bytes);
    return TRUE;
}
