#pragma once

// MDX_API marks what a host links to in the module, SUPPORT_API what a host and the module link to in the support
// library. ODBOMODULE_BUILD and SUPPORT_DLL_BUILD are defined while the library of that name is built. SUPPORT_TYPE
// marks a class that derives from a class of the standard library; its functions have SUPPORT_API. Exporting the
// whole class from a DLL would also export its base class, of which the host has its own copy.
#if defined(_WIN32)
#define MDX_EXPORT __declspec(dllexport)
#define MDX_IMPORT __declspec(dllimport)
#define SUPPORT_TYPE
#else
#define MDX_EXPORT __attribute__((visibility("default")))
#define MDX_IMPORT __attribute__((visibility("default")))
#define SUPPORT_TYPE __attribute__((visibility("default")))
#endif

#if defined(ODBOMODULE_BUILD)
#define MDX_API MDX_EXPORT
#else
#define MDX_API MDX_IMPORT
#endif

#if defined(SUPPORT_DLL_BUILD)
#define SUPPORT_API MDX_EXPORT
#else
#define SUPPORT_API MDX_IMPORT
#endif

// For use around exported classes. They turn off Visual Studio's warnings about fields and bases from the standard
// library, which are safe here: host and library share one runtime.
#if defined(_MSC_VER)
#define MDX_EXPORTS_BEGIN __pragma(warning(push)) __pragma(warning(disable : 4251 4275))
#define MDX_EXPORTS_END __pragma(warning(pop))
#else
#define MDX_EXPORTS_BEGIN
#define MDX_EXPORTS_END
#endif
