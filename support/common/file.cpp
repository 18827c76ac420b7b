#include <odbomodule/host/file.h>

#include "open_file.h"
#include "paths.h"

#include <chrono>
#include <string>
#include <string_view>
#include <thread>

namespace {

// Locks a file for the length of a scope. Gives up after two seconds and continues without the lock, so a hung
// process cannot block this one.
class WriteLock {
public:
    explicit WriteLock(support_dll::OpenFile & file) : fFile(file)
    {
        using namespace std::chrono;
        auto const end = steady_clock::now() + seconds(2);
        while (!fFile.lock() && steady_clock::now() < end)
            std::this_thread::sleep_for(milliseconds(1));
    }
    ~WriteLock() { fFile.unlock(); }
    WriteLock(WriteLock const &) = delete;
    WriteLock & operator=(WriteLock const &) = delete;

private:
    support_dll::OpenFile & fFile;
};

}

FileLocator::FileLocator(KelpString const & path) : fPath(native_path(path)) {}

bool FileLocator::isLocationSet() const
{
    return fPath.has_parent_path();
}

void FileLocator::setLocationToTemp()
{
    std::filesystem::path const folder = temporary_folder();
    fPath = folder.empty() ? folder : folder / fPath.filename(); // a file with an empty path cannot be opened
    fShared = true;
}

File::File(FileLocator const & location) : fLocation(location) {}

File::~File() = default;

bool File::open(char const * mode)
{
    fFile.reset();
    std::filesystem::path::string_type const & path = fLocation.path().native();
    if (mode == nullptr || std::string_view(mode) != "a+" ||
        path.find(std::filesystem::path::value_type()) != path.npos)
        return false;
    fFile = support_dll::OpenFile::open(fLocation);
    return fFile != nullptr;
}

void File::writeLine(KelpString const & text)
{
    if (!fFile)
        return;
    std::string line = support_dll::OpenFile::line_of(text);
    WriteLock const lock(*fFile);
    if (fFile->ends_within_line())
        line.insert(0, support_dll::OpenFile::line_of({}));
    for (std::string_view rest = line; !rest.empty();) {
        std::size_t const count = fFile->append(rest);
        if (count == 0)
            return;
        rest.remove_prefix(count);
    }
}
