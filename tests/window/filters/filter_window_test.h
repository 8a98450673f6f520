#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/recording.h"
#include "window/filters/filter_driver.h"
#include "window/harness/window_test.h"

namespace tavrin::test {

// A window with the filters' driver, on a recording of its own.
class FilterWindowTest : public WindowTest {
protected:
    // Ten events, a minute apart from 07:00:30 UTC on, in turn of Acme-Mail, Beta and
    // MsiInstaller, with levels from 1 to 4 and the process ids from 100 on.
    static std::vector<RecordedEvent> TenEvents();

    FilterWindowTest();

    // Shows the Application log when it holds these events.
    void Show(const std::vector<RecordedEvent>& events = TenEvents());

    void Begin(const std::wstring& script = {});

    // The queries of the Application log so far; each load makes one.
    std::vector<std::wstring> Queries() const { return driver_->Queries(L"Application"); }

    std::wstring SourcesCaption() const { return TextOf(app_->controls().sourcesCaption); }

    HWND FromPicker() const { return app_->controls().fromPicker; }
    HWND ToPicker() const { return app_->controls().toPicker; }
    void Tick(HWND picker) const;
    void Untick(HWND picker) const;
    // Into a picker that is ticked.
    void Type(HWND picker, const SYSTEMTIME& time) const { driver_->TypePickerTime(picker, time); }

    const Recording logs_;
    std::unique_ptr<FilterDriver> driver_;
};

}  // namespace tavrin::test
