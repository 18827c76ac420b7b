#pragma once

// MDX_API stands on what a host links to in the module, SUPPORT_API on what the module and the host link
// to in the support library. Each library defines its own ..._BUILD macro while it is being built.
// SUPPORT_TYPE stands on a class whose functions are marked one by one: exported whole from a DLL, it would
// export the class of the standard library that it derives from as well, which hosts have for themselves.
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
