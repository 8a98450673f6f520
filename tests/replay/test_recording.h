#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "replay/replay_control.h"
#include "support/recording.h"

namespace replay_test {

using tavrin::test::RecordedEvent;

// The XML of an event in Alpha's file, in UTF-8.
std::string Xml(const RecordedEvent& event);

// The events of Alpha, in file order.
std::vector<RecordedEvent> AlphaEvents();

// Serves a small recording to each test. Fails a test that leaves a handle open. Channels: Alpha
// (Admin; records 1, 2, 4, 7), Beta/Operational (empty), Locked (access denied), Trace/Analytic
// (enabled), Quiet/Debug (disabled, record 1).
class ReplayTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    void Serve() const { replay::LoadDirectory(recording.folder().wstring()); }

    // Replaces Alpha's file and serves it.
    void ServeAlpha(const std::vector<RecordedEvent>& events) const;
    void ServeAlpha(std::string_view bytes) const;

    // Replaces the channel list with these <channel> elements and serves it.
    void ServeChannels(std::string_view elements) const;

    tavrin::test::Recording recording{
        {{.name = L"Alpha"},
         {.name = L"Beta/Operational", .type = L"Operational", .publisher = L"Beta-Works"},
         {.name = L"Locked", .attributes = L"access='denied'"},
         {.name = L"Trace/Analytic", .type = L"Analytic", .publisher = L"Beta-Works"},
         {.name = L"Quiet/Debug", .type = L"Debug", .publisher = L"Beta-Works", .enabled = false}}};
};

}  // namespace replay_test
