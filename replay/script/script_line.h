#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace replay::script {

// One line of a script: a verb, perhaps a function, and key=value pairs.
struct ScriptLine {
    std::wstring verb;
    std::wstring target;
    std::map<std::wstring, std::wstring, std::less<>> values;

    // The value of a key; nothing if it is missing or no such number.
    std::optional<std::wstring> Text(std::wstring_view key) const;
    std::optional<std::uint64_t> Number(std::wstring_view key) const;  // decimal or 0x...
    std::optional<std::int64_t> Signed(std::wstring_view key) const;
};

// Reads a line. Blanks separate; a value may stand in double quotes, in which \" \\ \n \r \t are
// escapes. "#" begins a comment. An empty line has an empty verb; nothing is returned for a line
// that cannot be read.
std::optional<ScriptLine> ReadScriptLine(std::wstring_view line);

}  // namespace replay::script
