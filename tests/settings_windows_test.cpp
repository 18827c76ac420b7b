#include "machine.h"

#include <odbomodule/host/automation.h>
#include <odbomodule/host/file.h>

#include <gtest/gtest.h>

namespace {

void expect_setting(DWORD type, void const * value, std::size_t size, std::string const & want)
{
    ASSERT_EQ(::RegSetKeyValueW(HKEY_LOCAL_MACHINE, L"Software\\Log", L"Value", type, value, static_cast<DWORD>(size)), ERROR_SUCCESS);
    EXPECT_EQ(read_setting("Value"), want) << type;
}

TEST(SettingsRegistry, HasTextsOfTwoKinds)
{
    Machine const machine;
    ::SetEnvironmentVariableW(L"ODBOMODULE_TEST", L"D:\\a place whose name is longer than the variable's own");
    wchar_t const text[] = L"%ODBOMODULE_TEST%\\log.txt";
    std::uint64_t const number = 1;
    expect_setting(REG_SZ, text, sizeof text, "%ODBOMODULE_TEST%\\log.txt");
    expect_setting(REG_SZ, text, sizeof text - sizeof *text, "%ODBOMODULE_TEST%\\log.txt"); // without its zero
    expect_setting(REG_EXPAND_SZ, text, sizeof text, "D:\\a place whose name is longer than the variable's own\\log.txt");
    expect_setting(REG_SZ, nullptr, 0, "");
    expect_setting(REG_MULTI_SZ, text, sizeof text, "none");
    expect_setting(REG_QWORD, &number, sizeof number, "none");
    expect_setting(REG_BINARY, &number, 4, "none");
}

TEST(SettingsFiles, ArePlainAndInNobodysWay)
{
    Machine const machine;
    FileLocator const named((machine.fFolder / "log.txt").u16string());
    File file(named);
    ASSERT_TRUE(file.open("a+"));
    file.writeLine("one\ntwo\r\n");
    EXPECT_EQ(text_of_file(named.path(), std::ios::binary), "one\r\ntwo\r\n\r\n");
    std::filesystem::path const moved = machine.fFolder / "moved.txt";
    EXPECT_TRUE(::MoveFileExW(named.path().c_str(), moved.c_str(), 0)) << ::GetLastError();
    HANDLE const other = ::CreateFileW(moved.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_TRUE(::LockFile(other, 0, MAXLONG, 1, 0)) << "the lock of a writer that hangs";
    file.writeLine("three");
    ::CloseHandle(other);
    EXPECT_EQ(text_of_file(moved), "one\ntwo\n\nthree\n");
    EXPECT_FALSE(File(FileLocator("NUL")).open("a+"));
    EXPECT_TRUE(FileLocator("C:log.txt").isLocationSet());
    EXPECT_EQ(FileLocator(std::u16string(u"\xD800.txt")).path().native(), L"\xD800.txt"); // half a character, which file systems allow
}

}
