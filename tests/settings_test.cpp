#include "host/file.h"
#include "host/registry.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

// A folder of its own, with the environment pointing into it; both are as before at the end.
class Settings : public testing::Test {
protected:
    void SetUp() override
    {
        std::string pattern = (fs::temp_directory_path() / "settings-XXXXXX").string();
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        fFolder = pattern;
        fOldFolder = fs::current_path();
        for (char const * name : { "XDG_CONFIG_HOME", "HOME", "TMPDIR" }) {
            auto const old = std::getenv(name);
            if (old != nullptr)
                fOld[name] = old;
            fs::create_directory(fFolder / name);
            ::setenv(name, (fFolder / name).c_str(), 1);
        }
    }
    void TearDown() override
    {
        for (char const * name : { "XDG_CONFIG_HOME", "HOME", "TMPDIR" })
            if (auto const old = fOld.find(name); old != fOld.end())
                ::setenv(name, old->second.c_str(), 1);
            else
                ::unsetenv(name);
        fs::current_path(fOldFolder);
        fs::remove_all(fFolder);
    }

    void write(fs::path const & folder, std::string const & bytes) const
    {
        fs::create_directories(fFolder / folder / "odbomodule");
        std::ofstream(fFolder / folder / "odbomodule/registry.reg", std::ios::binary) << bytes;
    }
    std::string read(fs::path const & file) const
    {
        std::ostringstream bytes;
        bytes << std::ifstream(fFolder / file, std::ios::binary).rdbuf();
        return bytes.str();
    }
    KelpString path(char const * name) const { return KelpString::fromUTF8((fFolder / name).string()); }

    fs::path fFolder;
    fs::path fOldFolder;
    std::map<std::string, std::string> fOld;
};

std::string text_value(char const * name, char const * key = "Software\\Log")
{
    KelpString text("unset");
    bool const found = RegistryWrapper::readRegKeyValue(
        RegistryWrapper::LocalMachine, key, KelpString::fromUTF8(name), text);
    return found ? text.toUTF8() : text == KelpString("unset") ? "none" : "none, but changed";
}

std::string bool_value(char const * name)
{
    bool value = true;
    bool const found = RegistryWrapper::readRegKeyValue(
        RegistryWrapper::LocalMachine, "Software\\Log", name, value);
    return found ? (value ? "true" : "false") : "none";
}

char const kFile[] =
    "Windows Registry Editor Version 5.00\r\n\r\n"
    "; \"Comment\"=\"no\" \\\r\n"
    "[HKEY_LOCAL_MACHINE\\Software]\r\n\"File\"=\"other key\"\r\n"
    "[HKEY_LOCAL_MACHINE\\SOFTWARE\\log]\r\n"
    "@=\"default\"\r\n"
    "\"File\"=\"C:\\\\logs\\\\a \\\"b\\\".txt\"\r\n"
    " \"Spaced\" = \"yes\" \r\n"
    "\"On\"=dword:00000001\r\n\"Off\"=DWORD:0\r\n\"High\"=dword:fFfFfFfF\r\n"
    "\"Gone\"=-\r\n"
    "\"Bytes\"=hex(2):25,00,\\\r\n  00,\\\r\n\"Inside\"=\"no\"\r\n"
    "\"Twice\"=\"first\"\r\n\"Twice\"=\"second\"\r\n"
    "\"\xC3\xA9\"=\"\xF0\x9F\x98\x80\"\r\n"
    "\"Unended\"=\"text\r\n\"Escape\"=\"a\\b\"\r\n\"Behind\"=\"a\"b\r\n\"Long\"=dword:123456789\r\n"
    "\"Digits\"=dword:12x\r\n\"NoDigits\"=dword:\r\n\"Bare\r\nBare\r\n\"Bare\"\r\n=\r\n\"End\\\r\n"
    "\"After\"=\"found\"\r\n"
    "[HKEY_LOCAL_MACHINE\\Software\\Log)\r\n\"Lost\"=\"broken section\"\r\n"
    "[HKEY_CURRENT_USER\\Software\\Log]\r\n\"User\"=\"no\"\r\n"
    "[HKEY_LOCAL_MACHINE\\Software\\Log]\r\n\"Last\"=\"no line end\"";

