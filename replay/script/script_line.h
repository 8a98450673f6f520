#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace replay::script {

// One line of a script: a verb, an optional function and key=value pairs.
struct ScriptLine {
    std::wstring verb;
    std::wstring target;
    std::map<std::wstring, std::wstring, std::less<>> values;

    // The value of a key, if it exists and is valid.
    std::optional<std::wstring> Text(std::wstring_view key) const;
    std::optional<std::uint64_t> Number(std::wstring_view key) const;  // decimal or 0x...
    std::optional<std::int64_t> Signed(std::wstring_view key) const;
};

// Parses a line. Blanks separate words. A value may be in double quotes with the escapes
// \" \\ \n \r \t. "#" begins a comment. An empty line has an empty verb. Returns nothing if the
// line is malformed.
std::optional<ScriptLine> ReadScriptLine(std::wstring_view line);

}  // namespace replay::script
