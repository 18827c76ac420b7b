#include <odbomodule/host/file.h>

#include "descriptor.h"

#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <signal.h>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

struct File::Handle {
    Descriptor file;
    bool cut = false; // whether what was last written ends amid a line
};

namespace {

// Keeps the signal of a file at its size limit from this thread, for the length of a scope: it would end the process.
// One that came within the scope is taken off; the write has failed, which says the same.
class LimitSignalHeld {
public:
    LimitSignalHeld()
    {
        ::sigset_t pending;
        ::sigemptyset(&fSignal);
        ::sigaddset(&fSignal, SIGXFSZ);
        ::pthread_sigmask(SIG_BLOCK, &fSignal, &fMaskBefore);
        ::sigpending(&pending);
        fPendingBefore = ::sigismember(&pending, SIGXFSZ) == 1;
    }
    ~LimitSignalHeld()
    {
        ::timespec const noTime{};
        while (!fPendingBefore && ::sigtimedwait(&fSignal, nullptr, &noTime) < 0 && errno == EINTR)
            continue;
        ::pthread_sigmask(SIG_SETMASK, &fMaskBefore, nullptr);
    }
    LimitSignalHeld(LimitSignalHeld const &) = delete;
    LimitSignalHeld & operator=(LimitSignalHeld const &) = delete;

private:
    ::sigset_t fSignal;
    ::sigset_t fMaskBefore;
    bool fPendingBefore;
};

}

File::File(FileLocator const & location) : fLocation(location) {}

File::~File() = default;

bool File::open(char const * mode)
{
    fHandle.reset();
    std::string const & path = fLocation.path().native();
    if (mode == nullptr || std::string_view(mode) != "a+" || path.find('\0') != path.npos)
        return false;

    std::filesystem::path const parent = fLocation.path().parent_path();
    Descriptor const folder(::open(parent.empty() ? "." : parent.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    struct ::stat state;
    if (::fstat(folder.number(), &state) != 0)
        return false;
    // Where others may write, they could have put a file of theirs here, or a link to one of ours.
    bool const shared = fLocation.inSharedFolder() || (state.st_mode & S_IWOTH) != 0;

    // O_NONBLOCK: to open a pipe of that name must not wait for its reader.
    int const flags = O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK | (shared ? O_NOFOLLOW : 0);
    std::filesystem::path const name = fLocation.path().filename();
    auto handle = std::make_unique<Handle>();
    handle->file.take(::openat(folder.number(), name.c_str(), flags, S_IRUSR | S_IWUSR));
    if (::fstat(handle->file.number(), &state) != 0 || !S_ISREG(state.st_mode))
        return false;
    if (shared && (state.st_uid != ::geteuid() || state.st_nlink > 1))
        return false;
    fHandle = std::move(handle);
    return true;
}

void File::writeLine(KelpString const & text)
{
    if (!fHandle)
        return;
    std::string line = text.toUTF8();
    line += '\n';
    if (fHandle->cut)
        line.insert(line.begin(), '\n');
    LimitSignalHeld const held;
    for (std::string_view rest = line; !rest.empty();) {
        ssize_t const count = ::write(fHandle->file.number(), rest.data(), rest.size());
        if (count > 0) {
            fHandle->cut = rest[static_cast<std::size_t>(count) - 1] != '\n';
            rest.remove_prefix(static_cast<std::size_t>(count));
        } else if (count == 0 || errno != EINTR) {
            return;
        }
    }
}
