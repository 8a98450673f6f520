#include "replay/recording/channel.h"

#include "replay/events/recorded_source.h"
#include "replay/platform/notice.h"
#include "replay/text/channel_name.h"
#include "replay/text/event_time.h"
#include "replay/text/utf8.h"
#include "replay/text/xml_reader.h"

#include <algorithm>
#include <mutex>
#include <utility>

namespace replay::recording {
namespace {

// Bytes of a resource, which are valid as long as the module.
class ResourceBytes final : public platform::EventBytes {
public:
    explicit ResourceBytes(std::string_view bytes) : bytes_(bytes) {}
    std::string_view View() const override { return bytes_; }

private:
    std::string_view bytes_;
};

void NoticeDamages(const std::wstring& place, const std::vector<text::XmlDamage>& damages) {
    for (const text::XmlDamage& damage : damages) {
        platform::Notice(place + L": byte " + std::to_wstring(damage.offset) + L": " +
                         text::ToWide(damage.reason) + L"; this event is left out");
    }
}

}  // namespace

Channel::Channel(ChannelConfig config, ChannelStorage storage)
    : config_(std::move(config)),
      storage_(std::move(storage)),
      foldedName_(text::FoldCase(config_.name)) {}

bool Channel::IsDirect() const {
    return config_.type == ChannelType::kAnalytic || config_.type == ChannelType::kDebug;
}

std::shared_ptr<events::ChannelLog> Channel::Log() {
    const std::lock_guard guard(lock_);
    ReadFirst();
    TakeGrowth();
    return log_;
}

std::shared_ptr<events::ChannelLog> Channel::LogAsSeen() {
    const std::lock_guard guard(lock_);
    ReadFirst();
    return log_;
}

bool Channel::IsRead() {
    const std::lock_guard guard(lock_);
    return log_ != nullptr;
}

bool Channel::Append(events::MadeEvent event) {
    const std::lock_guard guard(lock_);
    ReadFirst();
    if (event.channel.empty()) {
        event.channel = text::ToUtf8(config_.name);
    }
    if (event.recordId == 0) {
        event.recordId = NextRecordId();
    }
    if (event.time == 0) {
        event.time = text::Now();
    }
    return AppendBytes(events::MakeEventXml(event));
}

bool Channel::AppendXml(std::string xml) {
    const std::lock_guard guard(lock_);
    ReadFirst();
    return AppendBytes(std::move(xml));
}

void Channel::Clear() {
    const std::lock_guard guard(lock_);
    ReadFirst();
    lastRecordId_ = NextRecordId() - 1;
    events::RecordedSource::Extent extent;
    log_ = std::make_shared<events::ChannelLog>(std::make_shared<events::RecordedSource>(
        config_.name, std::make_shared<platform::OwnedBytes>(std::string()), extent));
}

void Channel::ReadFirst() {
    if (log_ != nullptr) {
        return;
    }
    if (config_.synthetic) {
        log_ = std::make_shared<events::ChannelLog>(
            std::make_shared<events::SyntheticSource>(config_.name, *config_.synthetic));
    } else {
        log_ = std::make_shared<events::ChannelLog>(ReadStorage());
    }
}

void Channel::TakeGrowth() {
    if (storage_.file.empty() || config_.synthetic) {
        return;
    }
    if (file_ == nullptr) {
        file_ = std::make_unique<platform::SharedFile>(storage_.file);
    }
    if (!*file_) {
        file_.reset();
        return;
    }
    const std::uint64_t size = file_->Size();
    if (size == sizeSeen_) {
        return;
    }
    sizeSeen_ = size;
    const auto bytes = std::make_shared<platform::OwnedBytes>(file_->ReadFrom(readTo_));
    events::RecordedSource::Extent extent;
    const auto events = ReadEvents(bytes, extent);
    if (events->Count() == 0) {
        return;  // the event may still be incomplete
    }
    readTo_ += extent.end;
    log_->Append(events);
}

std::shared_ptr<events::EventSource> Channel::ReadStorage() {
    std::shared_ptr<const platform::EventBytes> bytes =
        std::make_shared<ResourceBytes>(storage_.embedded);
    if (!storage_.file.empty()) {
        file_ = std::make_unique<platform::SharedFile>(storage_.file);
        if (!*file_) {
            file_.reset();
        }
    }
    if (file_ != nullptr) {
        bytes = file_->Map();
        if (bytes == nullptr) {
            platform::Notice(storage_.file + L": cannot be read");
            bytes = std::make_shared<platform::OwnedBytes>(std::string());
        }
    }
    events::RecordedSource::Extent extent;
    auto events = ReadEvents(bytes, extent);
    const std::wstring place = storage_.file.empty() ? config_.name : storage_.file;
    NoticeDamages(place, extent.damages);
    if (extent.damages.empty() && !extent.closed && !bytes->View().empty()) {
        platform::Notice(place + L": byte " + std::to_wstring(extent.end) +
                         L": the file ends without </Events>");
    }
    readTo_ = extent.end;
    sizeSeen_ = bytes->View().size();
    return events;
}

std::shared_ptr<events::EventSource> Channel::ReadEvents(
    std::shared_ptr<const platform::EventBytes> bytes, events::RecordedSource::Extent& extent) {
    auto events = std::make_shared<events::RecordedSource>(config_.name, std::move(bytes), extent);
    if (config_.forwarded) {
        events->NumberFrom(NextRecordId());
    }
    return events;
}

bool Channel::AppendBytes(std::string bytes) {
    events::RecordedSource::Extent extent;
    const auto events =
        ReadEvents(std::make_shared<platform::OwnedBytes>(std::move(bytes)), extent);
    NoticeDamages(config_.name + L" (appended)", extent.damages);
    if (events->Count() > 0) {
        log_->Append(events);
    }
    return events->Count() > 0 && extent.damages.empty();
}

// One more than the highest id so far. Ids continue after the channel was cleared.
std::uint64_t Channel::NextRecordId() {
    const std::uint64_t count = log_ == nullptr ? 0 : log_->Count();
    if (count > 0) {
        lastRecordId_ = std::max(lastRecordId_, log_->NumberInLog(count - 1));
    }
    return lastRecordId_ + 1;
}

}  // namespace replay::recording
