#include "window/harness/answer_meter.h"

#include <algorithm>
#include <utility>

#include "support/wait_until.h"

namespace tavrin::test {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kFrozen{120'000};

}  // namespace

AnswerMeter::AnswerMeter(HWND window)
    : window_(window), thread_([this](const std::stop_token& stop) {
          while (!stop.stop_requested() && IsWindow(window_)) {
              Ask();
              Sleep(1);
          }
      }) {}

AnswerMeter::Milliseconds AnswerMeter::TakeLongest() {
    const unsigned before = Answers();
    WaitUntil([&] { return Answers() != before; }, kFrozen);
    const std::lock_guard lock(mutex_);
    return std::exchange(longest_, Milliseconds{0});
}

void AnswerMeter::Ask() {
    const Clock::time_point start = Clock::now();
    SendMessageTimeoutW(window_, WM_NULL, 0, 0, SMTO_NORMAL, static_cast<UINT>(kFrozen.count()),
                        nullptr);
    const Milliseconds took = Clock::now() - start;
    const std::lock_guard lock(mutex_);
    longest_ = std::max(longest_, took);
    ++answers_;
}

unsigned AnswerMeter::Answers() {
    const std::lock_guard lock(mutex_);
    return answers_;
}

}  // namespace tavrin::test
