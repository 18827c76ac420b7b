#include "../common/paths.h"

#include <odbomodule/host/automation.h>

#include <iterator>

std::filesystem::path native_path(KelpString const & text)
{
    wchar_t const * const begin = ole_characters(text.data());
    return std::filesystem::path(begin, begin + text.size()); // not by way of UTF-8, which has no lone surrogates
}

std::filesystem::path temporary_folder()
{
    wchar_t folder[MAX_PATH + 1];
    DWORD const length = ::GetTempPathW(static_cast<DWORD>(std::size(folder)), folder);
    if (length == 0 || length >= std::size(folder))
        return {};
    return std::filesystem::path(folder, folder + length);
}
