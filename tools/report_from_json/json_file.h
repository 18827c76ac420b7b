#pragma once
#include "json_place.h"

#include <string>

// Reads a JSON file. Throws a Fault if the file cannot be read, is not JSON, has a key twice in one object, or is
// nested too deeply.
Place::Json read_json(std::string const & path);
