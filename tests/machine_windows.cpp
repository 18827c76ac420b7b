#include "machine.h"

#include "host/automation.h"
#include "host/kelp_string.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace fs = std::filesystem;

namespace {

// Tell a process that run_processes started its number and the folder of its machine.
wchar_t const kChild[] = L"ODBOMODULE_TEST_CHILD";
wchar_t const kFolder[] = L"ODBOMODULE_TEST_FOLDER";

std::wstring variable(wchar_t const * name)
{
    std::wstring value(32767, L'\0');
    value.resize(::GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size())));
    return value;
}

std::wstring wide(std::string const & text)
{
    auto const plain = KelpString::fromUTF8(text);
    auto const begin = ole_characters(plain.data());
    return std::wstring(begin, begin + plain.size());
}

void expect_success(LSTATUS status)
{
    if (status != ERROR_SUCCESS)
        throw std::runtime_error("the registry failed with " + std::to_string(status));
}

void put(std::string const & key, std::string const & name, DWORD type, void const * value, std::size_t size)
{
    expect_success(::RegSetKeyValueW(HKEY_LOCAL_MACHINE, wide(key).c_str(), wide(name).c_str(), type, value, static_cast<DWORD>(size)));
}

}

// The local machine is, for this process, a key of the user's: no rights are needed, and tests may run side by side.
struct Machine::Rest {
    bool owner = variable(kChild).empty();
    std::wstring key;
    HKEY localMachine = nullptr;
    std::wstring oldTemporaryFolder = variable(L"TMP");
};

Machine::Machine() : fRest(std::make_unique<Rest>())
{
    fFolder = fRest->owner ? fs::temp_directory_path() / ("machine-" + std::to_string(::GetCurrentProcessId())) : fs::path(variable(kFolder));
    fs::create_directories(temporary_folder());
    fRest->key = L"Software\\odbomodule tests\\" + fFolder.filename().wstring();
    expect_success(::RegCreateKeyExW(HKEY_CURRENT_USER, fRest->key.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &fRest->localMachine, nullptr));
    expect_success(::RegOverridePredefKey(HKEY_LOCAL_MACHINE, fRest->localMachine));
    ::SetEnvironmentVariableW(L"TMP", temporary_folder().c_str());
}

Machine::~Machine()
{
    ::RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    ::RegCloseKey(fRest->localMachine);
    ::SetEnvironmentVariableW(L"TMP", fRest->oldTemporaryFolder.c_str());
    if (!fRest->owner)
        return;
    ::RegDeleteTreeW(HKEY_CURRENT_USER, fRest->key.c_str());
    fs::remove_all(fFolder);
}

void Machine::set(std::string const & key, std::string const & name, std::string const & text)
{
    std::wstring const value = wide(text);
    put(key, name, REG_SZ, value.c_str(), (value.size() + 1) * sizeof(wchar_t));
}

void Machine::set(std::string const & key, std::string const & name, std::uint32_t number)
{
    put(key, name, REG_DWORD, &number, sizeof number);
}

void Machine::clear_settings()
{
    ::RegDeleteTreeW(fRest->localMachine, nullptr);
}

// Without a fork, the same test is started again; there this function does the work and ends the process.
bool run_processes(int count, std::function<bool(int)> const & work)
{
    if (auto const child = variable(kChild); !child.empty())
        ::ExitProcess(work(std::stoi(child)) ? 0 : 1);

    auto const * const test = testing::UnitTest::GetInstance()->current_test_info();
    std::wstring program(MAX_PATH, L'\0');
    program.resize(::GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())));
    std::wstring const command = L"\"" + program + L"\" --gtest_filter=" + wide(std::string(test->test_suite_name()) + "." + test->name());
    ::SetEnvironmentVariableW(kFolder, fs::path(variable(L"TMP")).parent_path().c_str());

    std::vector<HANDLE> children;
    bool done = true;
    for (int child = 0; child < count; ++child) {
        ::SetEnvironmentVariableW(kChild, std::to_wstring(child).c_str());
        STARTUPINFOW start{};
        start.cb = sizeof start;
        PROCESS_INFORMATION process{};
        auto line = command;
        if (::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process)) {
            ::CloseHandle(process.hThread);
            children.push_back(process.hProcess);
        } else {
            done = false;
        }
    }
    ::SetEnvironmentVariableW(kChild, nullptr);
    for (HANDLE const child : children) {
        DWORD code = 1;
        done = ::WaitForSingleObject(child, INFINITE) == WAIT_OBJECT_0 && ::GetExitCodeProcess(child, &code) && code == 0 && done;
        ::CloseHandle(child);
    }
    return done;
}

std::string text_of(fs::path const & file)
{
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

std::string bytes_of(fs::path const & file)
{
    std::ostringstream bytes;
    bytes << std::ifstream(file, std::ios::binary).rdbuf();
    return bytes.str();
}
