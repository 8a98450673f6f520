#include "endurance/faults/expected_window.h"

#include <iterator>

#include <winevt.h>

#include "window/expected/expected_texts.h"
#include "window/harness/app_window.h"

namespace tavrin::test {
namespace {

std::wstring FailureText(DWORD code) {
    switch (code) {
        case ERROR_ACCESS_DENIED: return L"Access denied. Run as administrator to view this log.";
        case ERROR_EVT_CHANNEL_NOT_FOUND:
            return L"The log was not found. It may have been removed or its provider uninstalled.";
        case ERROR_EVT_QUERY_RESULT_STALE:
            return L"The log changed while it was being read (it may have been cleared). Reselect "
                   L"it to reload.";
        case ERROR_EVT_INVALID_OPERATION_OVER_ENABLED_DIRECT_CHANNEL:
            return L"This is an enabled Analytic/Debug log. It must be disabled before its events "
                   L"can be viewed.";
        default: return SystemErrorText(code);
    }
}

std::wstring FailureMessage(const std::wstring& path, const ExpectedLoad& load) {
    const std::size_t count = load.loaded().size();
    const std::wstring beginning =
        count == 0 ? L"Failed to load " + path + L": "
                   : L"Loading stopped after " + FormatCount(count) + L" events: ";
    return beginning + FailureText(load.result());
}

std::chrono::minutes ListOffset() {
    static const std::chrono::minutes offset = OffsetsOfThisZone({}).shown;
    return offset;
}

// Lists the ticked names first.
std::wstring SourceLines(const std::set<std::wstring>& ticked, std::set<std::wstring> known) {
    std::wstring lines;
    for (const std::wstring& name : ticked) {
        lines += L"[x] " + name + L"\n";
        known.erase(name);
    }
    for (const std::wstring& name : known) {
        lines += L"[ ] " + name + L"\n";
    }
    return lines;
}

}  // namespace

RowCells CellsOf(const RecordedEvent& event) {
    return ExpectedCells(event, ListOffset());
}

void ExpectedWindow::Take(const Step& step) {
    switch (step.action) {
        case Action::Start: tree_ = ExpectedTree(ListedChannels(), service_); break;
        case Action::SelectSmallChannel: Select(SmallChannel()); break;
        case Action::SelectLargeChannel: Select(LargeChannel()); break;
        case Action::SelectEvent: SelectEvent(step.row); break;
        case Action::SetAsFrom: FilterFrom(step.row); break;
        case Action::TickSource: FilterBySource(step.row); break;
        case Action::TypeFilterText: FilterByText(kTypedText); break;
        case Action::ScrollToEnd:
            load_->Extend();
            Refill();
            break;
        case Action::Refresh:
            total_.reset();
            StartLoad();
            break;
        case Action::EventArrives:
            if (load_->isWatched() && load_->result() == ERROR_SUCCESS) {
                statusText_ = kNewEventsNotice;
            }
            break;
    }
}

WindowTexts ExpectedWindow::Texts() const {
    const bool isChannel = channel_ != nullptr;
    return {{"loaded", isChannel ? FormatCount(rows_.size()) : L""},
            {"total", isChannel ? FormatCount(total_.value_or(0)) : L""},
            {"total's caption", filter_.IsEmpty() ? L" Total: " : L" In log: "},
            {"node's name", ExpectedSummary(isChannel ? channel_->treePath.back() : L"",
                                            filter_.sources.size(), filter_.from.has_value())},
            {"status", statusText_},
            {"details", detailsText_},
            {"sources", SourceLines(filter_.sources, knownSources_)}};
}

void ExpectedWindow::Select(const StoryChannel& channel) {
    channel_ = &channel;
    StartLoad();
}

void ExpectedWindow::SelectEvent(int row) {
    detailsText_ = details_.Of(*rows_[static_cast<std::size_t>(row)]);
}

void ExpectedWindow::FilterFrom(int row) {
    filter_.from = TimeOf(*rows_[static_cast<std::size_t>(row)]);
    StartLoad();
}

void ExpectedWindow::FilterBySource(int row) {
    filter_.sources = {*std::next(knownSources_.begin(), row)};
    StartLoad();
}

void ExpectedWindow::FilterByText(const std::wstring& text) {
    text_ = text;
    load_->Unlimit();
    Refill();
}

void ExpectedWindow::StartLoad() {
    statusText_.clear();
    detailsText_.clear();
    CountRecords();
    std::vector<const RecordedEvent*> found;
    for (const RecordedEvent& event : channel_->events) {
        if (IsFound(event, filter_)) {
            found.push_back(&event);
        }
    }
    load_.emplace(std::move(found), service_);
    Refill();
}

// The count covers the whole log, whatever the filter. A refresh forgets it.
void ExpectedWindow::CountRecords() {
    if (!total_ && service_.Call(L"EvtOpenLog") == ERROR_SUCCESS &&
        service_.Call(L"EvtGetLogInfo") == ERROR_SUCCESS) {
        total_ = channel_->events.size();
    }
}

void ExpectedWindow::Refill() {
    rows_.clear();
    for (const RecordedEvent* const event : load_->loaded()) {
        knownSources_.insert(event->provider);
        if (text_.empty() || IsShown(*event, text_, ListOffset())) {
            rows_.push_back(event);
        }
    }
    if (load_->result() != ERROR_SUCCESS) {
        statusText_ = FailureMessage(channel_->path, *load_);
        detailsText_ = statusText_ + L"\r\n\r\nLog: " + channel_->path + L"\r\nError code: " +
                       std::to_wstring(load_->result());
    }
}

}  // namespace tavrin::test
