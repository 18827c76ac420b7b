#pragma once

// Declares VARIANT, the value of OLE automation, without the system's headers and their macros. automation.h has
// its fields.
#if defined(_WIN32)
struct tagVARIANT;
using VARIANT = tagVARIANT;
#else
struct VARIANT;
#endif
