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

// Captures the messages that the program posts, on any thread, while it lives. No window is needed.
// At most one instance may exist at a time.
class PostedMessages {
public:
    PostedMessages();
    ~PostedMessages();
    PostedMessages(const PostedMessages&) = delete;
    PostedMessages& operator=(const PostedMessages&) = delete;

    // Returns the messages posted since the last call.
    std::vector<PostedMessage> Take();

private:
    static BOOL WINAPI Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    std::mutex mutex_;
    std::vector<PostedMessage> messages_;  // guarded by mutex_
    test::ImportPatch<decltype(PostMessageW)> post_;
};

}  // namespace tavrin::eventlog
