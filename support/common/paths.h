#pragma once
#include <odbomodule/host/kelp_string.h>

#include <filesystem>

// Converts a text to a path.
std::filesystem::path native_path(KelpString const & text);

// The folder for temporary files.
std::filesystem::path temporary_folder();
