#pragma once
#include "../host/export.h"
#include "../host/kelp_string.h"

#include <cstdint>
#include <memory>
class File;
class MDXQuery;

// A file into which the host has its statements written, with the time that each took. A setting of the machine
// switches it on; the generator hands it out and owns it. Used from one thread at a time. A failure to write is not
// reported; when memory runs out, std::bad_alloc passes through.
class MDX_API MDXQueryLog {
public:
    // Measures time from its construction on. Belongs to the host from timeQuery until logQuery deletes it.
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

    // Opens the file that the setting "MDX Query Log" under `registryKey` names, for appending. A bare name goes to
    // the temporary folder. The setting "MDX Query Clock" says whether durations are wanted; false when absent.
    // Returns false without the first setting, for an empty name, which means that the log is off, and when the file
    // cannot be opened.
    bool open(KelpString const & registryKey);

    // Writes `text` as a line of its own. Nothing happens while the log is closed.
    void logMessage(KelpString const & text);

    // Sets `*timer` to a new timer if durations are wanted, and leaves it alone if not: set it to null before. Does
    // nothing for a null `timer`. The caller passes the timer to logQuery or deletes it.
    void timeQuery(MDXQueryTimer ** timer);

    // Writes the cube's name and the statement in its multi-line form. With a timer, writes the seconds that it has
    // run and deletes it; without one, no duration. While the log is closed, for a null `query`, and when the
    // statement throws or memory runs out, nothing is written and the timer still belongs to the caller.
    void logQuery(MDXQuery const * query, MDXQueryTimer * timer);

private:
    std::unique_ptr<File> fFile;
    KelpString fCubeName;
    bool fClockOn = false;
};
