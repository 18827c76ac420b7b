#include "mdx_query_log.h"

#include "../host/file.h"
#include "../host/registry.h"
#include "../statements/mdx_query.h"

#include <chrono>
#include <utility>

// Elapsed milliseconds. Not std::clock(), which counts processor time on some platforms.
static std::int64_t ticks()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

MDXQueryLog::MDXQueryTimer::MDXQueryTimer() : fStartTicks(ticks()) {}

MDXQueryLog::MDXQueryTimer::~MDXQueryTimer() = default;

MDXQueryLog::MDXQueryLog(KelpString const & cubeName) : fCubeName(cubeName) {}

MDXQueryLog::~MDXQueryLog() = default;

bool MDXQueryLog::open(KelpString const & registryKey)
{
    fFile.reset();
    KelpString path;
    if (!RegistryWrapper::readRegKeyValue(RegistryWrapper::LocalMachine, registryKey, "MDX Query Log", path))
        return false;
    if (!RegistryWrapper::readRegKeyValue(RegistryWrapper::LocalMachine, registryKey, "MDX Query Clock", fClockOn))
        fClockOn = false;
    if (path.empty())
        return false; // the log is off

    FileLocator locator(path);
    if (!locator.isLocationSet())
        locator.setLocationToTemp();
    auto file = std::make_unique<File>(locator);
    if (!file->open("a+"))
        return false;
    fFile = std::move(file);
    return true;
}

void MDXQueryLog::logMessage(KelpString const & text)
{
    if (fFile)
        fFile->writeLine(text);
}

void MDXQueryLog::timeQuery(MDXQueryTimer ** timer)
{
    if (timer != nullptr && fClockOn)
        *timer = new MDXQueryTimer;
}

void MDXQueryLog::logQuery(MDXQuery const * query, MDXQueryTimer * timer)
{
    if (!fFile || query == nullptr)
        return;
    KelpString entry = fCubeName + u": " + query->getText(true);
    if (timer != nullptr)
        entry += format_text(
            "\nQuery duration: %.3f seconds", static_cast<double>(ticks() - timer->fStartTicks) * 0.001);
    fFile->writeLine(entry); // one call: if it throws, nothing is written, and the host may log the statement again
    delete timer;
}
