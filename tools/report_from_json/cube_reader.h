#pragma once
#include "json_place.h"
#include <odbomodule/memory_cube.h>

// The cube that a report file describes.
memory_cube::Cube read_cube(Place const & place);
