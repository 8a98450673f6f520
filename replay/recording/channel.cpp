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

namespace replay {
namespace {

// Bytes of a resource: they live as long as the module.
class ResourceBytes final : public EventBytes {
public:
    explicit ResourceBytes(std::string_view bytes) : bytes_(bytes) {}
    std::string_view View() const override { return bytes_; }

private:
    std::string_view bytes_;
};

void NoticeDamages(const std::wstring& place, const std::vector<XmlDamage>& damages) {
    for (const XmlDamage& damage : damages)
        Notice(place + L": byte " + std::to_wstring(damage.offset) + L": " + ToWide(damage.reason) +
               L"; this event is left out");
}

}  // namespace

Channel::Channel(ChannelConfig config, ChannelStorage storage)
    : config_(std::move(config)),
      storage_(std::move(storage)),
      foldedName_(FoldCase(config_.name)) {}

bool Channel::IsDirect() const {
    return config_.type == ChannelType::kAnalytic || config_.type == ChannelType::kDebug;
}

std::shared_ptr<ChannelLog> Channel::Log() {
    const std::lock_guard guard(lock_);
    ReadFirst();
    TakeGrowth();
    return log_;
}

std::shared_ptr<ChannelLog> Channel::LogAsSeen() {
    const std::lock_guard guard(lock_);
    ReadFirst();
    return log_;
}

bool Channel::IsRead() {
    const std::lock_guard guard(lock_);
    return log_ != nullptr;
}

bool Channel::Append(MadeEvent event) {
    const std::lock_guard guard(lock_);
    ReadFirst();
    if (event.channel.empty())
        event.channel = ToUtf8(config_.name);
    if (event.recordId == 0)
        event.recordId = NextRecordId();
    if (event.time == 0)
        event.time = Now();
    return AppendBytes(MakeEventXml(event));
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
    RecordedSource::Extent extent;
    log_ = std::make_shared<ChannelLog>(std::make_shared<RecordedSource>(
        config_.name, std::make_shared<OwnedBytes>(std::string()), extent));
}

void Channel::ReadFirst() {
    if (log_ != nullptr)
        return;
    if (config_.synthetic)
        log_ = std::make_shared<ChannelLog>(
            std::make_shared<SyntheticSource>(config_.name, *config_.synthetic));
    else
        log_ = std::make_shared<ChannelLog>(ReadStorage());
}

void Channel::TakeGrowth() {
    if (storage_.file.empty() || config_.synthetic)
        return;
    if (file_ == nullptr)
        file_ = std::make_unique<SharedFile>(storage_.file);
    if (!*file_) {
        file_.reset();
        return;
    }
    const std::uint64_t size = file_->Size();
    if (size == sizeSeen_)
        return;
    sizeSeen_ = size;
    const auto bytes = std::make_shared<OwnedBytes>(file_->ReadFrom(readTo_));
    RecordedSource::Extent extent;
    const auto events = std::make_shared<RecordedSource>(config_.name, bytes, extent);
    if (events->Count() == 0)
        return;  // perhaps an event that is still being written
    readTo_ += extent.end;
    log_->Append(events);
}

std::shared_ptr<EventSource> Channel::ReadStorage() {
    std::shared_ptr<const EventBytes> bytes = std::make_shared<ResourceBytes>(storage_.embedded);
    if (!storage_.file.empty()) {
        file_ = std::make_unique<SharedFile>(storage_.file);
        if (!*file_)
            file_.reset();
    }
    if (file_ != nullptr) {
        bytes = file_->Map();
        if (bytes == nullptr) {
            Notice(storage_.file + L": cannot be read");
            bytes = std::make_shared<OwnedBytes>(std::string());
        }
    }
    RecordedSource::Extent extent;
    auto events = std::make_shared<RecordedSource>(config_.name, bytes, extent);
    const std::wstring place = storage_.file.empty() ? config_.name : storage_.file;
    NoticeDamages(place, extent.damages);
    if (extent.damages.empty() && !extent.closed && !bytes->View().empty())
        Notice(place + L": byte " + std::to_wstring(extent.end) +
               L": the file ends without </Events>");
    readTo_ = extent.end;
    sizeSeen_ = bytes->View().size();
    return events;
}

bool Channel::AppendBytes(std::string bytes) {
    RecordedSource::Extent extent;
    const auto events = std::make_shared<RecordedSource>(
        config_.name, std::make_shared<OwnedBytes>(std::move(bytes)), extent);
    NoticeDamages(config_.name + L" (appended)", extent.damages);
    if (events->Count() > 0)
        log_->Append(events);
    return events->Count() > 0 && extent.damages.empty();
}

// The highest id so far and one more: ids go on after the channel was cleared.
std::uint64_t Channel::NextRecordId() {
    const std::uint64_t count = log_->Count();
    if (count > 0)
        lastRecordId_ = std::max(lastRecordId_, log_->Facts(count - 1).recordId);
    return lastRecordId_ + 1;
}

}  // namespace replay
