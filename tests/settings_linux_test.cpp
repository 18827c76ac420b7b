#include "allocations.h"
#include "machine.h"

#include <odbomodule/host/file.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

std::string const kSection = "[HKEY_LOCAL_MACHINE\\Software\\Log]\r\n";

struct SettingsFiles : testing::Test, Machine {
    // The file in the first folder that is looked into, and in the second.
    fs::path const fFirst = fFolder / "settings/odbomodule/registry.reg";
    fs::path const fSecond = fFolder / "home/.config/odbomodule/registry.reg";

    void write(fs::path const & path, std::string const & bytes) { std::ofstream(path, std::ios::binary) << bytes; }
};

// The rows of docs/settings.md, which are taken from there when this is built.
TEST_F(SettingsFiles, AreReadAsDocumented)
{
    auto const setting = [&](char const * row, std::string const & lines, std::string const & want) {
        write(fFirst, kSection + lines);
        EXPECT_EQ(read_setting("Name"), want) << row;
        EXPECT_EQ(read_setting(""), "none") << row;
    };
#include "documented_settings.h"
    write(fSecond, kSection + "\"Name\"=\"hidden\"");
    for (char const * const removal : { "\"NAME\" = -", "[-HKEY_LOCAL_MACHINE\\software\\Log]", "[-HKEY_LOCAL_MACHINE\\Software]" })
        setting("hides the later file", removal, "none");
}

TEST_F(SettingsFiles, MayBeInSeveralEncodings)
{
    std::u16string const text = u"\uFEFF[HKEY_LOCAL_MACHINE\\Software\\Log]\r\n\"Name\"=\"\u00e9\U0001F600\"";
    std::string const wide(reinterpret_cast<char const *>(text.data()), 2 * text.size());
    std::string swapped = wide;
    for (std::size_t i = 0; i < wide.size(); i += 2)
        std::swap(swapped[i], swapped[i + 1]);
    std::string const marked = KelpString(text).toUTF8();
    std::string const unmarked = marked.substr(3);
    for (std::string const & bytes : { wide, swapped, wide + 'x', marked, unmarked }) { // the third ends amid a character
        write(fFirst, bytes);
        EXPECT_EQ(read_setting("Name"), "\xC3\xA9\xF0\x9F\x98\x80");
    }
}

TEST_F(SettingsFiles, FirstFileWithTheValueWins)
{
    write(fSecond, kSection + "\"Both\"=\"home\"\n\"Home\"=\"home\"\n\"Kind\"=\"home\"\n");
    EXPECT_EQ(read_setting("Both"), "home"); // no file in the first folder
    write(fFirst, "\"Home\"=\"in no key\"\n" + kSection + "\"Both\"=\"first\"\n\"Kind\"=dword:1\n");
    EXPECT_EQ(read_setting("Both"), "first");
    EXPECT_EQ(read_setting("Home"), "home");
    EXPECT_EQ(read_setting("Kind"), "true");
    ::setenv("XDG_CONFIG_HOME", fs::relative(fFolder / "settings").c_str(), 1); // not absolute, which does not count
    EXPECT_EQ(read_setting("Both"), "home");
    ::setenv("HOME", fs::relative(fFolder / "home").c_str(), 1);
    EXPECT_EQ(read_setting("Both"), "none");
    ::unsetenv("XDG_CONFIG_HOME");
    ::unsetenv("HOME");
    EXPECT_EQ(read_setting("Both"), "none");
    fs::create_directories(fFolder / "etc/odbomodule");
    write(fFolder / "etc/odbomodule/registry.reg", kSection + "\"Both\"=\"machine\"");
    auto const read_below = [this] { // which an administrator alone can do
        std::_Exit(::chroot(fFolder.c_str()) != 0 || read_setting("Both") == "machine" ? 0 : 1);
    };
    EXPECT_EXIT(read_below(), testing::ExitedWithCode(0), "");
}

