#include <algorithm>
#include <cstdio>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/filters/filter_driver.h"
#include "window/filters/filter_model.h"
#include "window/harness/environment.h"
#include "window/harness/test_logs.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

using namespace std::chrono_literals;

constexpr unsigned kUsualSteps = 300;
// One step in this many waits for the program's own timers.
constexpr unsigned kUnhurried = 12;
constexpr std::size_t kMenuRows = 6;  // always in view

const std::wstring kTexts[] = {L"",     L"error",   L"ACME", L"beta",   L"Info",
                               L"/03/", L":30",     L"10",   L"\u00C9", L"\u00E9",
                               L"'",    L"no such", L"a",    L"warning"};
const std::wstring kSearches[] = {L"", L"MSI", L"a", L"\u00C9", L"\u00E9", L"'", L"no such"};

// Returns events oldest first. Each second has two events.
std::vector<RecordedEvent> SpreadEvents(std::size_t count,
                                        const std::vector<std::wstring>& providers) {
    std::vector<RecordedEvent> events = Events(count);
    for (std::size_t i = 0; i < count; ++i) {
        events[i].provider = providers[i * 5 % providers.size()];
        events[i].level = static_cast<unsigned>(i % 6);
        events[i].processId = static_cast<std::uint32_t>(96 + 7 * i);
        const std::size_t pair = i / 2;
        events[i].time = L"2024-03-0" + std::to_wstring(5 + pair / 6) + L"T1" +
                         std::to_wstring(pair % 6) + L":30:" + (i % 4 < 2 ? L"00" : L"59") +
                         (i % 2 == 0 ? L".0000000Z" : L".9990000Z");
    }
    return events;
}

// Performs random user actions on the filters, and compares the window with the model after each.
class FilterWalk : public WindowTest {
protected:
    FilterWalk()
        : seed_(NumberFromEnvironment(L"TAVRIN_WALK_SEED", std::random_device{}())),
          random_(seed_) {
        std::printf("TAVRIN_WALK_SEED=%u\n", seed_);
        std::fflush(stdout);
    }

    void SetUp() override {
        AppOptions options = Serving(logs_);
        options.recordCalls = true;
        std::vector<ModelChannel> channels = {
            {L"Application", kApplication,
             SpreadEvents(24, {L"Acme-Mail", L"Beta", L"MsiInstaller", L"O'Brien",
                               L"The \"quoted\"", L"\u00C9v\u00E9nement", L"Both \" and '"})},
            {L"System", kSystem, SpreadEvents(16, {L"Acme-Disk", L"Beta", L"Gamma/Delta"})},
            {L"Test-Provider/Operational",
             {L"Applications and Service Logs", L"Test", L"Provider", L"Operational"},
             SpreadEvents(6, {L"Test-Provider"})}};
        for (ModelChannel& channel : channels) {
            logs_.WriteEvents(channel.name, channel.events);
            std::ranges::reverse(channel.events);
        }
        const ZoneOffsets offsets = OffsetsOfThisZone(TimeOf(channels[0].events[0]));
        model_ = std::make_unique<FilterModel>(std::move(channels), offsets);
        Start(options);
        driver_ = std::make_unique<FilterDriver>(*app_);
        ASSERT_TRUE(BringToFront(app_->window()));
    }

    std::size_t Random(std::size_t end) {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(random_);
    }
    template <typename Range>
    const auto& OneOf(const Range& range) {
        return *(std::begin(range) + static_cast<std::ptrdiff_t>(Random(std::size(range))));
    }

    // The actions. Each returns its description, or "" if it is not possible now.
    std::wstring TypeText();
    std::wstring ClickSource();
    std::wstring SearchSources();
    std::wstring ShowAll();
    std::wstring ClickPicker();
    std::wstring TypePicker();
    std::wstring SetAs();
    std::wstring Refresh();
    std::wstring Switch();
    std::wstring ChooseFolder();

    // Tries actions until one is possible.
    std::wstring DoSomething();

    // Makes the pending timers expire now, or leaves them to run.
    void Settle();

    FilterView ShownView();
    std::wstring Difference(const FilterView& shown, const FilterView& expected) const;
    void ExpectTheModelsView();
    void ExpectTheModelsQueries() const;

    HWND Picker(Bound bound) const {
        return bound == Bound::From ? app_->controls().fromPicker : app_->controls().toPicker;
    }
    std::optional<LocalTime> PickerTime(Bound bound) const {
        const auto time = bound == Bound::From ? app_->From() : app_->To();
        return time ? std::optional(LocalTimeOf(*time)) : std::nullopt;
    }

