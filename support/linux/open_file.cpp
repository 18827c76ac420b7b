#include "../common/open_file.h"

#include "descriptor.h"

#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

// Blocks SIGXFSZ in this thread for the length of a scope. A file at its size limit would raise the signal and end
// the process. A signal raised within the scope is discarded, because the failed write already reports the limit.
class LimitSignalBlocked {
public:
    LimitSignalBlocked() noexcept
    {
        ::sigset_t pending;
        ::sigemptyset(&fSignal);
        ::sigaddset(&fSignal, SIGXFSZ);
        ::pthread_sigmask(SIG_BLOCK, &fSignal, &fMaskBefore);
        ::sigpending(&pending);
        fPendingBefore = ::sigismember(&pending, SIGXFSZ) == 1;
    }
    ~LimitSignalBlocked()
    {
        ::timespec const noTime{};
        while (!fPendingBefore && ::sigtimedwait(&fSignal, nullptr, &noTime) < 0 && errno == EINTR)
            continue;
        ::pthread_sigmask(SIG_SETMASK, &fMaskBefore, nullptr);
    }
    LimitSignalBlocked(LimitSignalBlocked const &) = delete;
    LimitSignalBlocked & operator=(LimitSignalBlocked const &) = delete;

private:
    ::sigset_t fSignal;
    ::sigset_t fMaskBefore;
    bool fPendingBefore;
};

class LinuxFile final : public support_dll::OpenFile {
public:
    explicit LinuxFile(Descriptor file) noexcept : fFile(std::move(file)) {}

    bool lock() noexcept override
    {
        return ::flock(fFile.number(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    }
    void unlock() noexcept override { ::flock(fFile.number(), LOCK_UN); }

    bool ends_within_line() noexcept override
    {
        struct ::stat state;
        char last = '\n';
        return ::fstat(fFile.number(), &state) == 0 && state.st_size > 0 &&
               ::pread(fFile.number(), &last, 1, state.st_size - 1) == 1 && last != '\n';
    }

    std::size_t append(std::string_view bytes) noexcept override
    {
        LimitSignalBlocked const blocked;
        for (;;) {
            ssize_t const count = ::write(fFile.number(), bytes.data(), bytes.size());
            if (count >= 0)
                return static_cast<std::size_t>(count);
            if (errno != EINTR)
                return 0;
        }
    }

private:
    Descriptor fFile;
};

}

std::unique_ptr<support_dll::OpenFile> support_dll::OpenFile::open(FileLocator const & location)
{
    std::filesystem::path const parent = location.path().parent_path();
    Descriptor const folder(::open(parent.empty() ? "." : parent.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    struct ::stat state;
    if (::fstat(folder.number(), &state) != 0)
        return nullptr;
    bool const shared = location.inSharedFolder() || (state.st_mode & S_IWOTH) != 0;

    // O_NONBLOCK: opening a pipe or a device must not wait.
    int const flags = O_RDWR | O_APPEND | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK | (shared ? O_NOFOLLOW : 0);
    std::filesystem::path const name = location.path().filename();
    Descriptor file(::openat(folder.number(), name.c_str(), flags, S_IRUSR | S_IWUSR));
    if (::fstat(file.number(), &state) != 0 || !S_ISREG(state.st_mode))
        return nullptr;
    if (shared && (state.st_uid != ::geteuid() || state.st_nlink > 1))
        return nullptr;
    return std::make_unique<LinuxFile>(std::move(file));
}

std::string support_dll::OpenFile::line_of(KelpString const & text)
{
    return text.toUTF8() += '\n';
}
