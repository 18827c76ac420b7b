#include "machine.h"

#include <odbomodule/host/automation.h>

#include <stdexcept>

static std::wstring wide(std::string const & text)
{
    return std::filesystem::path(std::u8string(text.begin(), text.end())).wstring();
}

// In this process a key of the user replaces HKEY_LOCAL_MACHINE, so tests need no administrator and can run in parallel.
static std::wstring local_machine(std::filesystem::path const & folder)
{
    return L"Software\\odbomodule tests\\" + folder.filename().wstring();
}

Machine::Machine()
{
    HKEY key = nullptr;
    if (::RegCreateKeyW(HKEY_CURRENT_USER, local_machine(fFolder).c_str(), &key) != ERROR_SUCCESS ||
        ::RegOverridePredefKey(HKEY_LOCAL_MACHINE, key) != ERROR_SUCCESS)
        throw std::runtime_error("no registry for a test");
    ::RegCloseKey(key);
    std::filesystem::create_directories(temporary_folder());
    ::SetEnvironmentVariableW(L"TMP", temporary_folder().c_str());
}

Machine::~Machine()
{
    ::SetEnvironmentVariableW(L"TMP", fTemporaryBefore.c_str());
    ::RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    ::RegDeleteTreeW(HKEY_CURRENT_USER, local_machine(fFolder).c_str());
    std::filesystem::remove_all(fFolder);
}

static void write_value(std::string const & key, std::string const & name, DWORD type, void const * value, std::size_t size)
{
    ::RegSetKeyValueW(HKEY_LOCAL_MACHINE, wide(key).c_str(), wide(name).c_str(), type, value, static_cast<DWORD>(size));
}

void Machine::write_setting(std::string const & key, std::string const & name, std::string const & text)
{
    std::wstring const value = wide(text);
    write_value(key, name, REG_SZ, value.c_str(), (value.size() + 1) * sizeof(wchar_t)); // with its closing zero
}

void Machine::write_setting(std::string const & key, std::string const & name, std::uint32_t number)
{
    write_value(key, name, REG_DWORD, &number, sizeof number);
}
