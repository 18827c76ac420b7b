#include "machine.h"

#include "host/file.h"
#include "host/registry.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>

namespace fs = std::filesystem;

namespace {

class Settings : public testing::Test {
protected:
    KelpString path(std::u16string const & name) const { return machine.folder().u16string() + u"/" + name; }

    Machine machine;
};

#if defined(_WIN32)
std::string const kLineEnd = "\r\n";
char const kDevice[] = "NUL";
#else
std::string const kLineEnd = "\n";
char const kDevice[] = "/dev/null";
#endif

TEST_F(Settings, ValuesHaveATypeAndAKey)
{
    KelpString const key("Software\\Quarry Lane\\Log");
    KelpString text("unset");
    bool on = true;
    auto const read_text = [&](char const * name) { return RegistryWrapper::readRegKeyValue(RegistryWrapper::LocalMachine, key, KelpString::fromUTF8(name), text); };
    auto const read_bool = [&](char const * name) { return RegistryWrapper::readRegKeyValue(RegistryWrapper::LocalMachine, key, name, on); };
    EXPECT_FALSE(read_text("File"));
    machine.set("Software\\Quarry Lane\\Log", "File", "C:\\\\a \"b\"\\Z\u00fcrich \U0001F600.txt");
    machine.set("Software\\Quarry Lane\\Log", "Z\u00fcrich", std::string(2000, 'x'));
    machine.set("Software\\Quarry Lane\\Log", "On", 0x80000000u);
    machine.set("Software\\Quarry Lane\\Log", "Off", 0u);
    EXPECT_FALSE(read_text("On"));
    EXPECT_FALSE(read_text("Missing"));
    EXPECT_EQ(text.toUTF8(), "unset");
    EXPECT_TRUE(read_text("fILE"));
    EXPECT_EQ(text.toUTF8(), "C:\\\\a \"b\"\\Z\u00fcrich \U0001F600.txt");
    EXPECT_TRUE(read_text("Z\u00fcrich"));
    EXPECT_EQ(text.toUTF8(), std::string(2000, 'x'));

    EXPECT_FALSE(read_bool("File"));
    EXPECT_TRUE(on);
    EXPECT_TRUE(read_bool("Off"));
    EXPECT_FALSE(on);
    EXPECT_TRUE(read_bool("On"));
    EXPECT_TRUE(on);
    EXPECT_FALSE(RegistryWrapper::readRegKeyValue(RegistryWrapper::RootKey(2), key, "On", on));
    EXPECT_FALSE(RegistryWrapper::readRegKeyValue(RegistryWrapper::LocalMachine, "Software", "On", on));
    EXPECT_FALSE(RegistryWrapper::readRegKeyValue(RegistryWrapper::LocalMachine, key, KelpString(std::u16string(u"On\0x", 4)), on));
}

TEST_F(Settings, FilesGrowAtTheirEnd)
{
    std::u16string const name = u"Z\u00fcrich \u6771\u4eac \U0001F600.txt";
    {
        File first{ FileLocator(path(name)) }, second{ FileLocator(path(name)) };
        first.writeLine("before it is open");
        ASSERT_TRUE(first.open("a+"));
        ASSERT_TRUE(second.open("a+"));
        first.writeLine("one");
        second.writeLine(KelpString(u"zw\u00f6lf"));
        first.writeLine("");
        first.writeLine("three\nfour\r\n");
    }
    EXPECT_EQ(bytes_of(machine.folder() / name), "one" + kLineEnd + "zw\xC3\xB6lf" + kLineEnd + kLineEnd + "three" + kLineEnd + "four\r\n" + kLineEnd);

    EXPECT_FALSE(File{ FileLocator(path(u"log.txt")) }.open("w"));
    EXPECT_FALSE(File{ FileLocator(path(u"no/log.txt")) }.open("a+"));
    EXPECT_FALSE(File{ FileLocator(path(u"")) }.open("a+"));
    EXPECT_FALSE(File{ FileLocator(kDevice) }.open("a+"));
    EXPECT_FALSE(File{ FileLocator(path(std::u16string(u"log.txt\0.bak", 12))) }.open("a+"));
}

TEST_F(Settings, ABareNameGoesToTheTemporaryFolder)
{
    EXPECT_TRUE(FileLocator(path(u"log.txt")).isLocationSet());
    EXPECT_TRUE(FileLocator("../log.txt").isLocationSet());
    FileLocator locator(KelpString(u"Z\u00fcrich.txt"));
    EXPECT_FALSE(locator.isLocationSet());
    locator.setLocationToTemp();
    EXPECT_TRUE(locator.isLocationSet());
    EXPECT_TRUE(File(locator).open("a+"));
    EXPECT_TRUE(fs::exists(machine.temporary_folder() / u"Z\u00fcrich.txt"));
}

TEST_F(Settings, ProcessesDoNotMixWithinALine)
{
    constexpr int kLines = 300;
    constexpr std::size_t kSize = 20000; // more than one page
    EXPECT_TRUE(run_processes(2, [&](int child) {
        File file{ FileLocator(path(u"log.txt")) };
        if (!file.open("a+"))
            return false;
        for (int i = 0; i < kLines; ++i)
            file.writeLine(std::u16string(kSize, child == 0 ? u'a' : u'b'));
        return true;
    }));
    std::istringstream lines(text_of(machine.folder() / "log.txt"));
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count)
        ASSERT_EQ(line, std::string(kSize, line.empty() ? '?' : line[0])) << "line " << count;
    EXPECT_EQ(count, 2 * kLines);
}

}
