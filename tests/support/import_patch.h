#pragma once

#include <windows.h>

namespace tavrin::test {

// The place through which a program calls a function that it imports from a DLL: this program, or
// another whose exe this one has mapped. Throws std::runtime_error when it imports none of that
// name.
void** FindImport(const char* functionName, HMODULE program = GetModuleHandleW(nullptr));

// Puts another address into such a place and returns the former one.
void* ReplaceImport(void** place, void* address);

// Sends this program's calls of one imported function to a replacement for as long as
// it lives: for outcomes that the system does not produce when asked. What libraries
// call among themselves stays as it is. To be made while no other thread runs.
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
