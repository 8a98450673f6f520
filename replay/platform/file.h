#pragma once

#include "replay/platform/kernel_handle.h"

#include <string>
#include <string_view>

#include <windows.h>

namespace replay::platform {

// Opens a file for reading while other processes may write to it. Returns null on failure.
UniqueKernelHandle OpenSharedFile(const std::wstring& path);

// Creates or truncates a file, which other processes may read meanwhile. Returns null on failure.
UniqueKernelHandle CreateOutputFile(const std::wstring& path);

// Writes without a buffer of this process, so nothing is lost if the process is terminated.
void WriteBytes(HANDLE file, std::string_view bytes);

}  // namespace replay::platform
