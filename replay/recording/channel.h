#pragma once

#include "replay/events/channel_log.h"
#include "replay/events/recorded_source.h"
#include "replay/platform/lock.h"
#include "replay/platform/shared_file.h"
#include "replay/recording/channel_config.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace replay::recording {

// Where a channel's events are stored. If both are empty, the channel is empty.
struct ChannelStorage {
    std::wstring file;          // a path; the file need not exist yet
    std::string_view embedded;  // bytes of a resource
};

// One channel of the recording. Reads its events at first use. Thread-safe.
class Channel {
public:
    Channel(ChannelConfig config, ChannelStorage storage);

    const ChannelConfig& Config() const { return config_; }
    const std::wstring& FoldedName() const { return foldedName_; }
    // True for Analytic and Debug channels, whose events are traced directly to their files.
    bool IsDirect() const;

    // Returns the current log, including events appended to the channel's file. Clear replaces it.
    std::shared_ptr<events::ChannelLog> Log();

    // Returns the log without checking the file again, which is cheaper.
    std::shared_ptr<events::ChannelLog> LogAsSeen();

    // Whether the events have been read.
    bool IsRead();

    // Append an event. Append replaces a record id or a time of 0. Return false if the XML is
    // damaged.
    bool Append(events::MadeEvent event);
    bool AppendXml(std::string xml);

    // Removes every event. Record ids continue after the last one.
    void Clear();

private:
    // These functions require lock_.
    void ReadFirst();
    void TakeGrowth();
    std::shared_ptr<events::EventSource> ReadStorage();
    std::shared_ptr<events::EventSource> ReadEvents(
        std::shared_ptr<const platform::EventBytes> bytes, events::RecordedSource::Extent& extent);
    bool AppendBytes(std::string bytes);
    std::uint64_t NextRecordId();

    const ChannelConfig config_;
    const ChannelStorage storage_;
    const std::wstring foldedName_;
    platform::Lock lock_;
    std::shared_ptr<events::ChannelLog> log_;     // guarded by lock_
    std::unique_ptr<platform::SharedFile> file_;  // guarded by lock_
    std::uint64_t readTo_ = 0;        // guarded by lock_: end of the last complete event in file_
    std::uint64_t sizeSeen_ = 0;      // guarded by lock_: file size at the last check
    std::uint64_t lastRecordId_ = 0;  // guarded by lock_
};

}  // namespace replay::recording
