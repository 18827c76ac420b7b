#pragma once
#include "export.h"
#include "kelp_string.h"

/// Reads the settings. On Windows they are the machine's, in the registry. On Linux they are in text files in a
/// subset of the registry's export format, the user's files before the machine's; see docs/settings.md.
class SUPPORT_API RegistryWrapper {
public:
    enum RootKey : int { LocalMachine = 3 };

    /// Reads the value `name` under `key`, a path of names joined by "\\". Names are not case-sensitive; on Linux
    /// this holds for ASCII letters only. A bool is stored as a number, 0 for false. Returns false if the value is
    /// missing, has another type or cannot be read; `out` is unchanged then. On Windows, environment variables in a
    /// REG_EXPAND_SZ text are replaced by their values. Throws std::bad_alloc if memory runs out.
    static bool readRegKeyValue(RootKey root, KelpString const & key, KelpString const & name, KelpString & out);
    static bool readRegKeyValue(RootKey root, KelpString const & key, KelpString const & name, bool & out);
};
