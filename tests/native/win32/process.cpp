#include <windows.h>

#include <cstdlib>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "text.h"
#include "waitable.h"

namespace {

// getenv and setenv are not thread-safe.
std::mutex& EnvironmentMutex() {
    static auto& mutex = *new std::mutex;
    return mutex;
}

// Splits a command line into words. Quotes may only enclose a whole word.
std::vector<std::string> SplitCommand(std::string_view command) {
    std::vector<std::string> words;
    while (!command.empty()) {
        const bool quoted = command.front() == '"';
        command.remove_prefix(quoted ? 1 : 0);
        const std::size_t end = std::min(command.find(quoted ? '"' : ' '), command.size());
        if (quoted || end > 0)
            words.emplace_back(command.substr(0, end));
        command.remove_prefix(std::min(end + 1, command.size()));
    }
    return words;
}

// Signals `ended` when the process ends.
void Watch(pid_t process, std::shared_ptr<native::Waitable> ended) {
    std::thread([process, ended = std::move(ended)] {
        int status = 0;
        waitpid(process, &status, 0);
        ended->Set();
    }).detach();
}

}  // namespace

// Any value serves: callers pass this handle only to functions that ignore it.
HANDLE GetCurrentProcess() {
    return INVALID_HANDLE_VALUE;
}

DWORD GetCurrentProcessId() {
    return static_cast<DWORD>(getpid());
}

DWORD GetCurrentThreadId() {
    return static_cast<DWORD>(gettid());
}

BOOL CreateProcessW(LPCWSTR program, LPWSTR command, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES,
                    BOOL, DWORD, LPVOID, LPCWSTR, STARTUPINFOW*, PROCESS_INFORMATION* process) {
    std::vector<std::string> words = SplitCommand(native::ToUtf8(command));
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    pid_t id = 0;
    {
        const std::lock_guard guard(EnvironmentMutex());
        if (posix_spawn(&id, native::ToUtf8(program).c_str(), nullptr, nullptr, arguments.data(),
                        environ) != 0)
            return FALSE;
    }
    auto ended = std::make_shared<native::Waitable>(true, false);
    *process = {native::OpenHandle(ended), native::OpenHandle(ended), static_cast<DWORD>(id), 0};
    Watch(id, std::move(ended));
    return TRUE;
}

BOOL TerminateProcess(HANDLE, UINT code) {
    _exit(static_cast<int>(code));
}

DWORD GetEnvironmentVariableW(LPCWSTR name, LPWSTR value, DWORD units) {
    const std::lock_guard guard(EnvironmentMutex());
    const char* const found = std::getenv(native::ToUtf8(name).c_str());
    if (found == nullptr) {
        SetLastError(ERROR_ENVVAR_NOT_FOUND);
        return 0;
    }
    return native::ReturnText(native::ToWide(found), value, units);
}

BOOL SetEnvironmentVariableW(LPCWSTR name, LPCWSTR value) {
    const std::lock_guard guard(EnvironmentMutex());
    const std::string key = native::ToUtf8(name);
    return value == nullptr ? unsetenv(key.c_str()) == 0
                            : setenv(key.c_str(), native::ToUtf8(value).c_str(), 1) == 0;
}
