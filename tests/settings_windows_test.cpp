#include "machine.h"

#include "host/automation.h"
#include "host/file.h"
#include "host/registry.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace fs = std::filesystem;

namespace {

TEST(SettingsRegistry, VariablesInATextArePutIn)
{
    Machine const machine;
    auto const put = [](DWORD type, void const * value, DWORD size) {
        ASSERT_EQ(::RegSetKeyValueW(HKEY_LOCAL_MACHINE, L"Software\\Log", L"Value", type, value, size), ERROR_SUCCESS);
    };
    KelpString text;
    bool on = false;
    auto const read_text = [&] { return RegistryWrapper::readRegKeyValue(RegistryWrapper::LocalMachine, "Software\\Log", "Value", text); };
    ::SetEnvironmentVariableW(L"ODBOMODULE_TEST", L"D:\\a place whose name is longer than the variable's own");
    wchar_t const value[] = L"%ODBOMODULE_TEST%\\log.txt";
    put(REG_EXPAND_SZ, value, sizeof value);
    EXPECT_TRUE(read_text());
    EXPECT_EQ(text.toUTF8(), "D:\\a place whose name is longer than the variable's own\\log.txt");
    put(REG_SZ, value, sizeof value);
    EXPECT_TRUE(read_text());
    EXPECT_EQ(text.toUTF8(), "%ODBOMODULE_TEST%\\log.txt");

    put(REG_SZ, value, sizeof value - sizeof *value); // a text without its zero
    EXPECT_TRUE(read_text());
    EXPECT_EQ(text.toUTF8(), "%ODBOMODULE_TEST%\\log.txt");
    put(REG_SZ, nullptr, 0);
    EXPECT_TRUE(read_text());
    EXPECT_EQ(text.toUTF8(), "");

    put(REG_MULTI_SZ, value, sizeof value);
    EXPECT_FALSE(read_text());
    std::uint64_t const number = 1;
    put(REG_QWORD, &number, sizeof number);
    EXPECT_FALSE(RegistryWrapper::readRegKeyValue(RegistryWrapper::LocalMachine, "Software\\Log", "Value", on));
    put(REG_BINARY, &number, 4);
    EXPECT_FALSE(RegistryWrapper::readRegKeyValue(RegistryWrapper::LocalMachine, "Software\\Log", "Value", on));
}

TEST(SettingsFiles, AnOpenFileStandsInNobodysWay)
{
    Machine const machine;
    fs::path const path = machine.folder() / "log.txt";
    File file{ FileLocator(KelpString(path.u16string())) };
    ASSERT_TRUE(file.open("a+"));
    file.writeLine("one");
    EXPECT_EQ(text_of(path), "one\n");
    fs::path const moved = machine.folder() / "moved.txt";
    EXPECT_TRUE(::MoveFileExW(path.c_str(), moved.c_str(), 0)) << ::GetLastError();
    file.writeLine("two");
    EXPECT_EQ(text_of(moved), "one\ntwo\n");
}

TEST(SettingsFiles, PathsAreSixteenBitsThroughout)
{
    KelpString const odd(u"C:\\Z\u00fcrich\\\xD800.txt"); // half a character, which file systems allow
    EXPECT_EQ(FileLocator(odd).path().native(), L"C:\\Z\u00fcrich\\\xD800.txt");
    EXPECT_TRUE(FileLocator("C:log.txt").isLocationSet());
    EXPECT_FALSE(FileLocator("log.txt").isLocationSet());
}

TEST(SettingsFiles, LinksInTheTemporaryFolderAreNotFollowed)
{
    Machine const machine;
    FileLocator locator("log.txt");
    locator.setLocationToTemp();
    {
        File file(locator);
        ASSERT_TRUE(file.open("a+"));
        file.writeLine("mine");
    }
    ASSERT_TRUE(::CreateHardLinkW((machine.folder() / "other.txt").c_str(), locator.path().c_str(), nullptr));
    EXPECT_FALSE(File(locator).open("a+"));
    EXPECT_TRUE(File{ FileLocator(KelpString(locator.path().u16string())) }.open("a+")) << "a place of its own";
    EXPECT_FALSE(File{ FileLocator(KelpString(machine.folder().u16string())) }.open("a+")) << "a folder";
}

}
