#pragma once
#include "../host/export.h"
#include "../host/kelp_string.h"

#include <cstdint>
#include <memory>
class File;
class MDXQuery;

MDX_EXPORTS_BEGIN

/// A file to which a host logs its statements and how long each took. A setting switches it on. The
/// generator makes and owns it. Only one thread at a time may use it. A failure to write is not reported; if memory
/// runs out, std::bad_alloc is thrown.
class MDX_API MDXQueryLog {
public:
    /// Measures the time since its construction. The host owns a timer from timeQuery until logQuery deletes it.
    class MDX_API MDXQueryTimer {
    public:
        MDXQueryTimer();
        virtual ~MDXQueryTimer();
        MDXQueryTimer(MDXQueryTimer const &) = delete;
        MDXQueryTimer & operator=(MDXQueryTimer const &) = delete;

    private:
        friend class MDXQueryLog;
        std::int64_t fStartTicks; // milliseconds
    };

    /// The log is closed until open succeeds.
    explicit MDXQueryLog(KelpString const & cubeName);
    virtual ~MDXQueryLog();
    MDXQueryLog(MDXQueryLog const &) = delete;
    MDXQueryLog & operator=(MDXQueryLog const &) = delete;

    /// Opens a file for appending. The setting "MDX Query Log" under `registryKey` holds its name. A name without a
    /// folder goes to the temporary folder. The setting "MDX Query Clock" says whether to write durations; false if
    /// it is missing. Returns false if the log is off (the first setting is missing or empty) or the file cannot be
    /// opened.
    bool open(KelpString const & registryKey);

    /// Writes `text` as a line. Does nothing while the log is closed.
    void logMessage(KelpString const & text);

    /// Sets `*timer` to a new timer if durations are wanted; otherwise leaves it unchanged, so initialise it to
    /// null. Does nothing if `timer` is null. The caller passes the timer to logQuery or deletes it.
    void timeQuery(MDXQueryTimer ** timer);

    /// Writes the cube's name and the statement in its multi-line form. If there is a timer, also writes the
    /// seconds since its construction and deletes it. If the log is closed, `query` is null or this function
    /// throws, it writes nothing and leaves the timer to the caller.
    void logQuery(MDXQuery const * query, MDXQueryTimer * timer);

private:
    std::unique_ptr<File> fFile;
    KelpString fCubeName;
    bool fClockOn = false;
};

MDX_EXPORTS_END
