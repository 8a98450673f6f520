// What can be done with every handle.

#include "replay/service/call.h"

#include <windows.h>
#include <winevt.h>

namespace replay::api {

using namespace calls;
using namespace service;

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
