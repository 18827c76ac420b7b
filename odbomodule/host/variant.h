#pragma once

// The name of OLE automation's value, without the system's headers: those define macros that would reach a host.
// What a value is made of stands in host/automation.h.
#if defined(_WIN32)
struct tagVARIANT;
using VARIANT = tagVARIANT;
#else
struct VARIANT;
#endif