TEST_F(SettingsFiles, AreOrdinaryFilesUpToASize)
{
    std::string bytes = kSection + "\"Name\"=\"yes\"\n";
    for (std::size_t const size : { 4097u, 1024u * 1024u }) { // the first is read in two parts, of which one is a single byte
        bytes.resize(size, ' ');
        write(fFirst, bytes);
        EXPECT_EQ(read_setting("Name"), "yes");
    }
    write(fFirst, bytes + ' ');
    EXPECT_EQ(read_setting("Name"), "none");
    fs::remove(fFirst);
    ASSERT_EQ(::mkfifo(fFirst.c_str(), 0600), 0);
    EXPECT_EQ(read_setting("Name"), "none"); // and does not wait for a writer
    fs::remove(fFirst);
    fs::create_symlink("/proc/self/mem", fFirst);
    EXPECT_EQ(read_setting("Name"), "none") << "a file that cannot be read";
}

TEST_F(SettingsFiles, LackOfMemoryLeavesNoneOpen)
{
    write(fFirst, kSection + std::string(5000, ' '));
    auto const count_open = [] { return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()); };
    auto const before = count_open();
    for (std::size_t nth = 1; nth < 100; ++nth) {
        File file(FileLocator((fFolder / "log.txt").u16string()));
        gFailAt = nth;
        try {
            file.open("a+");
            read_setting("Name");
        } catch (std::bad_alloc const &) {
        }
        gFailAt = 0;
    }
    EXPECT_EQ(count_open(), before);
}

TEST_F(SettingsFiles, EndAtTheSizeLimitOfTheProcess)
{
    File file(FileLocator((fFolder / "log.txt").u16string()));
    ASSERT_TRUE(file.open("a+"));
    EXPECT_NE(std::system("ls -l /proc/self/fd | grep -q log.txt"), 0) << "open in another program";
    ::rlimit limit;
    ::getrlimit(RLIMIT_FSIZE, &limit);
    ::rlimit const low{ 5, limit.rlim_max };
    ::setrlimit(RLIMIT_FSIZE, &low);
    for (char const * const line : { "one", "cut", "lost" })
        file.writeLine(line);
    ::setrlimit(RLIMIT_FSIZE, &limit);
    file.writeLine("whole");
    ::sigset_t blocked;
    ::pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    EXPECT_EQ(::sigismember(&blocked, SIGXFSZ), 0); // the thread is as it was
    ::sigaddset(&blocked, SIGXFSZ);
    ::pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
    ::raise(SIGXFSZ);
    file.writeLine("waiting");
    ::timespec const noTime{};
    EXPECT_EQ(::sigtimedwait(&blocked, nullptr, &noTime), SIGXFSZ); // which waited before the line, and still does
    ::sigdelset(&blocked, SIGXFSZ);
    ::pthread_sigmask(SIG_SETMASK, &blocked, nullptr);
    EXPECT_EQ(text_of_file(fFolder / "log.txt"), "one\nc\nwhole\nwaiting\n");
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
    bool const isOfAnother = ::chown(shared.path().c_str(), 65534, 65534) == 0; // which an administrator alone can do
    EXPECT_EQ(File(named).open("a+"), !isOfAnother) << "a file of another user";
    EXPECT_FALSE(File(FileLocator("/dev/null")).open("a+"));
    ASSERT_EQ(::mkfifo((fFolder / "pipe").c_str(), 0600), 0);
    EXPECT_FALSE(File(FileLocator((fFolder / "pipe").u16string())).open("a+")); // and does not wait for a reader
}

TEST_F(SettingsFiles, TemporaryFolderIsAbsoluteAndNotTheWorkingFolder)
{
    FileLocator shared("log.txt");
    shared.setLocationToTemp();
    ::setenv("TMPDIR", "temporary", 1);
    shared.setLocationToTemp(); // again, with the bare name
    EXPECT_EQ(shared.path(), "/tmp/log.txt");
    ::unsetenv("TMPDIR");
    shared.setLocationToTemp();
    EXPECT_EQ(shared.path(), "/tmp/log.txt");
    fs::path const before = fs::current_path();
    fs::current_path(fFolder);
    EXPECT_TRUE(File(FileLocator("here.txt")).open("a+")); // in the working folder, when nobody asks for another
    fs::current_path(before);
    EXPECT_TRUE(fs::exists(fFolder / "here.txt"));
}

}
