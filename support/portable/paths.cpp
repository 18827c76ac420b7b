#include "common/paths.h"

#include <string>

std::filesystem::path native_path(KelpString const & text)
{
    return text.toUTF8();
}

std::filesystem::path temporary_folder()
{
    std::error_code failure;
    auto folder = std::filesystem::temp_directory_path(failure);
    return failure ? "/tmp" : folder;
}
