#pragma once
#include "odbomodule/host/export.h"
#include "odbomodule/host/kelp_string.h"

// Reads settings. On Windows the registry; elsewhere text files in the registry's export format, looked for
// as odbomodule/registry.reg under $XDG_CONFIG_HOME, ~/.config and /etc; the first that has the value wins.
class SUPPORT_API RegistryWrapper {
public:
    enum RootKey : int { LocalMachine = 3 };

    // Reads the value `name` under `key` (names joined by "\\", matching in either case). False when it is
    // absent, of another type, or cannot be read; `out` is then left alone. A text of the expandable kind, which
    // only the registry itself has, comes with its variables put in. A bool is a number, 0 for false.
    static bool readRegKeyValue(RootKey root, KelpString const & key, KelpString const & name, KelpString & out);
    static bool readRegKeyValue(RootKey root, KelpString const & key, KelpString const & name, bool & out);
};
