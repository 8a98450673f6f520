#include <windows.h>

#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <fstream>
#include <sstream>
#include <string>

#include "text.h"

namespace {

// The resources of a resource script with lines such as: 101 RCDATA "path". Reads the files at
// first use and never frees them, because resources live as long as the module.
class Resources {
public:
    static const Resources& Get() {
        static const auto& resources = *new Resources(TAVRIN_RESOURCE_SCRIPT);
        return resources;
    }
    // Returns null if there is no such resource.
    const std::string* Find(std::uintptr_t id) const {
        const auto entry = bytes_.find(id);
        return entry == bytes_.end() ? nullptr : &entry->second;
    }

private:
    explicit Resources(const char* scriptPath) {
        std::istringstream script(Read(scriptPath));
        std::uintptr_t id = 0;
        std::string type;
        for (std::string line; std::getline(script, line);) {
            std::istringstream words(line);
            std::filesystem::path file;
            if (words >> id >> type >> file)  // a path's operator>> removes the quotes
                bytes_[id] = Read(file);
        }
    }
    static std::string Read(const std::filesystem::path& path) {
        std::ostringstream bytes;
        bytes << std::ifstream(path, std::ios::binary).rdbuf();
        return bytes.str();
    }

    std::map<std::uintptr_t, std::string> bytes_;
};

const std::string& BytesOf(const void* resource) {
    return *static_cast<const std::string*>(resource);
}

}  // namespace

// There is one module, which is never unloaded.
BOOL GetModuleHandleExW(DWORD, LPCWSTR, HMODULE* module) {
    *module = nullptr;
    return TRUE;
}

DWORD GetModuleFileNameW(HMODULE, LPWSTR path, DWORD units) {
    const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
    return native::ReturnText(native::ToWide(program), path, units);
}

HRSRC FindResourceW(HMODULE, LPCWSTR name, LPCWSTR) {
    const std::string* const found = Resources::Get().Find(reinterpret_cast<std::uintptr_t>(name));
    return reinterpret_cast<HRSRC>(const_cast<std::string*>(found));
}

HGLOBAL LoadResource(HMODULE, HRSRC resource) {
    return resource;
}

LPVOID LockResource(HGLOBAL resource) {
    return const_cast<char*>(BytesOf(resource).data());
}

DWORD SizeofResource(HMODULE, HRSRC resource) {
    return static_cast<DWORD>(BytesOf(resource).size());
}
