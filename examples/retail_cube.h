#pragma once
#include <odbomodule/memory_cube.h>

// The cube "[Sales]" of a retailer, with flat hierarchy names.
memory_cube::Cube retail_cube();
