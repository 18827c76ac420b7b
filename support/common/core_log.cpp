#include <odbomodule/host/core_log.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

void write_to_standard_error(void *, std::uint32_t code, std::int32_t level, KelpString const & module,
    KelpString const & subModule, KelpString const & line)
{
    KelpString const text = format_text("%s %s [%08x, level %d] %s\n", module, subModule, code, level, line);
    std::string const bytes = text.toUTF8();
    std::fwrite(bytes.data(), 1, bytes.size(), stderr);
}

std::atomic<support_dll::AssertionHandler> gAssertionHandler{ nullptr };

}

CoreLog::VerbosityType * CoreLog::getModuleVerbosity(char const * module, KelpString const & subModule) noexcept
{
    try {
        std::lock_guard<std::mutex> const guard(fLevelMutex);
        return &fLevels[{ module, subModule }];
    } catch (...) {
        return nullptr;
    }
}

void CoreLog::log(std::uint32_t code, std::int32_t level, char const * module, KelpString const & subModule,
    std::int32_t insertCount, char16_t const * const * inserts) noexcept
{
    try {
        KelpString line;
        for (std::int32_t i = 0; i < insertCount; ++i) {
            if (i > 0)
                line += u' ';
            line += inserts[i];
        }
        KelpString const moduleName(module);
        std::lock_guard<std::mutex> const guard(fSinkMutex);
        Sink const sink = fSink == nullptr ? write_to_standard_error : fSink;
        sink(fContext, code, level, moduleName, subModule, line);
    } catch (...) { // logging must not make its callers fail
    }
}

void CoreLog::setSink(Sink sink, void * context)
{
    std::lock_guard<std::mutex> const guard(fSinkMutex);
    fSink = sink;
    fContext = context;
}

namespace support_dll {

CoreLog * getLogObject()
{
    // Never deleted: objects that outlive this library's static objects may still write to the log.
    static CoreLog * const log = new CoreLog;
    return log;
}

void AssertionFailure(char const * expression, char const * file)
{
    if (AssertionHandler const handler = gAssertionHandler.load()) {
        handler(expression, file);
        return;
    }
    std::fprintf(stderr, "assertion failed: %s, in %s\n", expression == nullptr ? "" : expression,
        file == nullptr ? "" : file);
    std::abort();
}

AssertionHandler setAssertionHandler(AssertionHandler handler) noexcept
{
    return gAssertionHandler.exchange(handler);
}

}
