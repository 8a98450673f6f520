#include "window/harness/lines_file.h"

#include <algorithm>
#include <string_view>

#include "support/from_utf8.h"
#include "support/temp_folder.h"

namespace tavrin::test {
namespace {

std::string Unescape(std::string_view field) {
    std::string text;
    for (std::size_t at = 0; at < field.size(); ++at) {
        if (field[at] != '\\' || at + 1 == field.size()) {
            text += field[at];
            continue;
        }
        switch (field[++at]) {
            case 't': text += '\t'; break;
            case 'n': text += '\n'; break;
            case 'r': text += '\r'; break;
            default: text += field[at];
        }
    }
    return text;
}

// Removes the text up to and including the separator from `rest`. Returns it without the separator.
std::string_view Take(std::string_view& rest, char separator) {
    const std::size_t end = rest.find(separator);
    const std::string_view taken = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return taken;
}

Fields FieldsOf(std::string_view line) {
    Fields fields;
    const auto count = static_cast<std::size_t>(std::count(line.begin(), line.end(), '\t')) + 1;
    while (fields.size() < count) {
        fields.push_back(FromUtf8(Unescape(Take(line, '\t'))));
    }
    return fields;
}

}  // namespace

std::vector<Fields> ReadLinesFile(const std::filesystem::path& path) {
    const std::string bytes = ReadFile(path);
    std::vector<Fields> records;
    for (std::string_view rest = bytes; !rest.empty();) {
        records.push_back(FieldsOf(Take(rest, '\n')));
    }
    return records;
}

}  // namespace tavrin::test
