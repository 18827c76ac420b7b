#pragma once
#include "export.h"
#include "kelp_string.h"

#include <filesystem>
#include <memory>

// Where a file is: its name, with or without a folder.
class SUPPORT_API FileLocator {
public:
    explicit FileLocator(KelpString const & path);

    // Whether the name comes with a folder.
    bool isLocationSet() const;

    // Chooses the folder for temporary files. The file keeps its bare name.
    void setLocationToTemp();

    std::filesystem::path const & path() const { return fPath; }

    // True after setLocationToTemp: other users may write to the temporary folder.
    bool inSharedFolder() const { return fShared; }

private:
    std::filesystem::path fPath;
    bool fShared = false;
};

// A text file in UTF-8. The destructor closes it. When memory runs out, std::bad_alloc passes through; no file is
// left open then by open(), and nothing is written by writeLine().
class SUPPORT_API File {
public:
    explicit File(FileLocator const & location);
    ~File();
    File(File const &) = delete;
    File & operator=(File const &) = delete;

    // Opens the file for writing at its end, and makes it if it is missing. The only mode is "a+". Other programs
    // may write to the file at the same time. A new file can be read by its owner alone; on Windows the folder
    // decides who can read it. Returns false for another mode, for what is not a regular file, and when the system
    // refuses.
    //
    // In a folder that other users may write to, a link or a file of theirs could stand in the file's place. So it
    // also returns false there for a symbolic link, for a file with several names, and for another user's file.
    // Such a folder is the temporary one, and any that all users may write to. Windows knows the temporary one
    // alone, and does not look at the file's owner.
    bool open(char const * mode);

    // Appends the text and a line end. Lines of two processes do not mix. On Windows a line ends in "\r\n", and so
    // does each line within the text. Does nothing when no file is open. A failure to write is not reported, and
    // what is missing then is not written later; the next line of this object starts on a line of its own all the
    // same. On Windows, a process that hangs while it writes is waited for two seconds. Elsewhere a limit of the
    // file's size is a failure like any other: its signal, SIGXFSZ, does not reach the process.
    void writeLine(KelpString const & text);

private:
    struct Handle;
    FileLocator fLocation;
    std::unique_ptr<Handle> fHandle;
};
