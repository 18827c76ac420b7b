#pragma once
#include "host/core_log.h"
#include "host/export.h"
#include "host/kelp_string.h"

#include <cstdint>
#include <memory>
class WirralMutex;

namespace support {

struct LifeLine;
struct ObjectClass;

// What every statement and expression is: an object that counts its holders. Born with one reference, which belongs
// to whoever made it; the last unuse() deletes it. use() and unuse() may be called from any thread; everything else
// on one object from one thread at a time. Objects may be made on several threads. A class of the host's own that
// replaces use() or unuse() may not throw from them.
//
// The log gets a line when an object is created or destroyed, from level 4 of the module "MEMORY" on, and a line
// when its count is raised or lowered, from level 5 of "INTERFACE" on. The sub-module is the class's name. A line that
// the log cannot take, or for which memory runs out, is left out: it fails no holder.
class MDX_API RefCount {
public:
    RefCount(KelpString const & name, std::int32_t id);
    // A copy counts its own holders: it starts with one reference and has a mutex of its own.
    RefCount(RefCount const & other);

protected:
    // For the module's own classes: takes name and number from what their objects share.
    explicit RefCount(ObjectClass & objectClass);
    virtual ~RefCount();

public:
    // Counted objects are not meant to be assigned: reports an assertion failure and changes nothing. The
    // assignment of a derived class comes here first, then copies the fields that the class adds. It takes that class
    // alone, which hides this one on purpose.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"
#endif
    virtual RefCount & operator=(RefCount const &);
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

    // Takes a reference; returns the new count.
    virtual std::int32_t use();

    // Gives back a reference; returns the count that is left. At 0 the object is gone. If the count is 0 already,
    // reports an assertion failure and changes nothing.
    virtual std::int32_t unuse();

private:
    friend struct LifeLine;

    std::unique_ptr<WirralMutex> fMutex;
    std::int32_t fId;
    std::int32_t fRefCount = 1;
    CoreLog::VerbosityType * fInterfaceVerbosity = nullptr;
    CoreLog::VerbosityType * fMemoryVerbosity = nullptr;
    KelpString fName;
};

}
