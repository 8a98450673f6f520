#include "window/harness/deadline.h"

#include <stdexcept>

namespace tavrin::test {
namespace {

void CALLBACK EndProcess(void* process, BOOLEAN) {
    TerminateProcess(process, Deadline::kExitCode);
}

}  // namespace

Deadline::Deadline(HANDLE process, std::chrono::milliseconds time) {
    if (!CreateTimerQueueTimer(&timer_, nullptr, EndProcess, process,
                               static_cast<DWORD>(time.count()), 0, WT_EXECUTEONLYONCE)) {
        throw std::runtime_error("cannot create the timer of a deadline");
    }
}

Deadline::~Deadline() {
    DeleteTimerQueueTimer(nullptr, timer_, INVALID_HANDLE_VALUE);  // waits for the callback
}

}  // namespace tavrin::test
