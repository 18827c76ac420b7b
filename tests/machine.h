#pragma once
#include <odbomodule/host/registry.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>

// A machine for one test: no settings at first, and a new folder, which has a folder for temporary files in it. The destructor
// restores the process's folder for temporary files. On Linux it does not restore the real settings: no test may read them.
struct Machine {
    std::filesystem::path const fTemporaryBefore = std::filesystem::temp_directory_path();
    std::filesystem::path const fFolder = fTemporaryBefore / ("machine-" + std::to_string(std::random_device()()));

    Machine();
    ~Machine();

    // The folder for temporary files.
    std::filesystem::path temporary_folder() const { return fFolder / "temporary"; }

    // Writes a setting under a key of the local machine. All texts are UTF-8.
    void write_setting(std::string const & key, std::string const & name, std::string const & text);
    void write_setting(std::string const & key, std::string const & name, std::uint32_t number);
};

// The setting as the library reads it: its text in UTF-8, "true" or "false" for a number, "none" if it is missing.
inline std::string read_setting(
    KelpString const & name, KelpString const & key = "Software\\Log", RegistryWrapper::RootKey root = RegistryWrapper::LocalMachine)
{
    KelpString text("none"); // unchanged if no text is found
    bool on = false;
    bool const isText = RegistryWrapper::readRegKeyValue(root, key, name, text);
    bool const isNumber = RegistryWrapper::readRegKeyValue(root, key, name, on);
    if (isNumber)
        return isText ? "both" : on ? "true" : "false";
    return text.toUTF8();
}

// The file's text, in which each line ends in "\n". With std::ios::binary, its bytes.
inline std::string text_of_file(std::filesystem::path const & path, std::ios::openmode mode = std::ios::in)
{
    std::ostringstream text;
    text << std::ifstream(path, mode).rdbuf();
    return text.str();
}
