#pragma once
#include "export.h"
#include "kelp_string.h"

#include <filesystem>
#include <memory>

namespace support_dll {
class OpenFile;
}

MDX_EXPORTS_BEGIN

/// Where a file is: its name, with or without a folder.
class SUPPORT_API FileLocator {
public:
    explicit FileLocator(KelpString const & path);

    /// Whether the name has a folder.
    bool isLocationSet() const;

    /// Moves the location to the folder for temporary files; the file keeps its bare name. If the system names no
    /// such folder, the path becomes empty, and the file cannot be opened.
    void setLocationToTemp();

    std::filesystem::path const & path() const { return fPath; }

    /// True after setLocationToTemp(): other users may write to the folder for temporary files.
    bool inSharedFolder() const { return fShared; }

private:
    std::filesystem::path fPath;
    bool fShared = false;
};

/// A text file in UTF-8 that grows by lines. The destructor closes it. If memory runs out, open() throws
/// std::bad_alloc and leaves no file open, and writeLine() throws it and writes nothing.
class SUPPORT_API File {
public:
    explicit File(FileLocator const & location);
    ~File();
    File(File const &) = delete;
    File & operator=(File const &) = delete;

    /// Opens the file for appending and reading, and creates it if it is missing. The only mode is "a+". Other
    /// programs may write to the file at the same time. On Linux only its owner can read a new file; on Windows the
    /// folder decides. Returns false for another mode, for anything but a regular file, and if the system refuses.
    ///
    /// In a folder that other users may write to, another user could have put a link or a file in this place.
    /// There, open() also returns false for a symbolic link, for a file with more than one hard link and for
    /// another user's file. This applies after setLocationToTemp() and, on Linux, to any folder that all users may
    /// write to. On Windows the owner is not checked.
    bool open(char const * mode);

    /// Appends the text and a line end. Does nothing if no file is open. On Windows all lines end in "\r\n",
    /// including those inside the text. If another process is writing, the call waits up to two seconds and then
    /// writes anyway. The lines of two processes can mix only then, or if the file system has no locks. If the file
    /// ends within a line, the text starts on a new line.
    ///
    /// A failure to write is not reported, and the rest of the line is lost. On Linux the process gets no SIGXFSZ
    /// when the file reaches its size limit.
    void writeLine(KelpString const & text);

private:
    FileLocator fLocation;
    std::unique_ptr<support_dll::OpenFile> fFile;
};

MDX_EXPORTS_END
