// Writes the final report when the process ends.

#include "replay/service/service.h"

#include <windows.h>

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
    if (reason != DLL_PROCESS_DETACH) {
        return TRUE;
    }
    if (replay::service::Service* service = replay::service::ServiceIfStarted()) {
        service->WriteLastReport();
    }
    return TRUE;
}
