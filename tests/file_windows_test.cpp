#include "machine.h"

#include <odbomodule/host/automation.h>
#include <odbomodule/host/file.h>

#include <gtest/gtest.h>

namespace {

TEST(File, EndsEachLineAsWindowsDoes)
{
    Machine const machine;
    FileLocator const place((machine.fFolder / "log.txt").u16string());
    File file(place);
    ASSERT_TRUE(file.open("a+"));
    file.writeLine("one\ntwo\r\n");
    EXPECT_EQ(text_of_file(place.path(), std::ios::binary), "one\r\ntwo\r\n\r\n");
}

TEST(File, CanBeMovedAndLockedWhileItIsOpen)
{
    Machine const machine;
    FileLocator const place((machine.fFolder / "log.txt").u16string());
    File file(place);
    ASSERT_TRUE(file.open("a+"));
    std::filesystem::path const moved = machine.fFolder / "moved.txt";
    EXPECT_TRUE(::MoveFileExW(place.path().c_str(), moved.c_str(), 0)) << ::GetLastError();
    HANDLE const other = ::CreateFileW(moved.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_TRUE(::LockFile(other, 0, MAXLONG, 1, 0)) << "the lock of a writer that hangs";
    file.writeLine("three");
    ::CloseHandle(other);
    EXPECT_EQ(text_of_file(moved), "three\n");
}

TEST(File, RefusesADevice)
{
    EXPECT_FALSE(File(FileLocator("NUL")).open("a+"));
}

TEST(FileLocator, HasNoPathWithoutATemporaryFolder)
{
    Machine const machine;
    ::SetEnvironmentVariableW(L"TMP", std::wstring(300, L'x').c_str()); // too long for the system
    FileLocator locator("log.txt");
    locator.setLocationToTemp();
    EXPECT_EQ(locator.path(), "");
    EXPECT_FALSE(File(locator).open("a+"));
}

TEST(FileLocator, TakesAnyName)
{
    EXPECT_TRUE(FileLocator("C:log.txt").isLocationSet());
    EXPECT_EQ(FileLocator(std::u16string(u"\xD800.txt")).path().native(), L"\xD800.txt"); // file systems allow lone surrogates
}

}
