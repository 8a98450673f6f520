// EvtCancel and EvtClose, which accept a handle of any kind.

#include "replay/service/call.h"

#include <windows.h>
#include <winevt.h>

namespace replay::api {

using namespace calls;
using namespace service;

// Only reads can be pending on a handle. Cancelling on any other handle has no effect.
extern "C" BOOL WINAPI EvtCancel(EVT_HANDLE object) {
    const Argument arguments[] = {HandleArgument(L"Object", object)};
    return Serve(ApiFunction::kCancel, arguments, [&](Call& call) -> DWORD {
        const HandleTarget target = call.UseAny(object);
        if (!target) {
            return ERROR_INVALID_HANDLE;
        }
        if (PendingOperations* pending = target.object->Pending()) {
            pending->Cancel();
        }
        return ERROR_SUCCESS;
    });
}

extern "C" BOOL WINAPI EvtClose(EVT_HANDLE object) {
    const Argument arguments[] = {HandleArgument(L"Object", object)};
    return Serve(ApiFunction::kClose, arguments, [&](Call& call) -> DWORD {
        Service& service = Service::Get();
        if (service.handles.Close(object, call.Id())) {
            return ERROR_SUCCESS;
        }
        service.WriteReport();
        return ERROR_INVALID_HANDLE;
    });
}

}  // namespace replay::api
