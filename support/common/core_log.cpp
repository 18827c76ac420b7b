#include "host/core_log.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <string>
#include <string_view>

namespace {

void write_to_standard_error(void *, std::uint32_t code, std::int32_t level, KelpString const & module,
    KelpString const & subModule, KelpString const & line)
{
    KelpString text = format_text("%s %s [%08x, level %d] %s\n", module, subModule, code, level, line);
    auto const bytes = text.toUTF8();
    std::fwrite(bytes.data(), 1, bytes.size(), stderr);
}

std::atomic<support_dll::AssertionHandler> gAssertionHandler{ nullptr };

}

struct CoreLog::Level {
    std::string module;
    KelpString subModule;
    VerbosityType level;
    Level * next;
};

CoreLog::VerbosityType * CoreLog::find(Level * first, std::string_view module, KelpString const & subModule)
{
    for (; first != nullptr; first = first->next) {
        if (first->subModule == subModule && first->module == module)
            return &first->level;
    }
    return nullptr;
}

CoreLog::VerbosityType * CoreLog::getModuleVerbosity(char const * module, KelpString const & subModule)
{
    auto & bucket = fLevels[std::accumulate(subModule.begin(), subModule.end(), std::size_t{ 0 }) % kBuckets];
    if (VerbosityType * const level = find(bucket.load(std::memory_order_acquire), module, subModule))
        return level;
    std::lock_guard<std::mutex> const guard(fMutex);
    Level * const first = bucket.load(std::memory_order_relaxed);
    if (VerbosityType * const level = find(first, module, subModule))
        return level;
    auto * const added = new Level{ module, subModule, 0, first };
    bucket.store(added, std::memory_order_release);
    return &added->level;
}

void CoreLog::log(std::uint32_t code, std::int32_t level, char const * module, KelpString const & subModule,
    std::int32_t insertCount, char16_t const * const * inserts)
{
    KelpString line;
    for (std::int32_t i = 0; i < insertCount; ++i) {
        if (i > 0)
            line += u' ';
        line += inserts[i];
    }
    KelpString const moduleName(module);
    std::lock_guard<std::mutex> const guard(fMutex);
    auto const sink = fSink == nullptr ? write_to_standard_error : fSink;
    sink(fContext, code, level, moduleName, subModule, line);
}

void CoreLog::setSink(Sink sink, void * context)
{
    std::lock_guard<std::mutex> const guard(fMutex);
    fSink = sink;
    fContext = context;
}

namespace support_dll {

CoreLog * getLogObject()
{
    // Never ended: objects that live longer than this library's static ones may still log.
    static CoreLog * const log = new CoreLog;
    return log;
}

void AssertionFailure(char const * expression, char const * file)
{
    if (auto const handler = gAssertionHandler.load()) {
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
