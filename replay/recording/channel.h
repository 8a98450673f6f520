#pragma once

#include "replay/events/channel_log.h"
#include "replay/events/recorded_source.h"
#include "replay/platform/lock.h"
#include "replay/platform/shared_file.h"
#include "replay/recording/channel_config.h"
#include "replay/platform/shared_file.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace replay::recording {

// Where a recorded channel's events are stored. Without either the channel is empty.
struct ChannelStorage {
    std::wstring file;          // a path; the file need not exist yet
    std::string_view embedded;  // bytes of a resource
};

// One channel of the recording. Its events are read at the first use. Safe on any thread.
class Channel {
public:
    Channel(ChannelConfig config, ChannelStorage storage);

    const ChannelConfig& Config() const { return config_; }
    const std::wstring& FoldedName() const { return foldedName_; }
    // Analytic and Debug channels: events are written to their files directly.
    bool IsDirect() const;

    // The current log, with what was appended to the channel's file. Clearing the channel
    // replaces the object.
    std::shared_ptr<events::ChannelLog> Log();

    // The log without another look at the file: cheaper.
    std::shared_ptr<events::ChannelLog> LogAsSeen();

    // Whether the events have been read yet.
    bool IsRead();

    // Adds one event; its record id and time are set when they are 0. False if the XML is damaged.
    bool Append(events::MadeEvent event);
    bool AppendXml(std::string xml);

    // Removes every event; record ids go on counting.
    void Clear();

private:
    // The rest with lock_ held.
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
    std::uint64_t readTo_ = 0;        // guarded by lock_: end of the last whole event in file_
    std::uint64_t sizeSeen_ = 0;      // guarded by lock_: file size at the last look
    std::uint64_t lastRecordId_ = 0;  // guarded by lock_
};

}  // namespace replay::recording
