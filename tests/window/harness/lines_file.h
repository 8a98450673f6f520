#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tavrin::test {

using Fields = std::vector<std::wstring>;

// A file of expected values: a record a line, its fields separated by tabs; within a field a
// backslash, tab, line feed and carriage return are written \\ \t \n \r.
std::vector<Fields> ReadLinesFile(const std::filesystem::path& path);

}  // namespace tavrin::test
