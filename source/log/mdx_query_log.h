#pragma once
#include "../host/export.h"
#include "../host/kelp_string.h"

#include <cstdint>
#include <memory>
class File;
class MDXQuery;

MDX_EXPORTS_BEGIN

/// A file of statements with the time that each took, written for the host. A setting of the machine switches it
/// on. The generator makes and owns it. Only one thread at a time may use it. A failure to write is not reported;
/// if memory runs out, std::bad_alloc is thrown.
class MDX_API MDXQueryLog {
public:
    /// Measures time from its construction on. The host owns a timer from timeQuery until logQuery deletes it.
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

    /// Opens the file that the setting "MDX Query Log" below `registryKey` names, for appending. A name without a
    /// folder goes to the temporary folder. The setting "MDX Query Clock" says whether to write durations; false if
    /// it is missing. Returns false if the first setting is missing or empty, which means that the log is off, and
    /// if the file cannot be opened.
    bool open(KelpString const & registryKey);

    /// Writes `text` as a line. Does nothing while the log is closed.
    void logMessage(KelpString const & text);

    /// Sets `*timer` to a new timer if durations are wanted; otherwise leaves it unchanged, so initialise it to
    /// null. Does nothing if `timer` is null. The caller passes the timer to logQuery or deletes it.
    void timeQuery(MDXQueryTimer ** timer);

    /// Writes the cube's name and the statement in its multi-line form. If there is a timer, also writes the
    /// seconds since its construction and deletes it. Writes nothing and leaves the timer to the caller if the log
    /// is closed, if `query` is null, or if an exception is thrown, which reaches the caller.
    void logQuery(MDXQuery const * query, MDXQueryTimer * timer);

private:
    std::unique_ptr<File> fFile;
    KelpString fCubeName;
    bool fClockOn = false;
};

MDX_EXPORTS_END
