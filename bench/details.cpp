// Measures what showing an event costs the window thread: the program, the edit control that paints
// the text, and the service, whose calls are timed separately.

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>
#include <winevt.h>

#include "bench/samples.h"
#include "eventlog/channels/event_node.h"
#include "eventlog/channels/node_flags.h"
#include "eventlog/details/event_details.h"
#include "eventlog/loading/event_loading.h"
#include "eventlog/records/event_record.h"
#include "replay/replay_control.h"
#include "support/import_patch.h"
#include "ui/rules/line_breaks.h"

namespace tavrin::bench {
namespace {

double g_serviceMicroseconds = 0;  // time in the service for the current event

// Adds the time spent in an imported function to g_serviceMicroseconds.
template <typename Function>
class TimedImport;

template <typename Result, typename... Arguments>
class TimedImport<Result WINAPI(Arguments...)> {
public:
    explicit TimedImport(const char* name) : patch_(name, Timed) { original_ = patch_.Original(); }

private:
    static Result WINAPI Timed(Arguments... arguments) {
        const Stopwatch watch;
        const Result result = original_(arguments...);
        const DWORD error = GetLastError();
        g_serviceMicroseconds += watch.Microseconds();
        SetLastError(error);
        return result;
    }

    inline static Result(WINAPI* original_)(Arguments...) = nullptr;
    test::ImportPatch<Result WINAPI(Arguments...)> patch_;
};

struct TimedService {
    TimedImport<decltype(EvtClose)> close{"EvtClose"};
    TimedImport<decltype(EvtQuery)> query{"EvtQuery"};
    TimedImport<decltype(EvtSeek)> seek{"EvtSeek"};
    TimedImport<decltype(EvtNext)> next{"EvtNext"};
    TimedImport<decltype(EvtRender)> render{"EvtRender"};
    TimedImport<decltype(EvtCreateBookmark)> bookmark{"EvtCreateBookmark"};
    TimedImport<decltype(EvtOpenPublisherMetadata)> publisher{"EvtOpenPublisherMetadata"};
    TimedImport<decltype(EvtFormatMessage)> format{"EvtFormatMessage"};
};

base::ChunkedList<eventlog::EventRecordPtr> LoadChannel(const std::wstring& channel) {
    eventlog::EventNode node(channel, channel,
                             eventlog::node_flags::Channel | eventlog::node_flags::AdminChannel);
    eventlog::UniqueEvt query;
    while (node.done.load() == 0 && eventlog::LoadChannelEvents(node, query) >= 0) {
    }
    return std::move(node.recordList);
}

class DetailsEdit {
public:
    DetailsEdit()
        : edit_(CreateWindowExW(WS_EX_CLIENTEDGE, L"Edit", L"",
                                WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_VSCROLL | ES_MULTILINE |
                                    ES_AUTOVSCROLL | ES_READONLY,
                                0, 0, 700, 150, nullptr, nullptr, nullptr, nullptr)) {}
    ~DetailsEdit() { DestroyWindow(edit_); }
    DetailsEdit(const DetailsEdit&) = delete;
    DetailsEdit& operator=(const DetailsEdit&) = delete;

    void Show(const std::wstring& text) const {
        SetWindowTextW(edit_, text.c_str());
        InvalidateRect(edit_, nullptr, TRUE);
        UpdateWindow(edit_);
    }

private:
    HWND edit_;
};

struct EventCost {
    Samples program;
    Samples edit;
    Samples service;
};

void MeasureChannel(const std::wstring& channel, const DetailsEdit& edit, EventCost& cost) {
    const auto records = LoadChannel(channel);
    const TimedService timed{};
    for (std::size_t i = 0; i < records.size(); ++i) {
        const eventlog::EventRecordPtr& record = records[i];
        g_serviceMicroseconds = 0;
        Stopwatch watch;
        std::wstring text;
        static_cast<void>(eventlog::FormatEventDescription(
            channel, record->recordId, record->eventId, record->providerName, text));
        text = ui::WithLineBreakPairs(text);
        cost.program.Add((watch.Microseconds() - g_serviceMicroseconds) / 1000);
        cost.service.Add(g_serviceMicroseconds / 1000);
        watch.Restart();
        edit.Show(text);
        cost.edit.Add(watch.Microseconds() / 1000);
    }
}

void PrintWithTail(const Samples& samples, const char* what) {
    samples.Print(what, "ms");
    std::printf("%-58s %10.2f\n", "  99th percentile", samples.Quantile(0.99));
}

TEST(Details, EveryEventOfTheSample) {
    replay::LoadEmbedded();
    const DetailsEdit edit;
    EventCost cost;
    for (const wchar_t* channel :
         {L"Application", L"Security", L"System", L"Lantern-Diagnostics-Probe/Operational"}) {
        MeasureChannel(channel, edit, cost);
    }
    PrintHeadline("showing an event's text, every event of four channels");
    PrintWithTail(cost.program, "the program itself");
    PrintWithTail(cost.edit, "the edit control taking and painting the text");
    PrintWithTail(cost.service, "the replay service");
}

}  // namespace
}  // namespace tavrin::bench
