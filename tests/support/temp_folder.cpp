#include "support/temp_folder.h"

#include <atomic>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include <windows.h>

namespace tavrin::test {
namespace {

std::wstring UniqueName() {
    static std::atomic<unsigned> counter{0};
    return L"tavrin-window-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
           std::to_wstring(GetTickCount64()) + L"-" + std::to_wstring(counter++);
}

void Write(const std::filesystem::path& path, std::string_view bytes, std::ios::openmode mode) {
    std::ofstream file(path, std::ios::binary | mode);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

}  // namespace

TempFolder::TempFolder() : path_(std::filesystem::temp_directory_path() / UniqueName()) {
    std::filesystem::create_directories(path_);
}

TempFolder::~TempFolder() {
    std::error_code ignored;  // a file that is still open elsewhere stays
    std::filesystem::remove_all(path_, ignored);
}

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void WriteFile(const std::filesystem::path& path, std::string_view bytes) {
    Write(path, bytes, std::ios::trunc);
}

void AppendToFile(const std::filesystem::path& path, std::string_view bytes) {
    Write(path, bytes, std::ios::app);
}

}  // namespace tavrin::test
