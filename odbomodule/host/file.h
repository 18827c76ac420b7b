#pragma once
#include "odbomodule/host/export.h"
#include "odbomodule/host/kelp_string.h"

#include <filesystem>
#include <memory>

// Where a file is: a name, with or without a folder of its own.
class SUPPORT_API FileLocator {
public:
    explicit FileLocator(KelpString const & path);

    // Whether the name has a folder: a bare name has none.
    bool isLocationSet() const;

    // Puts the file, by its bare name, into the folder for temporary files.
    void setLocationToTemp();

    std::filesystem::path const & path() const { return fPath; }

    // Whether setLocationToTemp chose the folder, which other users may write to.
    bool inSharedFolder() const { return fShared; }

private:
    std::filesystem::path fPath;
    bool fShared = false;
};

// A text file in UTF-8. The destructor closes it.
class SUPPORT_API File {
public:
    explicit File(FileLocator const & location);
    ~File();
    File(File const &) = delete;
    File & operator=(File const &) = delete;

    // Opens the file in the mode "a+": made if missing, written at its end, never cut; readable by its owner
    // alone when it is made (on Windows by whom the folder lets). Others may write to it meanwhile. False when
    // that fails, for any other mode and for what is no regular file; in the temporary folder, and in any that all
    // users may write to (on Windows in the former alone), also for a symbolic link, another user's file and a file
    // with several names.
    bool open(char const * mode);

    // Appends the text and one line end by a single write, so that lines of two processes do not mix. On
    // Windows a line ends by "\r\n", also the lines that the text is made of.
    // Without an open file nothing happens; a failure to write goes unnoticed.
    void writeLine(KelpString const & text);

private:
    struct Handle;
    FileLocator fLocation;
    std::unique_ptr<Handle> fHandle;
};
