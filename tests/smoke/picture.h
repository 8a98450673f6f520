#pragma once

#include <filesystem>

#include <windows.h>

namespace tavrin::test {

// Writes a picture of a window as a bitmap file: as the window draws itself, or, where the system
// has it draw nothing for others, as the screen shows it. False when the picture is plain.
bool SavePicture(HWND window, const std::filesystem::path& file);

}  // namespace tavrin::test
