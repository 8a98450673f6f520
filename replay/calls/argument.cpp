#include "replay/calls/argument.h"

#include "replay/calls/handle_number.h"
#include "replay/text/numbers.h"
#include "replay/text/utf8.h"

#include <cwchar>

namespace replay::calls {
namespace {

void AppendEscaped(std::wstring& out, wchar_t unit) {
    switch (unit) {
        case L'"': out += L"\\\""; return;
        case L'\\': out += L"\\\\"; return;
        case L'\n': out += L"\\n"; return;
        case L'\r': out += L"\\r"; return;
        case L'\t': out += L"\\t"; return;
        default: break;
    }
    if (unit >= L' ') {
        out += unit;
        return;
    }
    wchar_t text[8];
    std::swprintf(text, std::size(text), L"\\x%02x", static_cast<unsigned>(unit));
    out += text;
}

std::wstring DescribeText(const wchar_t* text) {
    if (text == nullptr) {
        return L"NULL";
    }
    std::wstring quoted = L"\"";
    for (; *text != L'\0'; ++text) {
        AppendEscaped(quoted, *text);
    }
    return quoted + L"\"";
}

std::wstring Describe(const Argument& argument) {
    switch (argument.kind) {
        case Argument::Kind::kHandle: return DescribeHandle(const_cast<HANDLE>(argument.pointer));
        case Argument::Kind::kText:
            return DescribeText(static_cast<const wchar_t*>(argument.pointer));
        case Argument::Kind::kNumber: return std::to_wstring(argument.number);
        case Argument::Kind::kSigned:
            return std::to_wstring(static_cast<std::int64_t>(argument.number));
        case Argument::Kind::kFlags: return text::ToWide(text::HexText(argument.number));
        case Argument::Kind::kTimeout:
            return argument.number == INFINITE ? L"INFINITE" : std::to_wstring(argument.number);
        case Argument::Kind::kPointer: return argument.pointer == nullptr ? L"NULL" : L"set";
    }
    return {};
}

}  // namespace

std::wstring Describe(Arguments arguments) {
    std::wstring text;
    for (const Argument& argument : arguments) {
        if (!text.empty()) {
            text += L", ";
        }
        text.append(argument.name).append(L"=").append(Describe(argument));
    }
    return text;
}

}  // namespace replay::calls
