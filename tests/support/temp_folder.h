#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tavrin::test {

// A new, empty folder that goes away with its contents.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

// Whole files, bytes as they are. A file that cannot be read is empty; one that cannot be
// written throws.
std::string ReadFile(const std::filesystem::path& path);
void WriteFile(const std::filesystem::path& path, std::string_view bytes);
void AppendToFile(const std::filesystem::path& path, std::string_view bytes);

}  // namespace tavrin::test
