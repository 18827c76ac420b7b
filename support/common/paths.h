#pragma once
#include <odbomodule/host/kelp_string.h>

#include <filesystem>

// Converts a text to a path.
std::filesystem::path native_path(KelpString const & text);

// The folder for temporary files. Empty if the system names none.
std::filesystem::path temporary_folder();
