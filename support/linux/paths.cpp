#include "../common/paths.h"

#include <cstdlib>
#include <string>

std::filesystem::path native_path(KelpString const & text)
{
    return text.toUTF8();
}

std::filesystem::path temporary_folder()
{
    char const * const folder = ::secure_getenv("TMPDIR");
    return folder != nullptr && *folder == '/' ? folder : "/tmp";
}
