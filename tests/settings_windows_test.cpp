#include "tests/machine.h"

#include "odbomodule/host/automation.h"
#include "odbomodule/host/file.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {

TEST(SettingsRegistry, HasTextsOfTwoKinds)
{
    Machine const machine;
    ::SetEnvironmentVariableW(L"ODBOMODULE_TEST", L"D:\\a place whose name is longer than the variable's own");
    wchar_t const text[] = L"%ODBOMODULE_TEST%\\log.txt";
    std::uint64_t const number = 1;
    std::string const plain = "%ODBOMODULE_TEST%\\log.txt";
    std::tuple<DWORD, void const *, std::size_t, std::string> const rows[] = { { REG_SZ, text, sizeof text, plain },
        { REG_SZ, text, sizeof text - sizeof *text, plain }, // without its zero
        { REG_EXPAND_SZ, text, sizeof text, "D:\\a place whose name is longer than the variable's own\\log.txt" },
        { REG_SZ, nullptr, 0, "" }, { REG_MULTI_SZ, text, sizeof text, "none" }, { REG_QWORD, &number, sizeof number, "none" },
        { REG_BINARY, &number, 4, "none" } };
    for (auto const & [type, value, size, want] : rows) {
        ASSERT_EQ(::RegSetKeyValueW(HKEY_LOCAL_MACHINE, L"Software\\Log", L"Value", type, value, static_cast<DWORD>(size)), ERROR_SUCCESS);
        EXPECT_EQ(setting("Value"), want) << type;
    }
}

TEST(SettingsFiles, ArePlainAndInNobodysWay)
{
    Machine const machine;
    FileLocator const named((machine.fFolder / "log.txt").u16string());
    File file(named);
    ASSERT_TRUE(file.open("a+"));
    file.writeLine("one\ntwo\r\n");
    EXPECT_EQ(text_of(named.path(), std::ios::binary), "one\r\ntwo\r\n\r\n");
    auto const moved = machine.fFolder / "moved.txt";
    EXPECT_TRUE(::MoveFileExW(named.path().c_str(), moved.c_str(), 0)) << ::GetLastError();
    file.writeLine("three");
    EXPECT_EQ(text_of(moved), "one\ntwo\n\nthree\n");
    EXPECT_FALSE(File(FileLocator("NUL")).open("a+"));
    EXPECT_TRUE(FileLocator("C:log.txt").isLocationSet());
    EXPECT_EQ(FileLocator(std::u16string(u"\xD800.txt")).path().native(), L"\xD800.txt"); // half a character, which file systems allow
}

}