// The file's text in 16-bit characters of either byte order.
std::string as_utf16(std::string_view bytes, bool little)
{
    std::string result;
    for (char16_t const character : u"\uFEFF" + KelpString::fromUTF8(bytes)) {
        char const halves[] = { static_cast<char>(character & 0xFF), static_cast<char>(character >> 8) };
        result += { halves[little ? 0 : 1], halves[little ? 1 : 0] };
    }
    return result;
}

TEST_F(Settings, ReadsValuesInEveryEncoding)
{
    std::string unixEnds = kFile;
    std::erase(unixEnds, '\r');
    for (auto const & bytes : { std::string(kFile), unixEnds, std::string("\xEF\xBB\xBF") + kFile,
             as_utf16(kFile, true), as_utf16(kFile, false) }) {
        write("XDG_CONFIG_HOME", bytes);
        EXPECT_EQ(text_value("file"), "C:\\logs\\a \"b\".txt");
        EXPECT_EQ(text_value("File", "software"), "other key");
        EXPECT_EQ(text_value("Spaced"), "yes");
        EXPECT_EQ(text_value("Twice"), "second");
        EXPECT_EQ(text_value("\xC3\xA9"), "\xF0\x9F\x98\x80");
        EXPECT_EQ(text_value("After"), "found");
        EXPECT_EQ(text_value("Last"), "no line end");
        EXPECT_EQ(bool_value("On"), "true");
        EXPECT_EQ(bool_value("Off"), "false");
        EXPECT_EQ(bool_value("High"), "true");
        for (char const * name : { "Comment", "", "On", "Gone", "Bytes", "Inside", "Unended", "Escape", "Behind",
                 "Bare", "End", "Lost", "User", "Missing" })
            EXPECT_EQ(text_value(name), "none") << name;
        for (char const * name : { "File", "Long", "Digits", "NoDigits" })
            EXPECT_EQ(bool_value(name), "none") << name;
    }
    KelpString text;
    EXPECT_FALSE(RegistryWrapper::readRegKeyValue(RegistryWrapper::RootKey(2), "Software\\Log", "File", text));
}

TEST_F(Settings, FirstFileWithTheValueWins)
{
    std::string const section = "[HKEY_LOCAL_MACHINE\\Software\\Log]\n";
    write("HOME/.config", section + "\"Both\"=\"home\"\n\"Home\"=\"home\"\n\"Kind\"=\"home\"\n");
    EXPECT_EQ(text_value("Both"), "home"); // no file in the first folder
    write("XDG_CONFIG_HOME", section + "\"Both\"=\"xdg\"\n\"Kind\"=dword:1\n");
    EXPECT_EQ(text_value("Both"), "xdg");
    EXPECT_EQ(text_value("Home"), "home");
    EXPECT_EQ(text_value("Kind"), "none"); // the first one has it, of another type
    fs::current_path(fFolder);
    ::setenv("XDG_CONFIG_HOME", "XDG_CONFIG_HOME", 1); // not absolute
    EXPECT_EQ(text_value("Both"), "home");
}

TEST_F(Settings, PassesOverFilesThatAreNone)
{
    std::string const value = "[HKEY_LOCAL_MACHINE\\Software\\Log]\n\"File\"=\"text\"\n";
    for (auto const & bytes : { std::string(), std::string("\xFF\xFE"), std::string("\xFF\xFE["),
             std::string("[\n\"\n\\"), value + std::string(1024 * 1024, ' ') }) {
        write("XDG_CONFIG_HOME", bytes);
        EXPECT_EQ(text_value("File"), "none") << bytes.size() << " bytes";
    }
    fs::path const file = fFolder / "XDG_CONFIG_HOME/odbomodule/registry.reg";
    fs::remove(file);
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    EXPECT_EQ(text_value("File"), "none"); // and does not wait for a writer
    fs::remove(file);
    fs::create_directory(file);
    EXPECT_EQ(text_value("File"), "none");
}

