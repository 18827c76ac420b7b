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

#elif defined(__GNUC__)

__attribute__((constructor)) static void process_attach()
{
    gCoreLog = support_dll::getLogObject();
}

#else
#error "This compiler needs a way of its own to have a function called when the library is loaded."
#endif
