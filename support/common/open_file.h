#pragma once
#include <odbomodule/host/file.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace support_dll {

// A file that is open for appending: the part of File that each platform does in its own way.
class OpenFile {
public:
    // Opens a file by the rules of File::open. Returns null if the file is refused or cannot be opened.
    static std::unique_ptr<OpenFile> open(FileLocator const & location);

    // The text and a line end, as this platform writes lines.
    static std::string line_of(KelpString const & text);

    virtual ~OpenFile() = default;

    // Locks the file against other writers. Returns false if another writer holds the lock. Returns true if the
    // file system has no locks.
    virtual bool lock() noexcept = 0;
    virtual void unlock() noexcept = 0;

    // Whether the file ends within a line, as it does after a write that failed.
    virtual bool ends_within_line() noexcept = 0;

    // Writes bytes to the end of the file. Returns how many were written, or 0 on failure.
    virtual std::size_t append(std::string_view bytes) noexcept = 0;
};

}
