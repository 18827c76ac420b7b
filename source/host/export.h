#pragma once

// MDX_API stands on what a host links to in the module, SUPPORT_API on what the module and the host link to in the
// support library. ODBOMODULE_BUILD and SUPPORT_DLL_BUILD are defined while that library itself is built.
// SUPPORT_TYPE stands on a class that derives from one of the standard library, and SUPPORT_API then on its
// functions: if a DLL exported the whole class, it would export the standard library's too, of which a host has its
// own.
#if defined(_WIN32)
#define MDX_EXPORT __declspec(dllexport)
#define MDX_IMPORT __declspec(dllimport)
#define SUPPORT_TYPE
#elif defined(__GNUC__) // and clang
#define MDX_EXPORT __attribute__((visibility("default")))
#define MDX_IMPORT __attribute__((visibility("default")))
#define SUPPORT_TYPE __attribute__((visibility("default")))
#else
#define MDX_EXPORT
#define MDX_IMPORT
#define SUPPORT_TYPE
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
