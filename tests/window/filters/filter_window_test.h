#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/recording.h"
#include "window/filters/filter_driver.h"
#include "window/harness/window_test.h"

namespace tavrin::test {

// A window test with a FilterDriver and a recording.
class FilterWindowTest : public WindowTest {
protected:
    // Ten events at one-minute intervals from 07:00:30 UTC on. The providers Acme-Mail, Beta and
    // MsiInstaller and the levels 1 to 4 alternate; the process ids count up from 100.
    static std::vector<RecordedEvent> TenEvents();

    FilterWindowTest();

    // Starts the program and shows an Application log with these events.
    void Show(const std::vector<RecordedEvent>& events = TenEvents());

    void Begin(const std::wstring& script = {});

    // The queries of the Application log so far, one per load.
    std::vector<std::wstring> Queries() const { return driver_->Queries(L"Application"); }

    std::wstring SourcesCaption() const { return TextOf(app_->controls().sourcesCaption); }

    HWND FromPicker() const { return app_->controls().fromPicker; }
    HWND ToPicker() const { return app_->controls().toPicker; }
    void Tick(HWND picker) const;
    void Untick(HWND picker) const;
    // Types a time into a ticked picker.
    void Type(HWND picker, const SYSTEMTIME& time) const { driver_->TypePickerTime(picker, time); }

    const Recording logs_;
    std::unique_ptr<FilterDriver> driver_;
};

}  // namespace tavrin::test
