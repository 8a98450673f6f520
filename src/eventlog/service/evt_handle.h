#pragma once

#include <windows.h>
#include <winevt.h>

#include "base/unique_handle.h"

namespace tavrin::eventlog {

// A handle of the event-log service.
using UniqueEvt = base::UniqueHandle<EVT_HANDLE, ::EvtClose>;

// A Win32 kernel object (an event here).
using UniqueKernelHandle = base::UniqueHandle<HANDLE, ::CloseHandle>;

}  // namespace tavrin::eventlog
