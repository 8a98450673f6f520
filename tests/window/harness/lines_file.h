#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tavrin::test {

using Fields = std::vector<std::wstring>;

// Reads a file of expected values: one record per line, fields separated by tabs. Within a field,
// backslash, tab, line feed and carriage return are written as \\ \t \n \r.
std::vector<Fields> ReadLinesFile(const std::filesystem::path& path);

}  // namespace tavrin::test
