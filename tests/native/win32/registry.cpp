#include <windows.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "text.h"

namespace {

struct Key {
    std::map<std::wstring, std::shared_ptr<Key>> subkeys;  // guarded by the registry's mutex
};

struct Registry {
    std::mutex mutex;
    std::shared_ptr<Key> root = std::make_shared<Key>();

    static Registry& Get() {
        static auto& registry = *new Registry;
        return registry;
    }
};

// Each HKEY is a separate heap block, so the sanitizer reports an unclosed one as a leak.
struct OpenedKey {
    std::shared_ptr<Key> key;
};

// Requires the registry's mutex, like the functions below.
std::shared_ptr<Key> KeyOf(HKEY handle) {
    return handle == HKEY_LOCAL_MACHINE ? Registry::Get().root
                                        : reinterpret_cast<OpenedKey*>(handle)->key;
}

// Returns the subkey of this name. If there is none, creates it or returns null.
std::shared_ptr<Key> Subkey(Key& key, const std::wstring& name, bool make) {
    if (make)
        return key.subkeys.try_emplace(name, std::make_shared<Key>()).first->second;
    const auto found = key.subkeys.find(name);
    return found == key.subkeys.end() ? nullptr : found->second;
}

// As Subkey, for a path of names.
std::shared_ptr<Key> Find(std::shared_ptr<Key> key, std::wstring_view path, bool make) {
    while (key != nullptr && !path.empty()) {
        const std::size_t end = std::min(path.find(L'\\'), path.size());
        key = Subkey(*key, std::wstring(path.substr(0, end)), make);
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return key;
}

LSTATUS Open(HKEY parent, LPCWSTR name, bool make, PHKEY key) {
    const std::lock_guard guard(Registry::Get().mutex);
    auto found = Find(KeyOf(parent), name, make);
    if (found == nullptr)
        return ERROR_FILE_NOT_FOUND;
    *key = reinterpret_cast<HKEY>(new OpenedKey{std::move(found)});
    return ERROR_SUCCESS;
}

}  // namespace

LSTATUS RegCreateKeyExW(HKEY parent, LPCWSTR name, DWORD, LPWSTR, DWORD, REGSAM,
                        LPSECURITY_ATTRIBUTES, PHKEY key, LPDWORD) {
    return Open(parent, name, true, key);
}

LSTATUS RegOpenKeyExW(HKEY parent, LPCWSTR name, DWORD, REGSAM, PHKEY key) {
    return Open(parent, name, false, key);
}

LSTATUS RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD units, LPDWORD, LPWSTR, LPDWORD,
                      FILETIME*) {
    const std::lock_guard guard(Registry::Get().mutex);
    const auto& subkeys = KeyOf(key)->subkeys;
    if (index >= subkeys.size())
        return ERROR_NO_MORE_ITEMS;
    const std::wstring& found =
        std::next(subkeys.begin(), static_cast<std::ptrdiff_t>(index))->first;
    if (found.size() >= *units)
        return ERROR_MORE_DATA;
    *units = native::ReturnText(found, name, *units);
    return ERROR_SUCCESS;
}

LSTATUS RegDeleteTreeW(HKEY parent, LPCWSTR name) {
    const std::lock_guard guard(Registry::Get().mutex);
    const std::wstring_view path(name);
    const std::size_t cut = path.rfind(L'\\');
    const bool nested = cut != std::wstring_view::npos;
    const auto key = Find(KeyOf(parent), nested ? path.substr(0, cut) : std::wstring_view(), false);
    const std::wstring last(nested ? path.substr(cut + 1) : path);
    return key != nullptr && key->subkeys.erase(last) > 0 ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
}

LSTATUS RegCloseKey(HKEY key) {
    delete reinterpret_cast<OpenedKey*>(key);
    return ERROR_SUCCESS;
}
