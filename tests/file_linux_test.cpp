#include "machine.h"

#include <odbomodule/host/file.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace fs = std::filesystem;

// How the next calls of write() go: "H" writes half of the bytes, "I" is interrupted by a signal.
static thread_local char const * gWrites = "";

// This definition replaces the C library's write(), also for calls from the support library.
extern "C" ssize_t write(int file, void const * bytes, std::size_t size)
{
    char const kind = *gWrites;
    gWrites += kind != '\0';
    if (kind == 'I') {
        errno = EINTR;
        return -1;
    }
    return ::syscall(SYS_write, file, bytes, kind == 'H' ? size / 2 : size);
}

namespace {

FileLocator locate(fs::path const & path)
{
    return FileLocator(path.u16string());
}

FileLocator in_temporary_folder(KelpString const & name)
{
    FileLocator result(name);
    result.setLocationToTemp();
    return result;
}

TEST(File, IsForItsOwnerOnly)
{
    Machine const machine;
    File file(in_temporary_folder("log.txt"));
    ASSERT_TRUE(file.open("a+"));
    EXPECT_EQ(fs::status(machine.temporary_folder() / "log.txt").permissions(), fs::perms(0600));
    EXPECT_NE(std::system("ls -l /proc/self/fd | grep -q log.txt"), 0) << "open in another program";
}

TEST(File, RefusesALinkWhereOthersMayWrite)
{
    Machine const machine;
    FileLocator const shared = in_temporary_folder("log.txt");
    fs::create_symlink("../mine.txt", shared.path());
    EXPECT_FALSE(File(shared).open("a+"));
    EXPECT_TRUE(File(locate(shared.path())).open("a+")) << "in a folder of the user's own";
    fs::permissions(machine.temporary_folder(), fs::perms(0777));
    EXPECT_FALSE(File(locate(shared.path())).open("a+"));
}

TEST(File, RefusesAnotherUsersFile)
{
    Machine const machine;
    FileLocator const shared = in_temporary_folder("log.txt");
    EXPECT_TRUE(File(shared).open("a+"));
    if (::chown(shared.path().c_str(), 65534, 65534) != 0)
        GTEST_SKIP() << "only root can give a file to another user";
    EXPECT_FALSE(File(shared).open("a+"));
    EXPECT_TRUE(File(locate(shared.path())).open("a+")) << "in a folder of the user's own";
}

TEST(File, RefusesDevicesAndPipes)
{
    Machine const machine;
    EXPECT_FALSE(File(FileLocator("/dev/null")).open("a+"));
    ASSERT_EQ(::mkfifo((machine.fFolder / "pipe").c_str(), 0600), 0);
    EXPECT_FALSE(File(locate(machine.fFolder / "pipe")).open("a+")); // and does not wait for a reader
}

TEST(File, CompletesALineAfterAnInterruption)
{
    Machine const machine;
    File file(locate(machine.fFolder / "log.txt"));
    ASSERT_TRUE(file.open("a+"));
    gWrites = "HI";
    file.writeLine("a line that is written in two parts");
    EXPECT_STREQ(gWrites, "");
    EXPECT_EQ(text_of_file(machine.fFolder / "log.txt"), "a line that is written in two parts\n");
}

TEST(File, WritesAfterTwoSecondsIfAHungWriterHoldsTheLock)
{
    Machine const machine;
    fs::path const path = machine.fFolder / "log.txt";
    File file(locate(path));
    ASSERT_TRUE(file.open("a+"));
    int const other = ::open(path.c_str(), O_RDONLY);
    ASSERT_EQ(::flock(other, LOCK_EX), 0);
    file.writeLine("one"); // after two seconds
    ::close(other);
    EXPECT_EQ(text_of_file(path), "one\n");
}

TEST(File, StartsANewLineAfterTheSizeLimitOfTheProcess)
{
    Machine const machine;
    File file(locate(machine.fFolder / "log.txt"));
    ASSERT_TRUE(file.open("a+"));
    ::rlimit limit;
    ::getrlimit(RLIMIT_FSIZE, &limit);
    ::rlimit const low{ 5, limit.rlim_max };
    ::setrlimit(RLIMIT_FSIZE, &low);
    for (char const * const line : { "one", "cut", "lost" })
        file.writeLine(line);
    ::setrlimit(RLIMIT_FSIZE, &limit);
    file.writeLine("whole");
    EXPECT_EQ(text_of_file(machine.fFolder / "log.txt"), "one\nc\nwhole\n");
}

TEST(File, LeavesSignalsAsTheyWere)
{
    Machine const machine;
    File file(locate(machine.fFolder / "log.txt"));
    ASSERT_TRUE(file.open("a+"));
    file.writeLine("one");
    ::sigset_t blocked;
    ::pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    EXPECT_EQ(::sigismember(&blocked, SIGXFSZ), 0);
    ::sigaddset(&blocked, SIGXFSZ);
    ::pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
    ::raise(SIGXFSZ);
    file.writeLine("two");
    ::timespec const noTime{};
    EXPECT_EQ(::sigtimedwait(&blocked, nullptr, &noTime), SIGXFSZ) << "pending before the line, so pending after it";
    ::sigdelset(&blocked, SIGXFSZ);
    ::pthread_sigmask(SIG_SETMASK, &blocked, nullptr);
}

TEST(File, LeavesNoDescriptorOpen)
{
    Machine machine;
    machine.write_setting("Software\\Log", "Name", "yes");
    auto const count_open = [] { return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()); };
    auto const before = count_open();
    EXPECT_TRUE(File(locate(machine.fFolder / "log.txt")).open("a+"));
    EXPECT_EQ(read_setting("Name"), "yes");
    EXPECT_EQ(count_open(), before);
}

TEST(FileLocator, TakesAnAbsoluteTemporaryFolderOnly)
{
    Machine const machine;
    FileLocator locator = in_temporary_folder("log.txt");
    EXPECT_EQ(locator.path(), machine.temporary_folder() / "log.txt");
    ::setenv("TMPDIR", "temporary", 1);
    locator.setLocationToTemp(); // the locator keeps only the name of the file
    EXPECT_EQ(locator.path(), "/tmp/log.txt");
    ::unsetenv("TMPDIR");
    locator.setLocationToTemp();
    EXPECT_EQ(locator.path(), "/tmp/log.txt");
}

TEST(FileLocator, LeavesABareNameInTheWorkingFolder)
{
    Machine const machine;
    fs::path const before = fs::current_path();
    fs::current_path(machine.fFolder);
    EXPECT_TRUE(File(FileLocator("here.txt")).open("a+"));
    fs::current_path(before);
    EXPECT_TRUE(fs::exists(machine.fFolder / "here.txt"));
}

}
