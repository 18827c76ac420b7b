#include "../common/open_file.h"

#include <odbomodule/host/automation.h>

namespace {

class WindowsFile final : public support_dll::OpenFile {
public:
    WindowsFile() noexcept { fLockedByte.OffsetHigh = MAXLONG; }
    ~WindowsFile() override
    {
        if (fFile != INVALID_HANDLE_VALUE)
            ::CloseHandle(fFile);
    }
    WindowsFile(WindowsFile const &) = delete;
    WindowsFile & operator=(WindowsFile const &) = delete;

    bool lock() noexcept override
    {
        DWORD const flags = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
        return ::LockFileEx(fFile, flags, 0, 1, 0, &fLockedByte) || ::GetLastError() != ERROR_LOCK_VIOLATION;
    }
    void unlock() noexcept override { ::UnlockFileEx(fFile, 0, 1, 0, &fLockedByte); }

    bool ends_within_line() noexcept override
    {
        LARGE_INTEGER size;
        if (!::GetFileSizeEx(fFile, &size) || size.QuadPart == 0)
            return false;
        size.QuadPart -= 1;
        OVERLAPPED place{};
        place.Offset = size.LowPart;
        place.OffsetHigh = static_cast<DWORD>(size.HighPart);
        char last = '\n';
        DWORD count = 0;
        return ::ReadFile(fFile, &last, 1, &count, &place) && last != '\n';
    }

    std::size_t append(std::string_view bytes) noexcept override
    {
        DWORD const part = bytes.size() > MAXLONG ? MAXLONG : static_cast<DWORD>(bytes.size());
        DWORD written = 0;
        return ::WriteFile(fFile, bytes.data(), part, &written, nullptr) ? written : 0;
    }

    HANDLE fFile = INVALID_HANDLE_VALUE;

private:
    OVERLAPPED fLockedByte{}; // beyond the end of any file, so the lock does not keep readers out
};

}

std::unique_ptr<support_dll::OpenFile> support_dll::OpenFile::open(FileLocator const & location)
{
    bool const shared = location.inSharedFolder();
    auto result = std::make_unique<WindowsFile>(); // may throw, so it is made before the file is opened
    // Other programs may append to the file, read it and move it while it is open. An append-only handle always
    // writes at the current end, even after another program has appended.
    result->fFile = ::CreateFileW(location.path().c_str(),
        FILE_APPEND_DATA | FILE_READ_DATA | FILE_READ_ATTRIBUTES | SYNCHRONIZE,
        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
        FILE_ATTRIBUTE_NORMAL | (shared ? FILE_FLAG_OPEN_REPARSE_POINT : 0), nullptr);
    if (result->fFile == INVALID_HANDLE_VALUE)
        return nullptr;
    BY_HANDLE_FILE_INFORMATION state;
    if (::GetFileType(result->fFile) != FILE_TYPE_DISK || !::GetFileInformationByHandle(result->fFile, &state) ||
        (state.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return nullptr;
    if (shared && ((state.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 || state.nNumberOfLinks > 1))
        return nullptr;
    return result;
}

std::string support_dll::OpenFile::line_of(KelpString const & text)
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
