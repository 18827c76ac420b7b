#pragma once
// A start for a host: a cube model in memory, short ways to make expressions and statements, and conditions that
// are written as C++. The library itself does not use this header. Take it as it is, derive from its structs, or
// replace it part by part. On Windows it brings the system's macros; see odbomodule/host/automation.h.
#include <odbomodule/memory_cube/condition.h>
#include <odbomodule/memory_cube/cube.h>
#include <odbomodule/memory_cube/maker.h>
