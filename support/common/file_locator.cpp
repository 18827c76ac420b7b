#include <odbomodule/host/file.h>

#include "paths.h"

FileLocator::FileLocator(KelpString const & path) : fPath(native_path(path)) {}

bool FileLocator::isLocationSet() const
{
    return fPath.has_parent_path();
}

void FileLocator::setLocationToTemp()
{
    fPath = temporary_folder() / fPath.filename();
    fShared = true;
}
