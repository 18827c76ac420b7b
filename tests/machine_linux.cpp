#include "machine.h"

#include <cstdlib>
#include <iomanip>

Machine::Machine()
{
    for (char const * const folder : { "temporary", "settings/odbomodule", "home/.config/odbomodule" })
        std::filesystem::create_directories(fFolder / folder);
    ::setenv("XDG_CONFIG_HOME", (fFolder / "settings").c_str(), 1);
    ::setenv("HOME", (fFolder / "home").c_str(), 1);
    ::setenv("TMPDIR", temporary_folder().c_str(), 1);
}

Machine::~Machine()
{
    ::setenv("TMPDIR", fTemporaryBefore.c_str(), 1);
    std::filesystem::remove_all(fFolder);
}

// Writes the key and the name. The caller writes the value.
static std::ofstream begin_setting(Machine const & machine, std::string const & key, std::string const & name)
{
    std::ofstream file(machine.fFolder / "settings/odbomodule/registry.reg", std::ios::app);
    file << "[HKEY_LOCAL_MACHINE\\" << key << "]\n" << std::quoted(name) << '=';
    return file;
}

void Machine::write_setting(std::string const & key, std::string const & name, std::string const & text)
{
    begin_setting(*this, key, name) << std::quoted(text) << '\n';
}

void Machine::write_setting(std::string const & key, std::string const & name, std::uint32_t number)
{
    begin_setting(*this, key, name) << "dword:" << std::hex << number << '\n';
}
