#pragma once

#include <windows.h>

namespace tavrin::test {

// Returns the slot of the import address table through which this program calls a function of a
// DLL. Throws std::runtime_error if the program does not import the function.
void** FindImport(const char* functionName);

// The same for another program, whose exe is mapped into this process.
void** FindImport(const char* functionName, HMODULE program);

// Stores an address in such a slot and returns the former one. Throws std::runtime_error if the
// slot cannot be written.
void* ReplaceImport(void** place, void* address);

// Redirects this program's calls of one imported function while it exists, to produce results
// that the system cannot be made to give. Calls between libraries are unaffected. Create it while
// no other thread runs.
template <typename Function>
class ImportPatch {
public:
    ImportPatch(const char* functionName, Function* replacement)
        : place_(FindImport(functionName)),
          original_(ReplaceImport(place_, reinterpret_cast<void*>(replacement))) {}
    ~ImportPatch() { ReplaceImport(place_, original_); }
    ImportPatch(const ImportPatch&) = delete;
    ImportPatch& operator=(const ImportPatch&) = delete;

    Function* Original() const { return reinterpret_cast<Function*>(original_); }

private:
    void** place_;
    void* original_;
};

}  // namespace tavrin::test
