#pragma once

#include <mutex>
#include <vector>

#include <windows.h>

#include "support/import_patch.h"

namespace tavrin::eventlog {

struct PostedMessage {
    HWND window;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;

    bool operator==(const PostedMessage&) const = default;
};

// Takes the messages that this program posts, for as long as it lives: without a
// window, and from any thread. One at a time.
class PostedMessages {
public:
    PostedMessages();
    ~PostedMessages();
    PostedMessages(const PostedMessages&) = delete;
    PostedMessages& operator=(const PostedMessages&) = delete;

    // Those since they were last taken.
    std::vector<PostedMessage> Take();

private:
    static BOOL WINAPI Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    std::mutex mutex_;
    std::vector<PostedMessage> messages_;  // guarded by mutex_
    test::ImportPatch<decltype(PostMessageW)> post_;
};

}  // namespace tavrin::eventlog
