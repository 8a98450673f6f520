#pragma once

#include <filesystem>

#include <windows.h>

namespace tavrin::test {

// Writes a picture of a window as a bitmap file. Under Wine, PrintWindow draws nothing for another
// process; the picture is then copied from the screen. Returns false if the picture is blank.
bool SavePicture(HWND window, const std::filesystem::path& file);

}  // namespace tavrin::test
