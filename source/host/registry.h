#pragma once
#include "export.h"
#include "kelp_string.h"

// Reads the settings of the machine. On Windows they are in the registry. Elsewhere they are in text files in the
// registry's export format: odbomodule/registry.reg under $XDG_CONFIG_HOME, then ~/.config, then /etc. The first
// file that has the value counts, or removes it: a line `"name"=-` removes what stands before it and in later
// files, and `[-key]` does so for all values of that key and of those below it. A file of more than 1 MiB, one that
// cannot be read to its end, and what is not a regular file count as missing.
class SUPPORT_API RegistryWrapper {
public:
    enum RootKey : int { LocalMachine = 3 };

    // Reads the value `name` under `key`, which is a path of names joined by "\\". Names match in either case. A
    // bool is stored as a number, 0 for false. Returns false when the value is absent, has another type or cannot
    // be read, and leaves `out` alone then. In Windows' registry a text may hold variables: they come with their
    // values put in. Lack of memory is thrown as std::bad_alloc.
    static bool readRegKeyValue(RootKey root, KelpString const & key, KelpString const & name, KelpString & out);
    static bool readRegKeyValue(RootKey root, KelpString const & key, KelpString const & name, bool & out);
};
