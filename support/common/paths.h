#pragma once
#include <odbomodule/host/kelp_string.h>

#include <filesystem>

// The text as a path of this system.
std::filesystem::path native_path(KelpString const & text);

// The folder for temporary files.
std::filesystem::path temporary_folder();
