#include "support/trace_capture.h"

#include <cstring>
#include <utility>

namespace tavrin::test {
namespace {

TraceCapture* g_capture = nullptr;

std::wstring MessageOf(const TraceCall& call) {
    const std::wstring prefix = L"[Thread " + std::to_wstring(call.threadId) + L"] => ";
    if (!call.text.starts_with(prefix) || !call.text.ends_with(L'\n')) {
        return L"MALFORMED: " + call.text;
    }
    return call.text.substr(prefix.size(), call.text.size() - prefix.size() - 1);
}

}  // namespace

TraceCapture::TraceCapture()
    : wide_("OutputDebugStringW", TakeWide), narrow_("OutputDebugStringA", TakeNarrow) {
    g_capture = this;
}

TraceCapture::~TraceCapture() {
    g_capture = nullptr;
}

std::vector<TraceCall> TraceCapture::Calls() const {
    const std::lock_guard lock(mutex_);
    return calls_;
}

std::vector<std::wstring> TraceCapture::WideMessages() const {
    return Messages(true);
}

std::vector<std::wstring> TraceCapture::NarrowMessages() const {
    return Messages(false);
}

void WINAPI TraceCapture::TakeWide(LPCWSTR text) {
    g_capture->Add(true, text);
}

void WINAPI TraceCapture::TakeNarrow(LPCSTR text) {
    g_capture->Add(false, std::wstring(text, text + std::strlen(text)));
}

void TraceCapture::Add(bool wide, std::wstring text) {
    const std::lock_guard lock(mutex_);
    calls_.push_back({GetCurrentThreadId(), wide, std::move(text)});
}

std::vector<std::wstring> TraceCapture::Messages(bool wide) const {
    std::vector<std::wstring> messages;
    for (const TraceCall& call : Calls()) {
        if (call.wide == wide) {
            messages.push_back(MessageOf(call));
        }
    }
    return messages;
}

}  // namespace tavrin::test
