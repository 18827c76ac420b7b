#pragma once
// A starting point for hosts: an in-memory cube model, shortcuts for making expressions and statements, and
// conditions written with C++ operators. The library itself does not use these headers. Use them as they are,
// derive from the structs, or replace them one by one. On Windows, condition.h and conditions.h include
// <windows.h>; see odbomodule/host/automation.h.
#include <odbomodule/memory_cube/conditions.h>
#include <odbomodule/memory_cube/cube.h>
#include <odbomodule/memory_cube/maker.h>
#include <odbomodule/memory_cube/statements.h>
