#pragma once

#include <windows.h>
#include <winevt.h>

#include "eventlog/unique_handle.h"

namespace tavrin::eventlog {

// A handle of the event-log service.
using UniqueEvt = UniqueHandle<EVT_HANDLE, ::EvtClose>;

// A Win32 kernel object (an event here).
using UniqueKernelHandle = UniqueHandle<HANDLE, ::CloseHandle>;

}  // namespace tavrin::eventlog
