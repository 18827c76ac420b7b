#include "machine.h"

#include <odbomodule/host/file.h>

#include <gtest/gtest.h>

namespace {

FileLocator in_folder(Machine const & machine, std::u16string const & name)
{
    return FileLocator(machine.fFolder.u16string() + u"/" + name);
}

TEST(File, AppendsWholeLines)
{
    Machine const machine;
    std::u16string const name = u"Z\u00fcrich \u6771\u4eac \U0001F600.txt";
    File first(in_folder(machine, name));
    File second(in_folder(machine, name));
    first.writeLine("before it is open");
    ASSERT_TRUE(first.open("a+"));
    ASSERT_TRUE(second.open("a+"));
    first.writeLine("one");
    second.writeLine(KelpString(u"zw\u00f6lf"));
    first.writeLine("\nthree");
    first.writeLine(std::string(100001, 'x').c_str());
    EXPECT_FALSE(first.open("w"));
    first.writeLine("after it was closed");
    EXPECT_EQ(text_of_file(machine.fFolder / name), "one\nzw\xC3\xB6lf\n\nthree\n" + std::string(100001, 'x') + '\n');
}

TEST(File, StartsANewLineAfterACutLine)
{
    Machine const machine;
    std::ofstream(machine.fFolder / "log.txt") << "cut";
    File file(in_folder(machine, u"log.txt"));
    ASSERT_TRUE(file.open("a+"));
    file.writeLine("one");
    std::ofstream(machine.fFolder / "log.txt", std::ios::app) << "cut again"; // by another process
    file.writeLine("two");
    file.writeLine("three");
    EXPECT_EQ(text_of_file(machine.fFolder / "log.txt"), "cut\none\ncut again\ntwo\nthree\n");
}

TEST(File, NeedsAModeANameAndAFolder)
{
    Machine const machine;
    EXPECT_FALSE(File(in_folder(machine, u"log.txt")).open(nullptr));
    EXPECT_FALSE(File(in_folder(machine, u"no/log.txt")).open("a+"));
    EXPECT_FALSE(File(in_folder(machine, u"")).open("a+"));
    EXPECT_FALSE(File(in_folder(machine, std::u16string(u"log.txt\0.bak", 12))).open("a+"));
}

TEST(File, RefusesAHardLinkInTheTemporaryFolder)
{
    Machine const machine;
    FileLocator shared("log.txt");
    EXPECT_FALSE(shared.isLocationSet());
    EXPECT_TRUE(FileLocator("../log.txt").isLocationSet());
    shared.setLocationToTemp();
    EXPECT_TRUE(File(shared).open("a+"));
    std::filesystem::create_hard_link(machine.temporary_folder() / "log.txt", machine.fFolder / "other.txt");
    EXPECT_FALSE(File(shared).open("a+"));
    EXPECT_TRUE(File(in_folder(machine, u"other.txt")).open("a+")) << "in a folder of the user's own";
}

}
