#pragma once

// Declares VARIANT, the value of OLE automation, without the system's headers: their macros would reach a host. Its
// fields stand in odbomodule/host/automation.h.
#if defined(_WIN32)
struct tagVARIANT;
using VARIANT = tagVARIANT;
#else
struct VARIANT;
#endif
