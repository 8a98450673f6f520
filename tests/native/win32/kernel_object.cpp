#include "kernel_object.h"

#include <utility>

namespace native {
namespace {

struct OpenedHandle {
    std::shared_ptr<KernelObject> object;
};

thread_local DWORD t_lastError = ERROR_SUCCESS;

}  // namespace

HANDLE OpenHandle(std::shared_ptr<KernelObject> object) {
    return new OpenedHandle{std::move(object)};
}

const std::shared_ptr<KernelObject>& ObjectOf(HANDLE handle) {
    return static_cast<OpenedHandle*>(handle)->object;
}

}  // namespace native

using namespace native;

DWORD GetLastError() {
    return t_lastError;
}

void SetLastError(DWORD error) {
    t_lastError = error;
}

BOOL CloseHandle(HANDLE handle) {
    delete static_cast<OpenedHandle*>(handle);
    return TRUE;
}

BOOL DuplicateHandle(HANDLE, HANDLE source, HANDLE, HANDLE* target, DWORD, BOOL, DWORD) {
    *target = OpenHandle(ObjectOf(source));
    return TRUE;
}
