#include "replay/results/bookmark.h"

#include "replay/text/channel_name.h"
#include "replay/text/numbers.h"
#include "replay/text/utf8.h"
#include "replay/text/xml_reader.h"
#include "replay/text/xml_text.h"

#include <algorithm>
#include <mutex>
#include <shared_mutex>

namespace replay::results {
namespace {

std::optional<BookmarkEntry> ReadEntry(const text::XmlReader& reader) {
    const auto channel = reader.Attribute("Channel");
    const auto recordId =
        text::ParseNumber<std::uint64_t>(reader.Attribute("RecordId").value_or(""));
    if (!channel || !recordId) {
        return std::nullopt;
    }
    // Older versions of Windows write "True".
    const std::string_view current = reader.Attribute("IsCurrent").value_or("");
    return BookmarkEntry{text::ToWide(text::DecodeXml(*channel)), *recordId,
                         current == "true" || current == "True"};
}

}  // namespace

std::shared_ptr<Bookmark> Bookmark::FromXml(std::string_view xml) {
    auto bookmark = std::make_shared<Bookmark>();
    text::XmlReader reader(xml);
    bool hasRoot = false;
    for (;;) {
        const text::XmlToken token = reader.Next();
        if (token == text::XmlToken::kDamaged) {
            return nullptr;
        }
        if (token == text::XmlToken::kDone) {
            return hasRoot ? bookmark : nullptr;
        }
        if (token != text::XmlToken::kStart) {
            continue;
        }
        if (!hasRoot && reader.Name() == "BookmarkList") {
            hasRoot = true;
            bookmark->backward_ = reader.Attribute("Direction").value_or("") == "backward";
            continue;
        }
        const auto entry = ReadEntry(reader);
        if (!hasRoot || reader.Name() != "Bookmark" || !entry) {
            return nullptr;
        }
        bookmark->entries_.push_back(*entry);
    }
}

bool Bookmark::IsAbout(std::wstring_view foldedChannel) const {
    return std::ranges::any_of(Entries(), [foldedChannel](const BookmarkEntry& entry) {
        return text::FoldCase(entry.channel) == foldedChannel;
    });
}

void Bookmark::Update(const std::wstring& channel, std::uint64_t recordId, bool backward) {
    const std::lock_guard guard(lock_);
    backward_ = backward;
    for (BookmarkEntry& entry : entries_) {
        entry.isCurrent = false;
    }
    const auto known = std::ranges::find(entries_, channel, &BookmarkEntry::channel);
    if (known == entries_.end()) {
        entries_.push_back({channel, recordId, true});
    } else {
        *known = {channel, recordId, true};
    }
}

std::vector<BookmarkEntry> Bookmark::Entries() const {
    const std::shared_lock guard(lock_);
    return entries_;
}

std::optional<BookmarkEntry> Bookmark::Current() const {
    const std::shared_lock guard(lock_);
    for (const BookmarkEntry& entry : entries_) {
        if (entry.isCurrent) {
            return entry;
        }
    }
    // A single entry counts as current.
    if (entries_.size() == 1) {
        return entries_.front();
    }
    return std::nullopt;
}

std::string Bookmark::Xml() const {
    const std::shared_lock guard(lock_);
    std::string xml = backward_ ? "<BookmarkList Direction='backward'>" : "<BookmarkList>";
    for (const BookmarkEntry& entry : entries_) {
        xml.append("\r\n  <Bookmark Channel='")
            .append(text::EncodeXml(text::ToUtf8(entry.channel)))
            .append("' RecordId='")
            .append(std::to_string(entry.recordId))
            .append("'")
            .append(entry.isCurrent ? " IsCurrent='true'/>" : "/>");
    }
    return xml.append("\r\n</BookmarkList>");
}

}  // namespace replay::results
