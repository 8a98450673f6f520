#pragma once

#include "replay/platform/kernel_handle.h"

#include <string>
#include <string_view>

#include <windows.h>

namespace replay::platform {

// Opens a file to be read while others may write to it. Null on failure.
UniqueKernelHandle OpenSharedFile(const std::wstring& path);

// Creates a file or empties it; others may read it meanwhile. Null on failure.
UniqueKernelHandle CreateOutputFile(const std::wstring& path);

// Writes straight to the system, so that nothing is lost when the process ends.
void WriteBytes(HANDLE file, std::string_view bytes);

}  // namespace replay::platform
