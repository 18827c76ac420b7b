#include "host/file.h"

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

struct File::Handle {
    explicit Handle(int number) : descriptor(number) {}
    ~Handle() { ::close(descriptor); }
    Handle(Handle const &) = delete;
    Handle & operator=(Handle const &) = delete;

    int const descriptor;
};

File::File(FileLocator const & location) : fLocation(location) {}

File::~File() = default;

bool File::open(char const * mode)
{
    fHandle.reset();
    auto const & path = fLocation.path().native();
    if (mode == nullptr || std::string_view(mode) != "a+" || path.find('\0') != path.npos)
        return false;

    bool const shared = fLocation.inSharedFolder();
    // O_NONBLOCK: a pipe of that name must not make us wait.
    int const flags = O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK | (shared ? O_NOFOLLOW : 0);
    int const descriptor = ::open(path.c_str(), flags, S_IRUSR | S_IWUSR);
    if (descriptor < 0)
        return false;
    auto handle = std::make_unique<Handle>(descriptor);
    struct ::stat state;
    if (::fstat(descriptor, &state) != 0 || !S_ISREG(state.st_mode))
        return false;
    // Where others may write, they could have put a file of theirs, or a link to one of ours, in this place.
    if (shared && (state.st_uid != ::geteuid() || state.st_nlink > 1))
        return false;
    fHandle = std::move(handle);
    return true;
}

void File::writeLine(KelpString const & text)
{
    if (!fHandle)
        return;
    auto line = text.toUTF8();
    line += '\n';
    for (std::string_view rest = line; !rest.empty();) {
        auto const count = ::write(fHandle->descriptor, rest.data(), rest.size());
        if (count > 0)
            rest.remove_prefix(static_cast<std::size_t>(count));
        else if (count == 0 || errno != EINTR)
            return;
    }
}
