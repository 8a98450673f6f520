#include "window/harness/app_process.h"

#include <cwchar>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>

#include "base/utf8.h"
#include "support/from_utf8.h"
#include "support/wait_until.h"
#include "window/controls/top_windows.h"

namespace tavrin::test {
namespace {

constexpr wchar_t kProgram[] = L"Tavrin.exe";
constexpr wchar_t kWindowClass[] = L"TAVRIN";

// The names of environment variables are case-insensitive.
struct NameLess {
    bool operator()(const std::wstring& a, const std::wstring& b) const {
        return _wcsicmp(a.c_str(), b.c_str()) < 0;
    }
};
using Environment = std::map<std::wstring, std::wstring, NameLess>;

Environment OwnEnvironment() {
    Environment environment;
    wchar_t* const block = GetEnvironmentStringsW();
    for (const wchar_t* entry = block; *entry != L'\0'; entry += std::wcslen(entry) + 1) {
        // Windows keeps each drive's current folder in a variable whose name begins with '='.
        const wchar_t* const equals = std::wcschr(entry + 1, L'=');
        if (equals != nullptr) {
            environment[std::wstring(entry, equals)] = equals + 1;
        }
    }
    FreeEnvironmentStringsW(block);
    return environment;
}

std::wstring BlockOf(const Environment& environment) {
    std::wstring block;
    for (const auto& [name, value] : environment) {
        block.append(name).append(L"=").append(value).push_back(L'\0');
    }
    block.push_back(L'\0');
    return block;
}

std::filesystem::path ProgramPath() {
    wchar_t own[MAX_PATH];
    GetModuleFileNameW(nullptr, own, MAX_PATH);
    return std::filesystem::path(own).parent_path() / kProgram;
}

void SetOrErase(Environment& environment, const wchar_t* name, const std::filesystem::path& value) {
    if (value.empty()) {
        environment.erase(name);
    } else {
        environment[name] = value.wstring();
    }
}

}  // namespace

AppProcess::AppProcess(const AppOptions& options) {
    WriteFile(folder_.path() / L"script.txt", base::ToUtf8(options.script));
    Environment environment = OwnEnvironment();
    SetOrErase(environment, L"TAVRIN_REPLAY_LOGS", options.logs);
    SetOrErase(environment, L"TAVRIN_REPLAY_REPORT", folder_.path() / L"report.txt");
    SetOrErase(environment, L"TAVRIN_REPLAY_SCRIPT",
               options.script.empty() ? L"" : folder_.path() / L"script.txt");
    SetOrErase(environment, L"TAVRIN_REPLAY_CALLS",
               options.recordCalls ? folder_.path() / L"calls.txt" : L"");
    std::wstring block = BlockOf(environment);

    const std::filesystem::path program = options.program.empty() ? ProgramPath() : options.program;
    std::wstring commandLine = L"\"" + program.wstring() + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION information{};
    if (!CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE,
                        CREATE_UNICODE_ENVIRONMENT, block.data(), program.parent_path().c_str(),
                        &startup, &information)) {
        throw std::runtime_error("cannot start the program: error " +
                                 std::to_string(GetLastError()));
    }
    CloseHandle(information.hThread);
    process_ = eventlog::UniqueKernelHandle(information.hProcess);
    id_ = information.dwProcessId;
}

AppProcess::~AppProcess() {
    if (IsRunning()) {
        TerminateProcess(process_.get(), 99);
        WaitForSingleObject(process_.get(), INFINITE);
    }
}

bool AppProcess::IsRunning() const {
    return WaitForSingleObject(process_.get(), 0) == WAIT_TIMEOUT;
}

HWND AppProcess::WaitForMainWindow() const {
    HWND window = nullptr;
    WaitUntil(
        [&] { return (window = FindTopWindow(id_, kWindowClass)) != nullptr || !IsRunning(); });
    return window;
}

Ending AppProcess::WaitForEnd(std::chrono::milliseconds patience) const {
    const ULONGLONG start = GetTickCount64();
    Ending ending;
    ending.ended =
        WaitForSingleObject(process_.get(), static_cast<DWORD>(patience.count())) == WAIT_OBJECT_0;
    ending.took = std::chrono::milliseconds(GetTickCount64() - start);
    GetExitCodeProcess(process_.get(), &ending.exitCode);
    return ending;
}

std::wstring AppProcess::Ledger() const {
    return FromUtf8(ReadFile(folder_.path() / L"report.txt"));
}

std::vector<std::wstring> AppProcess::Calls() const {
    std::istringstream file(ReadFile(folder_.path() / L"calls.txt"));
    std::vector<std::wstring> lines;
    for (std::string line; std::getline(file, line);) {
        lines.push_back(FromUtf8(line));
    }
    return lines;
}

// Lines such as "12 340ms thread 8: EvtQuery(Path=...) = #3, error 0".
std::map<std::wstring, unsigned> AppProcess::CallCounts() const {
    std::istringstream file(ReadFile(folder_.path() / L"calls.txt"));
    std::map<std::string, unsigned> counts;
    for (std::string line; std::getline(file, line);) {
        const std::size_t name = line.find(": ") + 2;
        ++counts[line.substr(name, line.find('(') - name)];
    }
    std::map<std::wstring, unsigned> wide;
    for (const auto& [function, count] : counts) {
        wide[FromUtf8(function)] = count;
    }
    return wide;
}

}  // namespace tavrin::test
