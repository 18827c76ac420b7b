#pragma once
#include "odbomodule/host/export.h"
#include "odbomodule/host/kelp_string.h"

#include <cstdint>
#include <memory>
class File;
class MDXQuery;

// A file into which the host has its statements written, with the time that each took. Switched on by a machine
// setting and handed out by the generator, which owns it. From one thread at a time. Nothing that goes wrong with
// the file is reported.
class MDX_API MDXQueryLog {
public:
    // Runs from when it is made. Belongs to the host from timeQuery until logQuery takes it.
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

    // Closed until open succeeds.
    explicit MDXQueryLog(KelpString const & cubeName);
    virtual ~MDXQueryLog();
    MDXQueryLog(MDXQueryLog const &) = delete;
    MDXQueryLog & operator=(MDXQueryLog const &) = delete;

    // Opens the file that the setting "MDX Query Log" under `registryKey` names, for appending; a bare name goes to
    // the temporary folder. "MDX Query Clock" says whether durations are wanted, false when absent. Returns false,
    // with the log closed, without the first setting or when the file cannot be opened.
    bool open(KelpString const & registryKey);

    // Writes `text` as a line of its own. Nothing happens while the log is closed.
    void logMessage(KelpString const & text);

    // Sets `*timer` to a new timer if durations are wanted, and leaves it alone if not: set it to null before. A
    // null `timer` does nothing. Pass the timer to logQuery, or delete it.
    void timeQuery(MDXQueryTimer ** timer);

    // Writes the cube's name and the statement in its multi-line form, then the seconds that `timer` has run, and
    // deletes the timer. A null timer writes no duration. With the log closed or `query` null nothing happens, and
    // a given timer stays with the caller, as it does when the statement throws: nothing is written then.
    void logQuery(MDXQuery const * query, MDXQueryTimer * timer);

private:
    std::unique_ptr<File> fFile;
    KelpString fCubeName;
    bool fClockOn = false;
};
