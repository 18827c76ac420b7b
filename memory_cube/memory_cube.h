#pragma once
// A start for a host: a cube model in memory, short ways to make expressions and statements, and conditions that
// are written with C++ operators. The library itself does not use these headers. Use them as they are, derive from
// the structs, or replace them one by one. On Windows, condition.h and conditions.h include <windows.h>; see
// odbomodule/host/automation.h.
#include <odbomodule/memory_cube/conditions.h>
#include <odbomodule/memory_cube/cube.h>
#include <odbomodule/memory_cube/maker.h>
#include <odbomodule/memory_cube/statements.h>
