#include "library_entry.h"

#include "../host/core_log.h"

CoreLog * gCoreLog = nullptr;

#if defined(_WIN32)

#include "../host/automation.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID)
{
    if (reason == DLL_PROCESS_ATTACH)
        gCoreLog = support_dll::getLogObject();
    return TRUE;
}

#else

__attribute__((constructor)) static void process_attach()
{
    gCoreLog = support_dll::getLogObject();
}

#endif
