#pragma once

#include <map>
#include <string>
#include <vector>

#include "support/recording.h"
#include "window/harness/app_window.h"
#include "window/harness/deadline.h"

namespace tavrin::test {

class StoryDriver;

// An action of the user, or an event that arrives.
using Step = void (StoryDriver::*)();

// How often each function of the service was called.
using CallCounts = std::map<std::wstring, unsigned>;

// How far the program has come with a step.
struct Progress {
    CallCounts calls;
    std::wstring loaded;

    bool operator==(const Progress&) const = default;
};

// The list of a channel that was read without a failure.
struct WholeList {
    int rows;
    int newestId;
    int oldestId;
    int total;  // events in the log, before any filter
};

inline constexpr WholeList kSmallList = {200, 200, 1, 200};
inline constexpr int kOldId = 50;

// The channels beside Application. A load of the large one pauses before its end.
inline const std::vector<std::wstring> kSmallChannel = {L"Applications and Service Logs", L"Acme",
                                                        L"Tools", L"Operational"};
inline const std::vector<std::wstring> kLargeChannel = {L"Applications and Service Logs", L"Large"};

class StoryRecording : public Recording {
public:
    StoryRecording();
    void AddNewEvent() const;
};

// The program with a recording of its own, and the steps of the stories.
class StoryDriver {
public:
    explicit StoryDriver(const std::wstring& script);

    // Waits for the window's answer after each step. Throws if the program has ended: it crashed,
    // or the deadline killed it.
    void Take(const std::vector<Step>& steps);

    void WaitForTree();
    void Minimise();
    void SelectSmallChannel();
    void SelectLargeChannel();
    void SelectNewestEvent() { SelectRow(0); }
    void SelectEventWithoutMessage() { SelectRow(1); }
    void SelectEventOfUnknownProvider() { SelectRow(2); }
    void SelectOldEvent() { SelectRow(kSmallList.rows - kOldId); }
    void SetAsFrom();
    void TickSource();
    void TypeFilterText();
    void ScrollToEnd();
    void Refresh();
    void MeetNewEvent();

    bool HasLoaded(const WholeList& list) const;
    bool Shows(const WholeList& list);
    bool ShowsLoadFailure() const;

    Progress CurrentProgress() const;

    // Waits until the program has made no call for a while.
    Progress WaitForRest() const;

    AppWindow& app() { return app_; }

private:
    void SelectRow(int row);

    StoryRecording logs_;
    AppWindow app_;
    Deadline deadline_;
};

}  // namespace tavrin::test
