#include <odbomodule/host/file.h>

#include <odbomodule/host/automation.h>

#include <string>
#include <string_view>

struct File::Handle {
    Handle() = default;
    ~Handle()
    {
        if (file != INVALID_HANDLE_VALUE)
            ::CloseHandle(file);
    }
    Handle(Handle const &) = delete;
    Handle & operator=(Handle const &) = delete;

    HANDLE file = INVALID_HANDLE_VALUE;
    bool cut = false; // whether what was last written ends amid a line
};

namespace {

// Keeps out other processes that write by this class, for the length of a scope. On the system's own file systems a
// handle that may only append writes in one piece, but not on every other one. The lock is on a byte beyond the end
// of any file, so that readers are not kept out. Who does not give it back in time is not waited for.
class WriteLock {
public:
    explicit WriteLock(HANDLE file) : fFile(file)
    {
        fPlace.OffsetHigh = MAXLONG;
        constexpr ULONGLONG kLongestWait = 2000; // in milliseconds
        ULONGLONG const start = ::GetTickCount64();
        while (!lock() && ::GetLastError() == ERROR_LOCK_VIOLATION && ::GetTickCount64() - start < kLongestWait)
            ::Sleep(1);
    }
    ~WriteLock()
    {
        if (fHeld)
            ::UnlockFileEx(fFile, 0, 1, 0, &fPlace);
    }
    WriteLock(WriteLock const &) = delete;
    WriteLock & operator=(WriteLock const &) = delete;

private:
    bool lock()
    {
        DWORD const flags = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
        fHeld = ::LockFileEx(fFile, flags, 0, 1, 0, &fPlace) != FALSE;
        return fHeld;
    }

    HANDLE const fFile;
    OVERLAPPED fPlace{};
    bool fHeld = false;
};

// The text as a line of this system: it ends in "\r\n", and so does each line within it.
std::string line_of(KelpString const & text)
{
    std::string const plain = text.toUTF8();
    std::string line;
    line.reserve(plain.size() + plain.size() / 32 + 2);
    char previous = '\0';
    for (char const character : plain) {
        if (character == '\n' && previous != '\r')
            line += '\r';
        line += character;
        previous = character;
    }
    return line += "\r\n";
}

}

File::File(FileLocator const & location) : fLocation(location) {}

File::~File() = default;

bool File::open(char const * mode)
{
    fHandle.reset();
    std::wstring const & path = fLocation.path().native();
    if (mode == nullptr || std::string_view(mode) != "a+" || path.find(L'\0') != path.npos)
        return false;

    bool const shared = fLocation.inSharedFolder();
    auto handle = std::make_unique<Handle>(); // may fail, while no file is open yet
    // Others may append to the file, read it and move it while it is open. A handle that may do no more than append
    // writes at the end, wherever the end is by then.
    handle->file = ::CreateFileW(path.c_str(),
        FILE_APPEND_DATA | FILE_READ_DATA | FILE_READ_ATTRIBUTES | SYNCHRONIZE,
        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
        FILE_ATTRIBUTE_NORMAL | (shared ? FILE_FLAG_OPEN_REPARSE_POINT : 0), nullptr);
    if (handle->file == INVALID_HANDLE_VALUE)
        return false;
    BY_HANDLE_FILE_INFORMATION state;
    if (::GetFileType(handle->file) != FILE_TYPE_DISK || !::GetFileInformationByHandle(handle->file, &state) ||
        (state.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return false;
    if (shared && ((state.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 || state.nNumberOfLinks > 1))
        return false;
    fHandle = std::move(handle);
    return true;
}

void File::writeLine(KelpString const & text)
{
    if (!fHandle)
        return;
    std::string line = line_of(text);
    if (fHandle->cut)
        line.insert(0, "\r\n");
    WriteLock const lock(fHandle->file);
    for (std::string_view rest = line; !rest.empty();) {
        DWORD const part = rest.size() > MAXLONG ? MAXLONG : static_cast<DWORD>(rest.size());
        DWORD written = 0;
        if (!::WriteFile(fHandle->file, rest.data(), part, &written, nullptr) || written == 0)
            return;
        fHandle->cut = rest[written - 1] != '\n';
        rest.remove_prefix(written);
    }
}