    const Recording logs_{kSomeChannels};
    const unsigned seed_;
    std::mt19937 random_;
    std::unique_ptr<FilterModel> model_;
    std::unique_ptr<FilterDriver> driver_;
    bool textIsPending_ = false;
    std::wstring history_;  // one line per action
};

std::wstring FilterWalk::TypeText() {
    const std::wstring& text = OneOf(kTexts);
    app_->TypeFilter(text);
    model_->Type(text);
    textIsPending_ = true;
    return L"types \"" + text + L"\"";
}

std::wstring FilterWalk::ClickSource() {
    const std::vector<SourceRow> sources = model_->View().sources;
    if (sources.empty()) {
        return {};
    }
    const std::size_t row = Random(sources.size());
    driver_->ClickSource(static_cast<int>(row));
    model_->ToggleSource(row);
    WaitUntil(
        [&] { return TextOf(app_->controls().sourcesCaption) == model_->View().sourcesCaption; });
    return L"clicks the source " + sources[row].name;
}

std::wstring FilterWalk::SearchSources() {
    if (!model_->current()) {
        return {};
    }
    const std::wstring& text = OneOf(kSearches);
    driver_->TypeSearch(text);
    model_->Search(text);
    return L"searches for \"" + text + L"\"";
}

std::wstring FilterWalk::ShowAll() {
    if (!model_->current()) {
        return {};
    }
    driver_->ClickShowAll();
    model_->ShowAllSources();
    return L"shows all sources";
}

// The model takes the time of a newly ticked picker, today's midnight or now, from the window.
std::wstring FilterWalk::ClickPicker() {
    const Bound bound = OneOf(std::vector{Bound::From, Bound::To});
    const bool on = !model_->picker(bound);
    driver_->ClickPickerBox(Picker(bound));
    WaitUntil([&] { return PickerTime(bound).has_value() == on; });
    app_->Synchronise();
    model_->SetPicker(bound, PickerTime(bound));
    return std::wstring(on ? L"ticks " : L"unticks ") + (bound == Bound::From ? L"From" : L"To");
}

// Types the second of an event, the one before or the one after.
std::wstring FilterWalk::TypePicker() {
    const Bound bound = OneOf(std::vector{Bound::From, Bound::To});
    if (!model_->picker(bound)) {
        return {};
    }
    const RecordedEvent& event = OneOf(OneOf(model_->channels()).events);
    const ZoneOffsets offsets = OffsetsOfThisZone(TimeOf(event));
    const LocalTime time((TimeOf(event) + offsets.chosen + 1s * (static_cast<int>(Random(3)) - 1))
                             .time_since_epoch());
    driver_->TypePickerTime(Picker(bound), FieldsOf(time));
    model_->SetPicker(bound, time);
    return std::wstring(L"types a time into ") + (bound == Bound::From ? L"From" : L"To");
}

std::wstring FilterWalk::SetAs() {
    const std::size_t rows = model_->View().rows.size();
    if (rows == 0) {
        return {};
    }
    const Bound bound = OneOf(std::vector{Bound::From, Bound::To});
    const std::size_t row = Random(std::min(rows, kMenuRows));
    driver_->UseMenu(static_cast<int>(row),
                     bound == Bound::From ? MenuEntry::SetAsFrom : MenuEntry::SetAsTo);
    model_->SetAs(bound, row);
    return L"sets row " + std::to_wstring(row) + (bound == Bound::From ? L" as From" : L" as To");
}

std::wstring FilterWalk::Refresh() {
    PressKey(VK_F5);
    model_->Refresh();
    return L"refreshes";
}

std::wstring FilterWalk::Switch() {
    const std::size_t index = Random(model_->channels().size());
    driver_->ClickTree(model_->channels()[index].treePath);
    model_->SelectChannel(index);
    return L"selects " + model_->channels()[index].name;
}

std::wstring FilterWalk::ChooseFolder() {
    driver_->ClickTree(kWindowsLogs);
    model_->SelectFolder(kWindowsLogs.back());
    return L"selects a folder";
}

std::wstring FilterWalk::DoSomething() {
    struct Action {
        std::wstring (FilterWalk::*run)();
        double weight;
    };
    static constexpr Action kActions[] = {
        {&FilterWalk::TypeText, 4},      {&FilterWalk::ClickSource, 5},
        {&FilterWalk::SearchSources, 2}, {&FilterWalk::ShowAll, 1},
        {&FilterWalk::ClickPicker, 3},   {&FilterWalk::TypePicker, 4},
        {&FilterWalk::SetAs, 3},         {&FilterWalk::Refresh, 1},
        {&FilterWalk::Switch, 2},        {&FilterWalk::ChooseFolder, 0.5}};
    std::vector<double> weights;
    for (const Action& action : kActions) {
        weights.push_back(action.weight);
    }
    std::discrete_distribution<std::size_t> choice(weights.begin(), weights.end());
    std::wstring done;
    while (done.empty()) {
        done = (this->*kActions[choice(random_)].run)();
    }
    return done;
}

