#include "odbomodule/log/mdx_query_log.h"

#include "odbomodule/host/file.h"
#include "odbomodule/host/registry.h"
#include "odbomodule/statements/mdx_query.h"

#include <chrono>

// Time passed, and not the processor time that the C library's clock counts on some platforms.
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
    KelpString path;
    if (!RegistryWrapper::readRegKeyValue(RegistryWrapper::LocalMachine, registryKey, "MDX Query Log", path))
        return false;
    if (!RegistryWrapper::readRegKeyValue(RegistryWrapper::LocalMachine, registryKey, "MDX Query Clock", fClockOn))
        fClockOn = false;

    FileLocator locator(path);
    if (!locator.isLocationSet())
        locator.setLocationToTemp();
    fFile = std::make_unique<File>(locator);
    if (!fFile->open("a+")) {
        fFile.reset();
        return false;
    }
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
    fFile->writeLine(fCubeName + u": " + query->getText(true));
    if (timer == nullptr)
        return;
    double const seconds = static_cast<double>(ticks() - timer->fStartTicks) * 0.001;
    KelpString line;
    line.build("Query duration: %.3f seconds", seconds);
    fFile->writeLine(line);
    delete timer;
}
