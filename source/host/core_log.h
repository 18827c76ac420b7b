#pragma once
#include "export.h"
#include "kelp_string.h"

#include <atomic>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <utility>

// The log of the process. Each module has a level for each of its sub-modules, 0 at first.
// Everything may be called from any thread.
class SUPPORT_API CoreLog {
public:
    // A level. It may be read and set at any time, by a pointer that stays valid until the process ends.
    using VerbosityType = std::atomic<std::int32_t>;

    // Takes one line, and the code, level, module and sub-module that were given to log(). Called under the log's
    // lock, so that lines do not mix: it must not call log() or setSink(). What it throws passes through log().
    using Sink = void (*)(void * context, std::uint32_t code, std::int32_t level, KelpString const & module,
        KelpString const & subModule, KelpString const & line);

    // The level of a sub-module, made when it is first asked for. Never null.
    VerbosityType * getModuleVerbosity(char const * module, KelpString const & subModule);

    // Joins the inserts by blanks and passes the line to the sink, whatever the level.
    void log(std::uint32_t code, std::int32_t level, char const * module, KelpString const & subModule,
        std::int32_t insertCount, char16_t const * const * inserts);

    // Sets where lines go; null brings back standard error.
    void setSink(Sink sink, void * context);

private:
    std::mutex fLevelMutex;
    std::map<std::pair<std::string, KelpString>, VerbosityType> fLevels; // by module and sub-module
    std::mutex fSinkMutex;
    Sink fSink = nullptr;
    void * fContext = nullptr;
};

namespace support_dll {

// The log of this process, made at the first call and never deleted.
SUPPORT_API CoreLog * getLogObject();

// Takes the expression and the file of a failed assertion.
using AssertionHandler = void (*)(char const * expression, char const * file);

// Reports that `expression` does not hold in `file`: writes a line to standard error and aborts the process. An
// installed handler is called in place of both, and may return.
SUPPORT_API void AssertionFailure(char const * expression, char const * file);

// Installs a handler for the whole process and returns the previous one; null brings back the default.
SUPPORT_API AssertionHandler setAssertionHandler(AssertionHandler handler) noexcept;

}