void FilterWalk::Settle() {
    const bool hurry = Random(kUnhurried) != 0;
    if (hurry && model_->isPending()) {
        app_->Expire(Timer::FilterApply);
    }
    if (hurry && textIsPending_) {
        app_->Expire(Timer::FilterText);
    }
    model_->Settle();
    textIsPending_ = false;
}

FilterView FilterWalk::ShownView() {
    FilterView view;
    for (int row = 0; row < app_->list().RowCount(); ++row) {
        view.rows.push_back(app_->list().Row(row));
    }
    view.loaded = app_->Loaded();
    view.total = app_->Total();
    view.totalCaption = app_->TotalCaption();
    view.nodeName = app_->NodeName();
    view.sourcesCaption = TextOf(app_->controls().sourcesCaption);
    for (int row = 0; row < app_->sources().RowCount(); ++row) {
        view.sources.push_back({app_->sources().Cell(row, 0), app_->sources().IsChecked(row)});
    }
    view.status = app_->Status();
    view.filterText = app_->FilterText();
    view.from = PickerTime(Bound::From);
    view.to = PickerTime(Bound::To);
    return view;
}

std::wstring FilterWalk::Difference(const FilterView& shown, const FilterView& expected) const {
    std::wstring text;
    const auto add = [&](const wchar_t* what, const std::wstring& is, const std::wstring& should) {
        if (is != should) {
            text.append(what)
                .append(L": \"")
                .append(is)
                .append(L"\", not \"")
                .append(should)
                .append(L"\"\n");
        }
    };
    const auto describe = [](const std::vector<SourceRow>& sources) {
        std::wstring names;
        for (const SourceRow& source : sources) {
            names.append(source.isTicked ? L"[x] " : L"[ ] ").append(source.name).append(L"; ");
        }
        return names;
    };
    const auto ids = [](const std::vector<RowCells>& rows) {
        std::wstring numbers;
        for (const RowCells& row : rows) {
            numbers += row.back() + L" " + row[1] + L"; ";
        }
        return numbers;
    };
    add(L"rows", ids(shown.rows), ids(expected.rows));
    add(L"loaded", shown.loaded, expected.loaded);
    add(L"total", shown.total, expected.total);
    add(L"caption of the total", shown.totalCaption, expected.totalCaption);
    add(L"node name", shown.nodeName, expected.nodeName);
    add(L"caption of the sources", shown.sourcesCaption, expected.sourcesCaption);
    add(L"sources", describe(shown.sources), describe(expected.sources));
    add(L"status", shown.status, expected.status);
    add(L"filter text", shown.filterText, expected.filterText);
    return text.empty() ? L"other cells, or a picker's time" : text;
}

void FilterWalk::ExpectTheModelsView() {
    const FilterView expected = model_->View();
    FilterView shown;
    const bool isRight = WaitUntil([&] { return (shown = ShownView()) == expected; }, 5s);
    ASSERT_TRUE(isRight) << history_ << Difference(shown, expected);
}

// Compares the query of each channel's last load with the model's.
void FilterWalk::ExpectTheModelsQueries() const {
    for (std::size_t index = 0; index < model_->channels().size(); ++index) {
        const std::vector<std::wstring> queries = driver_->Queries(model_->channels()[index].name);
        const std::optional<std::wstring> expected = model_->LastQuery(index);
        ASSERT_EQ(queries.empty(), !expected.has_value());
        if (expected) {
            EXPECT_EQ(queries.back(), *expected);
        }
    }
}

TEST_F(FilterWalk, TheWindowAlwaysShowsWhatTheFiltersSelect) {
    driver_->ClickTree(model_->channels()[0].treePath);
    model_->SelectChannel(0);
    ASSERT_NO_FATAL_FAILURE(ExpectTheModelsView());
    const unsigned steps = NumberFromEnvironment(L"TAVRIN_WALK_STEPS", kUsualSteps);
    for (unsigned step = 1; step <= steps; ++step) {
        history_ += std::to_wstring(step) + L": " + DoSomething() + L"\n";
        // Switches channels while a change may still wait for its timer.
        if (Random(6) == 0) {
            history_ += L"    and at once " + Switch() + L"\n";
        }
        Settle();
        ASSERT_NO_FATAL_FAILURE(ExpectTheModelsView());
        if (step % 25 == 0) {
            ASSERT_NO_FATAL_FAILURE(ExpectTheModelsQueries());
        }
    }
}

}  // namespace
}  // namespace tavrin::test
