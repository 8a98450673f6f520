#pragma once

#include "base/unique_handle.h"

#include <windows.h>

namespace replay::platform {

using UniqueKernelHandle = tavrin::base::UniqueHandle<HANDLE, ::CloseHandle>;

}  // namespace replay::platform