TEST_F(Settings, FilesGrowAtTheirEnd)
{
    {
        File first{ FileLocator(path("log.txt")) }, second{ FileLocator(path("log.txt")) };
        first.writeLine("before it is open");
        ASSERT_TRUE(first.open("a+"));
        ASSERT_TRUE(second.open("a+"));
        first.writeLine("one");
        second.writeLine(KelpString(u"zw\u00f6lf"));
        first.writeLine("");
        first.writeLine("three\nfour");
    }
    EXPECT_EQ(read("log.txt"), "one\nzw\xC3\xB6lf\n\nthree\nfour\n");
    EXPECT_EQ(fs::status(fFolder / "log.txt").permissions(), fs::perms(0600));

    EXPECT_FALSE(File{ FileLocator(path("log.txt")) }.open("w"));
    EXPECT_FALSE(File{ FileLocator(path("no/log.txt")) }.open("a+"));
    EXPECT_FALSE(File{ FileLocator(path("")) }.open("a+"));
    EXPECT_FALSE(File{ FileLocator("/dev/null") }.open("a+"));
    EXPECT_FALSE(File{ FileLocator(path("log.txt") + u'\0' + u".bak") }.open("a+"));
}

TEST_F(Settings, TemporaryFolderIsNotTrusted)
{
    EXPECT_TRUE(FileLocator(path("log.txt")).isLocationSet());
    EXPECT_TRUE(FileLocator("../log.txt").isLocationSet());
    FileLocator locator("log.txt");
    EXPECT_FALSE(locator.isLocationSet());
    locator.setLocationToTemp();
    fs::path const file = fFolder / "TMPDIR/log.txt";
    EXPECT_EQ(locator.path(), file);
    EXPECT_TRUE(File(locator).open("a+"));
    EXPECT_TRUE(File(locator).open("a+")) << "again";

    fs::path const mine = fFolder / "mine.txt";
    std::ofstream(mine) << "mine";
    fs::remove(file);
    fs::create_symlink(mine, file);
    EXPECT_FALSE(File(locator).open("a+")) << "symbolic link";
    EXPECT_TRUE(File{ FileLocator(KelpString::fromUTF8(file.string())) }.open("a+"))
        << "a link at a place of its own";
    fs::remove(file);
    fs::create_hard_link(mine, file);
    EXPECT_FALSE(File(locator).open("a+")) << "hard link";
    fs::remove(file);
    if (::geteuid() == 0) {
        std::ofstream(file).flush();
        ASSERT_EQ(::chown(file.c_str(), 65534, 65534), 0);
        EXPECT_FALSE(File(locator).open("a+")) << "of another user";
    }
}

TEST_F(Settings, ProcessesDoNotMixWithinALine)
{
    constexpr int kLines = 300;
    constexpr std::size_t kSize = 20000; // more than one page
    pid_t children[2];
    for (int child = 0; child < 2; ++child) {
        children[child] = ::fork();
        ASSERT_GE(children[child], 0);
        if (children[child] == 0) {
            File file{ FileLocator(path("log.txt")) };
            if (!file.open("a+"))
                ::_exit(1);
            for (int i = 0; i < kLines; ++i)
                file.writeLine(std::u16string(kSize, child == 0 ? u'a' : u'b'));
            ::_exit(0);
        }
    }
    for (auto const child : children) {
        int status = -1;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    std::istringstream lines(read("log.txt"));
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count)
        ASSERT_EQ(line, std::string(kSize, line.empty() ? '?' : line[0])) << "line " << count;
    EXPECT_EQ(count, 2 * kLines);
}

}
