#pragma once
#include "export.h"
#include "kelp_string.h"

#include <atomic>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <utility>

MDX_EXPORTS_BEGIN

/// The log of the process. Each module has a level for each of its sub-modules, 0 at first. All functions may be
/// called from any thread. Logging never makes a caller fail: a line that cannot be written is dropped.
class SUPPORT_API CoreLog {
public:
    /// A level. It may be read and set at any time, through a pointer that is valid until the process ends.
    using VerbosityType = std::atomic<std::int32_t>;

    /// Receives one line, with the code, level, module and sub-module that were given to log(). The log holds its
    /// lock during the call, so lines do not mix; a sink must not call log() or setSink(). What a sink throws is
    /// ignored.
    using Sink = void (*)(void * context, std::uint32_t code, std::int32_t level, KelpString const & module,
        KelpString const & subModule, KelpString const & line);

    /// The level of a sub-module, made when it is first asked for. Null if memory runs out; the next call tries
    /// again.
    VerbosityType * getModuleVerbosity(char const * module, KelpString const & subModule) noexcept;

    /// Joins the inserts with blanks and passes the line to the sink, whatever the level is. A null insert counts
    /// as empty. Drops the line if memory runs out.
    void log(std::uint32_t code, std::int32_t level, char const * module, KelpString const & subModule,
        std::int32_t insertCount, char16_t const * const * inserts) noexcept;

    /// Sets where lines go. Null restores standard error, where they go at first.
    void setSink(Sink sink, void * context);

private:
    std::mutex fLevelMutex;
    std::map<std::pair<std::string, KelpString>, VerbosityType> fLevels; // by module and sub-module
    std::mutex fSinkMutex;
    Sink fSink = nullptr;
    void * fContext = nullptr;
};

MDX_EXPORTS_END

namespace support_dll {

/// The log of this process. It is made by the first call and never deleted.
SUPPORT_API CoreLog * getLogObject();

/// Receives the expression and the file of a failed assertion.
using AssertionHandler = void (*)(char const * expression, char const * file);

/// Reports that `expression` does not hold in `file`: writes a line to standard error and aborts the process. If a
/// handler is installed, calls the handler instead, which may return.
SUPPORT_API void AssertionFailure(char const * expression, char const * file);

/// Installs a handler for the whole process and returns the previous one. Null restores the default.
SUPPORT_API AssertionHandler setAssertionHandler(AssertionHandler handler) noexcept;

}
