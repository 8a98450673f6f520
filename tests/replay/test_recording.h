#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "replay/replay_control.h"

namespace replay_test {

// An event as recordings hold it; texts are put into the XML as they are.
struct RecordedEvent {
    unsigned long long recordId = 1;
    std::string provider = "Alder";
    int eventId = 7;
    int level = 4;
    std::string keywords = "0x8000000000000000";
    std::string time = "2024-03-01T08:00:00.0000000Z";
    std::string channel = "Alpha";
    std::string data = "<EventData></EventData>";
    std::string message = {};  // empty: none
};

std::string Xml(const RecordedEvent& event);
std::string EventsFile(const std::vector<RecordedEvent>& events);

// A recording in a directory of its own, which is removed at the end.
class TestRecording {
public:
    TestRecording();
    TestRecording(const TestRecording&) = delete;
    TestRecording& operator=(const TestRecording&) = delete;
    ~TestRecording();

    void Write(std::string_view fileName, std::string_view bytes) const;
    void Append(std::string_view fileName, std::string_view bytes) const;
    // channels.xml with these <channel> elements.
    void WriteChannels(std::string_view elements) const;
    void Load() const { replay::LoadDirectory(directory_.wstring()); }
    const std::filesystem::path& Directory() const { return directory_; }

private:
    std::filesystem::path directory_;
};

// Serves a small recording of its own to each test, and wants every handle closed at the end.
// Channels: Alpha (Admin; records 1, 2, 4, 7), Beta/Operational (empty), Locked (access denied),
// Trace/Analytic (enabled), Quiet/Debug (disabled, record 1).
class ReplayTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    TestRecording recording;
};

// The events of Alpha, in the order of the file.
std::vector<RecordedEvent> AlphaEvents();

}  // namespace replay_test
