#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tavrin::test {

// A new, empty folder. The destructor removes it with its contents.
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

// Whole files, without any conversion. ReadFile returns "" for a file that it cannot read; the
// others throw std::runtime_error for a file that they cannot write.
std::string ReadFile(const std::filesystem::path& path);
void WriteFile(const std::filesystem::path& path, std::string_view bytes);
void AppendToFile(const std::filesystem::path& path, std::string_view bytes);

}  // namespace tavrin::test
