#include "replay/platform/embedded_files.h"

#include "replay/platform/module.h"
#include "replay/text/blanks.h"
#include "replay/text/utf8.h"

#include <windows.h>

namespace replay::platform {
namespace {

// This resource lists the names of the embedded files, one per line. The next ids are their
// resources.
constexpr int kListId = 100;

std::optional<std::string_view> FindData(int id) {
    const HMODULE module = ThisModule();
    const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(id), MAKEINTRESOURCEW(10));
    if (found == nullptr) {
        return std::nullopt;
    }
    const void* bytes = LockResource(LoadResource(module, found));
    if (bytes == nullptr) {
        return std::nullopt;
    }
    return std::string_view(static_cast<const char*>(bytes), SizeofResource(module, found));
}

}  // namespace

std::optional<std::string_view> FindEmbeddedFile(std::wstring_view fileName) {
    const std::string wanted = text::ToUtf8(fileName);
    std::string_view list = FindData(kListId).value_or(std::string_view());
    for (int id = kListId + 1; !list.empty(); ++id) {
        const std::size_t end = list.find('\n');
        if (text::Trim(list.substr(0, end)) == wanted) {
            return FindData(id);
        }
        list.remove_prefix(end == std::string_view::npos ? list.size() : end + 1);
    }
    return std::nullopt;
}

}  // namespace replay::platform
