#include "machine.h"

#include "host/file.h"
#include "host/registry.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class SettingsFiles : public testing::Test {
protected:
    void write(fs::path const & folder, std::string const & bytes) const
    {
        fs::create_directories(machine.folder() / folder / "odbomodule");
        std::ofstream(machine.folder() / folder / "odbomodule/registry.reg", std::ios::binary) << bytes;
    }

    Machine machine;
};

std::string text_value(char const * name, char const * key = "Software\\Log")
{
    KelpString text("unset");
    bool const found = RegistryWrapper::readRegKeyValue(RegistryWrapper::LocalMachine, key, KelpString::fromUTF8(name), text);
    return found ? text.toUTF8() : text == KelpString("unset") ? "none" : "none, but changed";
}

std::string bool_value(char const * name)
{
    bool value = true;
    bool const found = RegistryWrapper::readRegKeyValue(RegistryWrapper::LocalMachine, "Software\\Log", name, value);
    return found ? (value ? "true" : "false") : "none";
}

char const kFile[] = "Windows Registry Editor Version 5.00\r\n\r\n"
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

TEST_F(SettingsFiles, ReadsValuesInEveryEncoding)
{
    std::string unixEnds = kFile;
    std::erase(unixEnds, '\r');
    for (auto const & bytes : { std::string(kFile), unixEnds, std::string("\xEF\xBB\xBF") + kFile, as_utf16(kFile, true), as_utf16(kFile, false) }) {
        write("settings", bytes);
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
        for (char const * name : { "Comment", "", "On", "Gone", "Bytes", "Inside", "Unended", "Escape", "Behind", "Bare", "End", "Lost", "User", "Missing" })
            EXPECT_EQ(text_value(name), "none") << name;
        for (char const * name : { "File", "Long", "Digits", "NoDigits" })
            EXPECT_EQ(bool_value(name), "none") << name;
    }
    KelpString text;
    EXPECT_FALSE(RegistryWrapper::readRegKeyValue(RegistryWrapper::RootKey(2), "Software\\Log", "File", text));
}

TEST_F(SettingsFiles, FirstFileWithTheValueWins)
{
    std::string const section = "[HKEY_LOCAL_MACHINE\\Software\\Log]\n";
    write("home/.config", section + "\"Both\"=\"home\"\n\"Home\"=\"home\"\n\"Kind\"=\"home\"\n");
    EXPECT_EQ(text_value("Both"), "home"); // no file in the first folder
    write("settings", section + "\"Both\"=\"xdg\"\n\"Kind\"=dword:1\n");
    EXPECT_EQ(text_value("Both"), "xdg");
    EXPECT_EQ(text_value("Home"), "home");
    EXPECT_EQ(text_value("Kind"), "none"); // the first one has it, of another type
    fs::current_path(machine.folder());
    ::setenv("XDG_CONFIG_HOME", "settings", 1); // not absolute
    EXPECT_EQ(text_value("Both"), "home");
}

TEST_F(SettingsFiles, PassesOverFilesThatAreNone)
{
    std::string const value = "[HKEY_LOCAL_MACHINE\\Software\\Log]\n\"File\"=\"text\"\n";
    for (auto const & bytes : { std::string(), std::string("\xFF\xFE"), std::string("\xFF\xFE["), std::string("[\n\"\n\\"), value + std::string(1024 * 1024, ' ') }) {
        write("settings", bytes);
        EXPECT_EQ(text_value("File"), "none") << bytes.size() << " bytes";
    }
    fs::path const file = machine.folder() / "settings/odbomodule/registry.reg";
    fs::remove(file);
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    EXPECT_EQ(text_value("File"), "none"); // and does not wait for a writer
    fs::remove(file);
    fs::create_directory(file);
    EXPECT_EQ(text_value("File"), "none");
}

TEST_F(SettingsFiles, TemporaryFolderIsNotTrusted)
{
    FileLocator locator("log.txt");
    locator.setLocationToTemp();
    fs::path const file = machine.temporary_folder() / "log.txt";
    EXPECT_TRUE(File(locator).open("a+"));
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0600));
    EXPECT_TRUE(File(locator).open("a+")) << "again";

    fs::path const mine = machine.folder() / "mine.txt";
    std::ofstream(mine) << "mine";
    fs::remove(file);
    fs::create_symlink(mine, file);
    EXPECT_FALSE(File(locator).open("a+")) << "symbolic link";
    FileLocator const named(KelpString::fromUTF8(file.string()));
    EXPECT_TRUE(File(named).open("a+")) << "a link at a place of its own";
    fs::permissions(file.parent_path(), fs::perms(0777));
    EXPECT_FALSE(File(named).open("a+")) << "a link where all may write";
    fs::permissions(file.parent_path(), fs::perms(0700));
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

}
