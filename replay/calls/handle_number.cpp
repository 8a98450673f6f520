#include "replay/calls/handle_number.h"

#include "replay/text/numbers.h"
#include "replay/text/utf8.h"

namespace replay::calls {

std::wstring DescribeHandle(HANDLE handle) {
    if (handle == nullptr) {
        return L"NULL";
    }
    const std::uint64_t number = NumberOf(handle);
    if (number == 0) {
        return L"foreign:" + text::ToWide(text::HexText(reinterpret_cast<std::uintptr_t>(handle)));
    }
    return L"#" + std::to_wstring(number);
}

}  // namespace replay::calls
