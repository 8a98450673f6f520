#include "posted_messages.h"

#include <utility>

namespace tavrin::eventlog {
namespace {

PostedMessages* g_posted = nullptr;

}  // namespace

PostedMessages::PostedMessages() : post_("PostMessageW", Post) {
    g_posted = this;
}

PostedMessages::~PostedMessages() {
    g_posted = nullptr;
}

std::vector<PostedMessage> PostedMessages::Take() {
    const std::lock_guard lock(mutex_);
    return std::exchange(messages_, {});
}

BOOL WINAPI PostedMessages::Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const std::lock_guard lock(g_posted->mutex_);
    g_posted->messages_.push_back({window, message, wParam, lParam});
    return TRUE;
}

}  // namespace tavrin::eventlog
