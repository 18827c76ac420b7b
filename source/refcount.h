#pragma once
#include "host/core_log.h"
#include "host/export.h"
#include "host/kelp_string.h"

#include <atomic>
#include <cstdint>
#include <memory>
class WirralMutex;

MDX_EXPORTS_BEGIN

namespace support {

struct ObjectClass;

/// The base of every statement and expression: an object that counts its holders.
///
/// A new object has one reference, which belongs to whoever made it. The last unuse() deletes the object. Only
/// use() and unuse() of one object may be called from several threads at once; different objects may be made and
/// used on different threads. An override of use() or unuse() must not throw.
///
/// The log records when an object is created and destroyed (module "MEMORY", level 4 and above) and when its count
/// changes (module "INTERFACE", level 5 and above). The sub-module is the name that the object was made with, such
/// as MDXSet for all kinds of set. Logging never makes an operation fail: a line that cannot be written is dropped.
class MDX_API RefCount {
public:
    RefCount(KelpString const & name, std::int32_t id);
    /// A copy has its own mutex and one reference.
    RefCount(RefCount const & other);

protected:
    /// For the module's own classes, whose objects share a name and a counter.
    explicit RefCount(ObjectClass & objectClass);
    virtual ~RefCount();

public:
    /// Reports an assertion failure and changes nothing: counted objects are not meant to be assigned. Derived
    /// classes hide this operator on purpose, so the warning is off. Most of them call it before they copy their
    /// fields; MDXSet only copies its texts.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"
#endif
    virtual RefCount & operator=(RefCount const &);
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

    /// Takes a reference. Returns the new count.
    virtual std::int32_t use();

    /// Gives back a reference. Returns the count that is left; at 0 the object has been deleted. One call too many
    /// reports an assertion failure and changes nothing; it is detected reliably only if the operator delete of the
    /// class keeps the storage.
    virtual std::int32_t unuse();

private:
    void find_level(CoreLog::VerbosityType *& verbosity, char const * module) noexcept;
    void log_life(char const * format) noexcept;
    void log_count(char const * format) noexcept;
    void log(char const * module, CoreLog::VerbosityType *& verbosity, std::int32_t threshold,
        char const * format) noexcept;

    std::unique_ptr<WirralMutex> fMutex;
    std::int32_t fId;
    std::atomic<std::int32_t> fRefCount{ 1 }; // changed under the mutex
    CoreLog::VerbosityType * fInterfaceVerbosity = nullptr;
    CoreLog::VerbosityType * fMemoryVerbosity = nullptr;
    KelpString fName;
};

}

MDX_EXPORTS_END
