#include "machine.h"

#include <odbomodule/host/automation.h>

#include <gtest/gtest.h>

namespace {

void expect_setting(DWORD type, void const * value, std::size_t size, std::string const & want)
{
    ASSERT_EQ(::RegSetKeyValueW(HKEY_LOCAL_MACHINE, L"Software\\Log", L"Value", type, value, static_cast<DWORD>(size)), ERROR_SUCCESS);
    EXPECT_EQ(read_setting("Value"), want) << type;
}

TEST(Settings, AreTextsOfTwoKindsAndNumbers)
{
    Machine const machine;
    ::SetEnvironmentVariableW(L"ODBOMODULE_TEST", L"D:\\a place whose name is longer than the variable's own");
    wchar_t const text[] = L"%ODBOMODULE_TEST%\\log.txt";
    std::uint64_t const number = 1;
    expect_setting(REG_SZ, text, sizeof text, "%ODBOMODULE_TEST%\\log.txt");
    expect_setting(REG_SZ, text, sizeof text - sizeof *text, "%ODBOMODULE_TEST%\\log.txt"); // without its closing zero
    expect_setting(REG_EXPAND_SZ, text, sizeof text, "D:\\a place whose name is longer than the variable's own\\log.txt");
    expect_setting(REG_SZ, nullptr, 0, "");
    expect_setting(REG_MULTI_SZ, text, sizeof text, "none");
    expect_setting(REG_QWORD, &number, sizeof number, "none");
    expect_setting(REG_BINARY, &number, 4, "none");
}

}
