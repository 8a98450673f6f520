#include "replay/script/script_line.h"

#include "replay/text/numbers.h"
#include "replay/text/utf8.h"

namespace replay::script {
namespace {

bool IsBlank(wchar_t unit) {
    return unit == L' ' || unit == L'\t' || unit == L'\r';
}

wchar_t Unescape(wchar_t unit) {
    switch (unit) {
        case L'n': return L'\n';
        case L'r': return L'\r';
        case L't': return L'\t';
        default: return unit;
    }
}

// Reads one word, which may contain a quoted part. Returns false if a quote is not closed.
bool ReadWord(std::wstring_view& line, std::wstring& word) {
    bool quoted = false;
    while (!line.empty() && (quoted || !IsBlank(line.front()))) {
        wchar_t unit = line.front();
        line.remove_prefix(1);
        if (unit == L'"') {
            quoted = !quoted;
            continue;
        }
        if (quoted && unit == L'\\' && !line.empty()) {
            unit = Unescape(line.front());
            line.remove_prefix(1);
        }
        word += unit;
    }
    return !quoted;
}

void SkipBlanks(std::wstring_view& line) {
    while (!line.empty() && IsBlank(line.front())) {
        line.remove_prefix(1);
    }
}

}  // namespace

std::optional<std::wstring> ScriptLine::Text(std::wstring_view key) const {
    const auto entry = values.find(key);
    if (entry == values.end()) {
        return std::nullopt;
    }
    return entry->second;
}

std::optional<std::uint64_t> ScriptLine::Number(std::wstring_view key) const {
    const auto text = Text(key);
    return text ? text::ParseHexOrDecimal(text::ToUtf8(*text)) : std::nullopt;
}

std::optional<std::int64_t> ScriptLine::Signed(std::wstring_view key) const {
    const auto text = Text(key);
    return text ? text::ParseNumber<std::int64_t>(text::ToUtf8(*text)) : std::nullopt;
}

std::optional<ScriptLine> ReadScriptLine(std::wstring_view line) {
    ScriptLine read;
    for (SkipBlanks(line); !line.empty() && line.front() != L'#'; SkipBlanks(line)) {
        const std::size_t equals = line.find(L'=');
        const std::size_t quote = line.find_first_of(L"\" \t");
        const bool isPair = equals < quote;
        const std::wstring key(isPair ? line.substr(0, equals) : std::wstring_view());
        if (isPair) {
            line.remove_prefix(equals + 1);
        }
        std::wstring word;
        if (!ReadWord(line, word)) {
            return std::nullopt;
        }
        if (isPair) {
            read.values[key] = std::move(word);
        } else if (read.verb.empty()) {
            read.verb = std::move(word);
        } else if (read.target.empty()) {
            read.target = std::move(word);
        } else {
            return std::nullopt;
        }
    }
    return read;
}

}  // namespace replay::script
