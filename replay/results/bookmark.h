#pragma once

#include "replay/calls/object.h"
#include "replay/platform/lock.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace replay::results {

// The last record read from one channel.
struct BookmarkEntry {
    std::wstring channel;
    std::uint64_t recordId = 0;
    bool isCurrent = false;
};

// The object behind a bookmark handle. Thread-safe.
class Bookmark final : public calls::Object {
public:
    // Returns null if the XML is malformed.
    static std::shared_ptr<Bookmark> FromXml(std::string_view xml);

    bool IsAbout(std::wstring_view foldedChannel) const override;

    // Makes this event current.
    void Update(const std::wstring& channel, std::uint64_t recordId, bool backward);

    std::vector<BookmarkEntry> Entries() const;
    // The entry to seek to: the current one or the only one, if any.
    std::optional<BookmarkEntry> Current() const;
    std::string Xml() const;

private:
    mutable platform::Lock lock_;
    std::vector<BookmarkEntry> entries_;  // guarded by lock_
    bool backward_ = false;               // guarded by lock_
};

}  // namespace replay::results
