#include <odbomodule/host/registry.h>

#include <odbomodule/host/automation.h>

#include <algorithm>
#include <string>

namespace {

bool has_zero(KelpString const & text)
{
    return text.std::u16string::find(u'\0') != text.npos;
}

// Reads a value of the type in `flags` into `out`, which has room for `size` bytes. A name that contains a zero
// character cannot exist in the registry, so it is not found.
LSTATUS read_value(RegistryWrapper::RootKey root, KelpString const & key, KelpString const & name, DWORD flags,
    void * out, DWORD & size)
{
    if (root != RegistryWrapper::LocalMachine || has_zero(key) || has_zero(name))
        return ERROR_FILE_NOT_FOUND;
    return ::RegGetValueW(
        HKEY_LOCAL_MACHINE, ole_characters(key.c_str()), ole_characters(name.c_str()), flags, nullptr, out, &size);
}

}

bool RegistryWrapper::readRegKeyValue(
    RootKey root, KelpString const & key, KelpString const & name, KelpString & out)
{
    // The value may grow between two calls. The system replaces environment variables in it.
    std::u16string text(256, u'\0');
    for (;;) {
        auto size = static_cast<DWORD>(text.size() * sizeof(char16_t));
        LSTATUS const status = read_value(root, key, name, RRF_RT_REG_SZ, text.data(), size);
        if (status == ERROR_MORE_DATA) {
            text.resize(std::max<std::size_t>(text.size() * 2, size / sizeof(char16_t) + 1));
            continue;
        }
        if (status != ERROR_SUCCESS)
            return false;
        out = text.c_str();
        return true;
    }
}

bool RegistryWrapper::readRegKeyValue(RootKey root, KelpString const & key, KelpString const & name, bool & out)
{
    DWORD number = 0;
    DWORD size = sizeof number;
    // RRF_NOEXPAND: Wine would replace variables in a text even here, and write past the number's end.
    if (read_value(root, key, name, RRF_RT_REG_DWORD | RRF_NOEXPAND, &number, size) != ERROR_SUCCESS)
        return false;
    out = number != 0;
    return true;
}
