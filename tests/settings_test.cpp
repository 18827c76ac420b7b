#include "tests/machine.h"

#include "odbomodule/host/file.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

struct Settings : testing::Test, Machine {
    FileLocator place(std::u16string const & name) const { return FileLocator(fFolder.u16string() + u"/" + name); }
};

TEST_F(Settings, ValuesHaveATypeAndAKey)
{
    set("Software\\Log", "Text", "C:\\\\a \"b\"\\Z\u00fcrich \U0001F600.txt");
    set("Software\\Log", "Z\u00fcrich", std::string(2000, 'x'));
    set("Software\\Log", "On", 0x80000000u);
    set("Software\\Log", "Off", 0u);
    EXPECT_EQ(setting("tEXT", "sOFTWARE\\lOG"), "C:\\\\a \"b\"\\Z\u00fcrich \U0001F600.txt");
    EXPECT_EQ(setting(std::u16string(u"Z\u00fcrich")), std::string(2000, 'x'));
    EXPECT_EQ(setting("On"), "true");
    EXPECT_EQ(setting("Off"), "false");
    EXPECT_EQ(setting(std::u16string(u"On\0x", 4)), "none");
    EXPECT_EQ(setting("On", "Software"), "none");
    EXPECT_EQ(setting("On", "Software\\Log", RegistryWrapper::RootKey(2)), "none");
}

TEST_F(Settings, FilesGrowAtTheirEnd)
{
    std::u16string const name = u"Z\u00fcrich \u6771\u4eac \U0001F600.txt";
    File first(place(name)), second(place(name));
    first.writeLine("before it is open");
    ASSERT_TRUE(first.open("a+") && second.open("a+"));
    first.writeLine("one");
    second.writeLine(KelpString(u"zw\u00f6lf"));
    first.writeLine("\nthree");
    EXPECT_EQ(text_of(fFolder / name), "one\nzw\xC3\xB6lf\n\nthree\n");
    EXPECT_FALSE(File(place(u"log.txt")).open("w"));
    for (auto const & none : { place(u"no/log.txt"), place(u""), place({ u"log.txt\0.bak", 12 }) })
        EXPECT_FALSE(File(none).open("a+")) << none.path();
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
    EXPECT_TRUE(File(place(u"other.txt")).open("a+")) << "at a place of one's own";
}

// Here of two threads: a system keeps two open files of one process apart as it does those of two.
TEST_F(Settings, LinesOfTwoWritersDoNotMix)
{
    auto const write = [this](char character) {
        File file(place(u"log.txt"));
        file.open("a+");
        for (int n = 0; n < 300; ++n)
            file.writeLine(std::string(20000, character).c_str()); // more than one page
    };
    std::thread other(write, 'a');
    write('b');
    other.join();
    std::istringstream text(text_of(fFolder / "log.txt"));
    int whole = 0;
    for (std::string line; std::getline(text, line);)
        whole += line == std::string(20000, 'a') || line == std::string(20000, 'b');
    EXPECT_EQ(whole, 600);
}

}
