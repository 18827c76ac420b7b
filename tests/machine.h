#pragma once
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

// A machine for one test: with settings, a folder for temporary files and an empty folder of its own. All is as before
// at the end. In a process that run_processes started, the machine of the process that started it.
class Machine {
public:
    Machine();
    ~Machine();
    Machine(Machine const &) = delete;
    Machine & operator=(Machine const &) = delete;

    std::filesystem::path const & folder() const { return fFolder; }
    // Where the library puts temporary files.
    std::filesystem::path temporary_folder() const { return fFolder / "temporary"; }

    // Puts a setting under a key of the local machine; all in UTF-8.
    void set(std::string const & key, std::string const & name, std::string const & text);
    void set(std::string const & key, std::string const & name, std::uint32_t number);
    void clear_settings();

private:
    struct Rest; // what a system needs besides
    std::filesystem::path fFolder;
    std::unique_ptr<Rest> fRest;
};

// The file's text, each line ended by "\n" alone, and its bytes as they are.
std::string text_of(std::filesystem::path const & file);
std::string bytes_of(std::filesystem::path const & file);

// Runs `work` in several processes at once, with a number from 0 on. True when it returned true in all of them. To be
// called once by a test whose Machine exists, with nothing before that a second run of it could disturb.
bool run_processes(int count, std::function<bool(int)> const & work);
