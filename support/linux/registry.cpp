#include <odbomodule/host/registry.h>

#include "descriptor.h"
#include "registry_text.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr std::size_t kLargestFile = 1024 * 1024; // in bytes

// The folders that may hold settings, the user's before the machine's. In a process that has more rights than the
// user who started it, secure_getenv returns null, so the user cannot choose a folder.
std::vector<std::string> setting_folders()
{
    std::vector<std::string> folders;
    if (char const * const folder = ::secure_getenv("XDG_CONFIG_HOME"); folder != nullptr && *folder == '/')
        folders.emplace_back(folder);
    if (char const * const home = ::secure_getenv("HOME"); home != nullptr && *home == '/')
        folders.push_back(std::string(home) + "/.config");
    folders.emplace_back("/etc");
    return folders;
}

// The bytes of a settings file. Empty if the file is missing, too large, not a regular file or unreadable.
std::string read_file(std::string const & path)
{
    Descriptor const file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    struct ::stat state;
    if (::fstat(file.number(), &state) != 0 || !S_ISREG(state.st_mode))
        return {};
    std::string bytes;
    char buffer[4096];
    while (bytes.size() <= kLargestFile) {
        ssize_t const count = ::read(file.number(), buffer, sizeof buffer);
        if (count == 0)
            return bytes;
        if (count > 0)
            bytes.append(buffer, static_cast<std::size_t>(count));
        else if (errno != EINTR)
            return {};
    }
    return {};
}

// The value from the first file that has it.
std::optional<RegistryValue> find_value(
    RegistryWrapper::RootKey root, KelpString const & key, KelpString const & name)
{
    if (root != RegistryWrapper::LocalMachine)
        return std::nullopt;
    KelpString fullKey("HKEY_LOCAL_MACHINE\\");
    fullKey += key;
    for (std::string const & folder : setting_folders()) {
        KelpString const text = KelpString::fromUTF8(read_file(folder + "/odbomodule/registry.reg"));
        if (std::optional<RegistryValue> value = find_registry_value(text, fullKey, name))
            return value;
    }
    return std::nullopt;
}

}

bool RegistryWrapper::readRegKeyValue(
    RootKey root, KelpString const & key, KelpString const & name, KelpString & out)
{
    std::optional<RegistryValue> const value = find_value(root, key, name);
    KelpString const * const text = value ? std::get_if<KelpString>(&*value) : nullptr;
    if (text != nullptr)
        out = *text;
    return text != nullptr;
}

bool RegistryWrapper::readRegKeyValue(RootKey root, KelpString const & key, KelpString const & name, bool & out)
{
    std::optional<RegistryValue> const value = find_value(root, key, name);
    std::uint32_t const * const number = value ? std::get_if<std::uint32_t>(&*value) : nullptr;
    if (number != nullptr)
        out = *number != 0;
    return number != nullptr;
}
