#pragma once
#include "odbomodule/host/export.h"
#include "odbomodule/host/kelp_string.h"

#include <atomic>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <utility>

// The process-wide log of the support library. Each module has a level for each of its sub-modules, 0 at
// first. Everything may be called from any thread.
class SUPPORT_API CoreLog {
public:
    // Levels may be read and set at any time, by a pointer that stays valid as long as the process.
    using VerbosityType = std::atomic<std::int32_t>;

    // Takes one line: code, level, module, sub-module and the line itself. Called with the log's lock held,
    // so that lines do not mix; it must not call the log.
    using Sink = void (*)(void * context, std::uint32_t code, std::int32_t level, KelpString const & module,
        KelpString const & subModule, KelpString const & line);

    // The level of a sub-module, made at the first request. Never null.
    VerbosityType * getModuleVerbosity(char const * module, KelpString const & subModule);

    // Passes the inserts, joined by blanks, to the sink.
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

// The log of this process: made at the first call, never ended.
SUPPORT_API CoreLog * getLogObject();

// Takes a failed assertion's expression and file.
using AssertionHandler = void (*)(char const * expression, char const * file);

// Reports that `expression` does not hold in `file`: one line on standard error, then the process stops.
// An installed handler takes the place of both, and may return.
SUPPORT_API void AssertionFailure(char const * expression, char const * file);

// Installs a handler for the whole process and returns the one before; null brings back the default.
SUPPORT_API AssertionHandler setAssertionHandler(AssertionHandler handler) noexcept;

}
