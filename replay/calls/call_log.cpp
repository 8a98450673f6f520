#include "replay/calls/call_log.h"

#include "replay/platform/file.h"
#include "replay/text/utf8.h"

#include <mutex>
#include <utility>

namespace replay::calls {

bool CallLog::WriteTo(const std::wstring& path) {
    const std::lock_guard guard(lock_);
    file_ = platform::CreateOutputFile(path);
    on_ = collecting_ || file_;
    return static_cast<bool>(file_);
}

void CallLog::Only(const std::vector<ApiFunction>& functions) {
    std::uint64_t wanted = functions.empty() ? UINT64_MAX : 0;
    for (const ApiFunction function : functions) {
        wanted |= Bit(function);
    }
    wanted_ = wanted;
}

void CallLog::Collect(bool on) {
    const std::lock_guard guard(lock_);
    collecting_ = on;
    collected_.clear();
    on_ = collecting_ || file_;
}

std::vector<CallRecord> CallLog::TakeCollected() {
    const std::lock_guard guard(lock_);
    return std::exchange(collected_, {});
}

void CallLog::Add(CallRecord record) {
    const std::lock_guard guard(lock_);
    if (file_) {
        platform::WriteBytes(file_.get(), text::ToUtf8(DescribeCall(record) + L"\n"));
    }
    if (collecting_) {
        collected_.push_back(std::move(record));
    }
}

std::wstring DescribeCall(const CallRecord& record) {
    return std::to_wstring(record.sequence)
        .append(L" ")
        .append(std::to_wstring(record.milliseconds))
        .append(L"ms thread ")
        .append(std::to_wstring(record.threadId))
        .append(L": ")
        .append(record.function)
        .append(L"(")
        .append(record.arguments)
        .append(L") = ")
        .append(record.result)
        .append(L", error ")
        .append(std::to_wstring(record.error));
}

}  // namespace replay::calls
