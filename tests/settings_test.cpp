#include "machine.h"

#include <odbomodule/host/file.h>

#include <gtest/gtest.h>

#include <thread>

namespace {

struct Settings : testing::Test, Machine {
    FileLocator in_folder(std::u16string const & name) const { return FileLocator(fFolder.u16string() + u"/" + name); }
};

TEST_F(Settings, ValuesHaveATypeAndAKey)
{
    write_setting("Software\\Log", "Text", "C:\\\\a \"b\"\\Z\u00fcrich \U0001F600.txt");
    write_setting("Software\\Log", "Z\u00fcrich", std::string(2000, 'x'));
    write_setting("Software\\Log", "On", 0x80000000u);
    write_setting("Software\\Log", "Off", 0u);
    EXPECT_EQ(read_setting("tEXT", "sOFTWARE\\lOG"), "C:\\\\a \"b\"\\Z\u00fcrich \U0001F600.txt");
    EXPECT_EQ(read_setting(std::u16string(u"Z\u00fcrich")), std::string(2000, 'x'));
    EXPECT_EQ(read_setting("On"), "true");
    EXPECT_EQ(read_setting("Off"), "false");
    EXPECT_EQ(read_setting(std::u16string(u"On\0x", 4)), "none");
    EXPECT_EQ(read_setting("On", "Software"), "none");
    EXPECT_EQ(read_setting("On", "Software\\Log", RegistryWrapper::RootKey(2)), "none");
}

TEST_F(Settings, FilesGrowAtTheirEnd)
{
    std::u16string const name = u"Z\u00fcrich \u6771\u4eac \U0001F600.txt";
    File first(in_folder(name));
    File second(in_folder(name));
    first.writeLine("before it is open");
    ASSERT_TRUE(first.open("a+"));
    ASSERT_TRUE(second.open("a+"));
    first.writeLine("one");
    second.writeLine(KelpString(u"zw\u00f6lf"));
    first.writeLine("\nthree");
    first.writeLine(std::string(100001, 'x').c_str());
    EXPECT_FALSE(first.open("w"));
    first.writeLine("after it was closed");
    EXPECT_EQ(text_of_file(fFolder / name), "one\nzw\xC3\xB6lf\n\nthree\n" + std::string(100001, 'x') + '\n');
}

TEST_F(Settings, FilesNeedAModeAndAName)
{
    EXPECT_FALSE(File(in_folder(u"log.txt")).open(nullptr));
    EXPECT_FALSE(File(in_folder(u"no/log.txt")).open("a+"));
    EXPECT_FALSE(File(in_folder(u"")).open("a+"));
    EXPECT_FALSE(File(in_folder(std::u16string(u"log.txt\0.bak", 12))).open("a+"));
}

TEST_F(Settings, TemporaryFolderIsNotTrusted)
{
    EXPECT_TRUE(FileLocator("../log.txt").isLocationSet());
    FileLocator shared("log.txt");
    EXPECT_FALSE(shared.isLocationSet());
    shared.setLocationToTemp();
    EXPECT_TRUE(File(shared).open("a+"));
    std::filesystem::create_hard_link(temporary_folder() / "log.txt", fFolder / "other.txt");
    EXPECT_FALSE(File(shared).open("a+")) << "a file with two names";
    EXPECT_TRUE(File(in_folder(u"other.txt")).open("a+")) << "at a place of one's own";
}

// Here of two threads: a system keeps two open files of one process apart as it does those of two.
TEST_F(Settings, LinesOfTwoWritersDoNotMix)
{
    std::size_t const length = 20000; // more than one page
    auto const write_lines = [&](char character) {
        File file(in_folder(u"log.txt"));
        file.open("a+");
        for (int n = 0; n < 300; ++n)
            file.writeLine(std::string(length, character).c_str());
    };
    std::thread other(write_lines, 'a');
    write_lines('b');
    other.join();
    std::istringstream text(text_of_file(fFolder / "log.txt"));
    int whole = 0;
    for (std::string line; std::getline(text, line);)
        whole += line == std::string(length, 'a') || line == std::string(length, 'b');
    EXPECT_EQ(whole, 600);
}

}
