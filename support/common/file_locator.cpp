#include "host/file.h"

#include <string>

namespace {

std::filesystem::path path_of(KelpString const & text)
{
    auto const bytes = text.toUTF8();
    return std::u8string(bytes.begin(), bytes.end());
}

}

FileLocator::FileLocator(KelpString const & path) : fPath(path_of(path)) {}

bool FileLocator::isLocationSet() const
{
    return fPath.has_parent_path();
}

void FileLocator::setLocationToTemp()
{
    std::error_code failure;
    auto folder = std::filesystem::temp_directory_path(failure);
    if (failure)
        folder = "/tmp";
    fPath = folder / fPath.filename();
    fShared = true;
}
