#include "tests/machine.h"

#include "odbomodule/host/file.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

struct SettingsFiles : testing::Test, Machine {
    fs::path file(char const * home = "settings") const { return fFolder / home / "odbomodule/registry.reg"; }
};

std::string const kSection = "[HKEY_LOCAL_MACHINE\\Software\\Log]\r\n";

TEST_F(SettingsFiles, LinesAreValuesOrPassedOver)
{
    std::pair<char const *, char const *> const rows[] = { { R"("name"="C:\\a \"b\"")", R"(C:\a "b")" }, { "\t\"Name\" = \"yes\" ", "yes" },
        { R"("Name"=dword: fFfFfFfF )", "true" }, { "\"Name\"=\"first\"\n\n\"Name\"=\"second\"\n\"Name\"=broken", "second" },
        { R"("Name"=DWORD:0)", "false" }, { R"("Name"=dword:123456789)", "none" }, { R"("Name"=dword:12g)", "none" },
        { R"("Name"=dword:)", "none" }, { R"("Name"=-)", "none" }, { R"(; "Name"="no")", "none" }, { R"("Name"="no)", "none" },
        { R"("Name"="a\b")", "none" }, { R"("Name"="a"b)", "none" }, { R"("Name="no")", "none" }, { R"("Name\)", "none" },
        { R"("Name")", "none" }, { R"(Name="no")", "none" }, { R"(@="no")", "none" }, { R"(="no")", "none" },
        { "@=HEX(2):25,\\\r\n  00,\\\r\n\"Name\"=\"inside\"", "none" }, { "@=hex:25\n\"Name\"=\"behind\"", "behind" },
        { "[hkey_local_machine\\software\\LOG]\n\"Name\"=\"yes\"", "yes" },
        { "[HKEY_LOCAL_MACHINE\\Software\\Log)\n\"Name\"=\"no\"", "none" },
        { "[HKEY_CURRENT_USER\\Software\\Log]\n\"Name\"=\"no\"", "none" } };
    for (auto const & [lines, want] : rows) {
        std::ofstream(file(), std::ios::binary) << kSection + lines;
        EXPECT_EQ(setting("Name"), want) << lines;
        EXPECT_EQ(setting(""), "none");
    }
}

TEST_F(SettingsFiles, MayBeInSeveralEncodings)
{
    std::u16string const text = u"\uFEFF[HKEY_LOCAL_MACHINE\\Software\\Log]\r\n\"Name\"=\"\u00e9\U0001F600\"";
    std::string const wide(reinterpret_cast<char const *>(text.data()), 2 * text.size());
    std::string swapped = wide;
    for (std::size_t i = 0; i < wide.size(); i += 2)
        std::swap(swapped[i], swapped[i + 1]);
    std::string const marked = KelpString(text).toUTF8();
    for (auto const & bytes : { wide, swapped, wide + '\n', marked, marked.substr(3) }) {
        std::ofstream(file(), std::ios::binary) << bytes;
        EXPECT_EQ(setting("Name"), "\xC3\xA9\xF0\x9F\x98\x80");
    }
}

TEST_F(SettingsFiles, FirstFileWithTheValueWins)
{
    std::ofstream(file("home/.config"), std::ios::binary) << kSection + "\"Both\"=\"home\"\n\"Home\"=\"home\"\n\"Kind\"=\"home\"\n";
    EXPECT_EQ(setting("Both"), "home"); // no file in the first folder
    std::ofstream(file(), std::ios::binary) << "\"Home\"=\"in no key\"\n" + kSection + "\"Both\"=\"first\"\n\"Kind\"=dword:1\n";
    EXPECT_EQ(setting("Both"), "first");
    EXPECT_EQ(setting("Home"), "home");
    EXPECT_EQ(setting("Kind"), "true");
    ::setenv("XDG_CONFIG_HOME", fs::relative(fFolder / "settings").c_str(), 1); // not absolute
    EXPECT_EQ(setting("Both"), "home");
    ::setenv("HOME", fs::relative(fFolder / "home").c_str(), 1);
    EXPECT_EQ(setting("Both"), "none");
}

TEST_F(SettingsFiles, AreOrdinaryFilesUpToASize)
{
    std::string bytes = kSection + "\"Name\"=\"yes\"\n";
    bytes.resize(1024 * 1024, ' ');
    std::ofstream(file(), std::ios::binary) << bytes;
    EXPECT_EQ(setting("Name"), "yes");
    std::ofstream(file(), std::ios::binary) << bytes + ' ';
    EXPECT_EQ(setting("Name"), "none");
    fs::remove(file());
    ASSERT_EQ(::mkfifo(file().c_str(), 0600), 0);
    EXPECT_EQ(setting("Name"), "none"); // and does not wait for a writer
}

TEST_F(SettingsFiles, OfOthersAreNotWrittenTo)
{
    FileLocator shared("log.txt");
    shared.setLocationToTemp();
    FileLocator const named(shared.path().u16string());
    EXPECT_TRUE(File(shared).open("a+"));
    EXPECT_EQ(fs::status(shared.path()).permissions(), fs::perms(0600));
    fs::rename(shared.path(), fFolder / "mine.txt");
    fs::create_symlink("../mine.txt", shared.path());
    EXPECT_FALSE(File(shared).open("a+")) << "a link";
    EXPECT_TRUE(File(named).open("a+")) << "a link at a place of one's own";
    fs::permissions(temporary_folder(), fs::perms(0777));
    EXPECT_FALSE(File(named).open("a+")) << "a link where all may write";
    fs::rename(fFolder / "mine.txt", shared.path());
    EXPECT_TRUE(File(named).open("a+"));
    EXPECT_TRUE(::chown(shared.path().c_str(), 65534, 65534) != 0 || !File(named).open("a+"))
        << "a file of another user"; // which an administrator alone can make
    EXPECT_FALSE(File(FileLocator("/dev/null")).open("a+"));
    ::setenv("TMPDIR", "temporary", 1); // not absolute
    shared.setLocationToTemp();
    EXPECT_EQ(shared.path(), "/tmp/log.txt");
}

}
