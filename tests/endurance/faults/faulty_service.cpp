#include "endurance/faults/faulty_service.h"

namespace tavrin::test {

std::wstring ScriptLine(const Fault& fault) {
    const wchar_t* const which = fault.repetition == Repetition::Once ? L" call=" : L" from=";
    return L"fail " + fault.function + L" code=" + std::to_wstring(fault.code) + which +
           std::to_wstring(fault.call) + L"\n";
}

DWORD FaultyService::Call(const std::wstring& function) {
    const unsigned call = ++calls_[function];
    if (!fault_ || fault_->function != function) {
        return ERROR_SUCCESS;
    }
    const bool isRefused =
        fault_->repetition == Repetition::Once ? call == fault_->call : call >= fault_->call;
    return isRefused ? fault_->code : ERROR_SUCCESS;
}

}  // namespace tavrin::test
