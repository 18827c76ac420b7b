#include "machine.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

struct Machine::Rest {
    // The variables that name the folders of settings and of temporary files.
    std::map<std::string, std::optional<std::string>> old;
    fs::path oldFolder = fs::current_path();
    std::string lines;

    void set(char const * name, fs::path const & folder)
    {
        char const * const value = std::getenv(name);
        old[name] = value == nullptr ? std::nullopt : std::optional<std::string>(value);
        fs::create_directory(folder);
        ::setenv(name, folder.c_str(), 1);
    }
    ~Rest()
    {
        for (auto const & [name, value] : old)
            if (value)
                ::setenv(name.c_str(), value->c_str(), 1);
            else
                ::unsetenv(name.c_str());
        fs::current_path(oldFolder);
    }
};

Machine::Machine() : fRest(std::make_unique<Rest>())
{
    std::string pattern = (fs::temp_directory_path() / "machine-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("no folder for the test");
    fFolder = pattern;
    fRest->set("XDG_CONFIG_HOME", fFolder / "settings");
    fRest->set("HOME", fFolder / "home");
    fRest->set("TMPDIR", temporary_folder());
    clear_settings();
}

Machine::~Machine()
{
    fRest.reset();
    fs::remove_all(fFolder);
}

static void add_line(fs::path const & folder, std::string const & line)
{
    fs::create_directories(folder / "settings/odbomodule");
    std::ofstream(folder / "settings/odbomodule/registry.reg", std::ios::app) << line;
}

static std::string quoted(std::string const & text)
{
    std::string result = "\"";
    for (char const character : text) {
        if (character == '"' || character == '\\')
            result += '\\';
        result += character;
    }
    return result + '"';
}

void Machine::set(std::string const & key, std::string const & name, std::string const & text)
{
    add_line(fFolder, "[HKEY_LOCAL_MACHINE\\" + key + "]\n" + quoted(name) + "=" + quoted(text) + "\n");
}

void Machine::set(std::string const & key, std::string const & name, std::uint32_t number)
{
    char digits[9];
    std::snprintf(digits, sizeof digits, "%08x", number);
    add_line(fFolder, "[HKEY_LOCAL_MACHINE\\" + key + "]\n" + quoted(name) + "=dword:" + digits + "\n");
}

void Machine::clear_settings()
{
    fs::remove_all(fFolder / "settings/odbomodule");
}

bool run_processes(int count, std::function<bool(int)> const & work)
{
    std::vector<pid_t> children;
    for (int child = 0; child < count; ++child) {
        children.push_back(::fork());
        if (children.back() == 0)
            ::_exit(work(child) ? 0 : 1);
    }
    bool done = true;
    for (pid_t const child : children) {
        int status = -1;
        done = child > 0 && ::waitpid(child, &status, 0) == child && status == 0 && done;
    }
    return done;
}

std::string text_of(fs::path const & file)
{
    return bytes_of(file);
}

std::string bytes_of(fs::path const & file)
{
    std::ostringstream bytes;
    bytes << std::ifstream(file, std::ios::binary).rdbuf();
    return bytes.str();
}
