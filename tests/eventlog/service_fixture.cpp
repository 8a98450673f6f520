#include "service_fixture.h"

#include <algorithm>
#include <map>

#include "replay/replay_control.h"

namespace tavrin::eventlog {
namespace {

// Numbers the handles of a sequence of calls in order of appearance, from 1.
class HandleNumbers {
public:
    std::wstring Renumber(const std::wstring& text) {
        std::wstring renumbered;
        for (std::size_t at = 0; at < text.size();) {
            if (text[at] != L'#') {
                renumbered += text[at++];
                continue;
            }
            const std::size_t end =
                std::min(text.find_first_not_of(L"0123456789", at + 1), text.size());
            renumbered += L'#' + std::to_wstring(NumberOf(text.substr(at, end - at)));
            at = end;
        }
        return renumbered;
    }

private:
    std::size_t NumberOf(const std::wstring& handle) {
        return numbers_.try_emplace(handle, numbers_.size() + 1).first->second;
    }

    std::map<std::wstring, std::size_t> numbers_;
};

}  // namespace

ServiceTest::ServiceTest() {
    replay::Reset();
}

void ServiceTest::TearDown() {
    replay::StopCallLog();
    EXPECT_EQ(replay::DescribeOpenHandles(), std::vector<std::wstring>());
    EXPECT_EQ(replay::LedgerFaults(), std::vector<std::wstring>());
    replay::Reset();
}

void ServiceTest::Serve() {
    ASSERT_TRUE(replay::LoadDirectory(recording_.folder().wstring()));
    replay::StartCallLog();
}

void ServiceTest::Script(const std::wstring& lines) {
    ASSERT_TRUE(replay::Script(lines));
}

std::vector<std::wstring> ServiceTest::TakeCalls() {
    std::vector<std::wstring> calls;
    HandleNumbers numbers;
    for (const replay::LoggedCall& call : replay::TakeCallLog()) {
        calls.push_back(numbers.Renumber(call.Text()));
        static_cast<void>(numbers.Renumber(call.result));  // a handle first appears as a result
    }
    return calls;
}

std::vector<std::wstring> ServiceTest::TakeCallsOf(const std::wstring& function) {
    std::vector<std::wstring> calls = TakeCalls();
    std::erase_if(calls,
                  [&](const std::wstring& call) { return !call.starts_with(function + L"("); });
    return calls;
}

}  // namespace tavrin::eventlog
