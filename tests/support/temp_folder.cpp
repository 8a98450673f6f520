#include "support/temp_folder.h"

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include <windows.h>

namespace tavrin::test {
namespace {

std::filesystem::path MakeFolder() {
    const std::filesystem::path parent = std::filesystem::temp_directory_path();
    const std::wstring name = L"tavrin-test-" + std::to_wstring(GetCurrentProcessId()) + L"-";
    int number = 0;
    while (!std::filesystem::create_directory(parent / (name + std::to_wstring(number)))) {
        ++number;
    }
    return parent / (name + std::to_wstring(number));
}

void Write(const std::filesystem::path& path, std::string_view bytes, std::ios::openmode mode) {
    std::ofstream file(path, std::ios::binary | mode);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

}  // namespace

TempFolder::TempFolder() : path_(MakeFolder()) {}

TempFolder::~TempFolder() {
    std::error_code ignored;  // a file that is still open cannot be removed
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
