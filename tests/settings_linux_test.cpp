#include "machine.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

std::string const kSection = "[HKEY_LOCAL_MACHINE\\Software\\Log]\r\n";

struct SettingsFile : testing::Test, Machine {
    // The files in the first folder that is searched, and in the second.
    fs::path const fFirst = fFolder / "settings/odbomodule/registry.reg";
    fs::path const fSecond = fFolder / "home/.config/odbomodule/registry.reg";

    void write(fs::path const & path, std::string const & bytes) { std::ofstream(path, std::ios::binary) << bytes; }
};

// The rows of docs/settings.md.
TEST_F(SettingsFile, IsReadAsDocumented)
{
    auto const setting = [&](char const * row, std::string const & lines, std::string const & want) {
        write(fFirst, kSection + lines);
        EXPECT_EQ(read_setting("Name"), want) << row;
    };
#include "documented_settings.h"
}

TEST_F(SettingsFile, GivesAValueIfNoEarlierFileHasIt)
{
    write(fSecond, kSection + "\"Both\"=\"home\"\n\"Home\"=\"home\"\n\"Kind\"=\"home\"\n");
    EXPECT_EQ(read_setting("Both"), "home") << "no file in the first folder";
    write(fFirst, "\"Home\"=\"in no key\"\n" + kSection + "\"Both\"=\"first\"\n\"Kind\"=dword:1\n");
    EXPECT_EQ(read_setting("Both"), "first");
    EXPECT_EQ(read_setting("Home"), "home");
    EXPECT_EQ(read_setting("Kind"), "true");
    ::setenv("XDG_CONFIG_HOME", fs::relative(fFolder / "settings").c_str(), 1);
    EXPECT_EQ(read_setting("Both"), "home") << "a relative folder";
    ::setenv("HOME", fs::relative(fFolder / "home").c_str(), 1);
    EXPECT_EQ(read_setting("Both"), "none");
    ::unsetenv("XDG_CONFIG_HOME");
    ::unsetenv("HOME");
    EXPECT_EQ(read_setting("Both"), "none");
}

TEST_F(SettingsFile, IsLookedForInEtcLast)
{
    fs::create_directories(fFolder / "etc/odbomodule");
    write(fFolder / "etc/odbomodule/registry.reg", kSection + "\"Name\"=\"machine\"");
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can replace /etc";
    auto const read_in_folder = [this] { std::_Exit(::chroot(fFolder.c_str()) != 0 || read_setting("Name") == "machine" ? 0 : 1); };
    EXPECT_EXIT(read_in_folder(), testing::ExitedWithCode(0), "");
}

TEST_F(SettingsFile, IsARegularFileUpToASize)
{
    std::string bytes = kSection + "\"Name\"=\"yes\"\n";
    for (std::size_t const size : { 4097u, 1024u * 1024u }) { // 4097 bytes take two reads, of 4096 bytes and of one; 1 MiB is the limit
        bytes.resize(size, ' ');
        write(fFirst, bytes);
        EXPECT_EQ(read_setting("Name"), "yes");
    }
    write(fFirst, bytes + ' ');
    EXPECT_EQ(read_setting("Name"), "none");
    fs::remove(fFirst);
    ASSERT_EQ(::mkfifo(fFirst.c_str(), 0600), 0);
    EXPECT_EQ(read_setting("Name"), "none");                          // and does not wait for a writer
    int const reader = ::open(fFirst.c_str(), O_RDONLY | O_NONBLOCK); // keeps in the pipe what the writer leaves there
    write(fFirst, kSection + "\"Name\"=\"yes\"\n");
    EXPECT_EQ(read_setting("Name"), "none");
    ::close(reader);
    fs::remove(fFirst);
    fs::create_symlink("/proc/self/mem", fFirst);
    EXPECT_EQ(read_setting("Name"), "none") << "a file that cannot be read";
    fs::remove(fFirst);
    int const terminal = ::posix_openpt(O_RDWR | O_NOCTTY); // a device from which the text could be read
    if (terminal < 0)
        GTEST_SKIP() << "this system makes no terminals";
    ASSERT_EQ(::grantpt(terminal) + ::unlockpt(terminal), 0);
    std::string const typed = "[HKEY_LOCAL_MACHINE\\Software\\Log]\n\"Name\"=\"yes\"\n\x04";
    ASSERT_EQ(::write(terminal, typed.data(), typed.size()), static_cast<ssize_t>(typed.size()));
    fs::create_symlink(::ptsname(terminal), fFirst);
    EXPECT_EQ(read_setting("Name"), "none");
    ::close(terminal);
}

}
