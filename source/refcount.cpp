#include "refcount.h"

#include "frame/library_entry.h"
#include "host/wirral_mutex.h"
#include "object_class.h"

#include <iterator>

namespace support {

RefCount::RefCount(KelpString const & name, std::int32_t id)
    : fMutex(std::make_unique<WirralMutex>()), fId(id), fName(name)
{
    log_life("%s(%03d) %x created");
}

RefCount::RefCount(ObjectClass & objectClass)
    : fMutex(std::make_unique<WirralMutex>()),
      fId(objectClass.nextId++),
      fInterfaceVerbosity(objectClass.interfaceVerbosity),
      fMemoryVerbosity(objectClass.memoryVerbosity),
      fName(KelpString::Base(objectClass.name))
{
    if (fMemoryVerbosity == nullptr) { // the first object of its class
        find_level(fInterfaceVerbosity, "INTERFACE");
        find_level(fMemoryVerbosity, "MEMORY");
        objectClass.interfaceVerbosity = fInterfaceVerbosity;
        objectClass.memoryVerbosity = fMemoryVerbosity;
    }
    log_life("%s(%03d) %x created");
}

RefCount::RefCount(RefCount const & other) : RefCount(other.fName, other.fId) {}

RefCount::~RefCount()
{
    fMutex.reset();
    log_life("%s(%03d) %x destroyed");
}

RefCount & RefCount::operator=(RefCount const &)
{
    support_dll::AssertionFailure("! \"support::RefCount::operator=\"", ".\\source\\refcount");
    return *this;
}

// The mutex orders the changes of the count, so relaxed operations are enough.
static std::int32_t change(std::atomic<std::int32_t> & count, std::int32_t by) noexcept
{
    std::int32_t const now = count.load(std::memory_order_relaxed) + by;
    count.store(now, std::memory_order_relaxed);
    return now;
}

std::int32_t RefCount::use()
{
    WirralSynchronized const guard(*fMutex);
    std::int32_t const held = change(fRefCount, 1);
    log_count("%s(%03d) %x Refcount raised to %d");
    return held;
}

std::int32_t RefCount::unuse()
{
    std::int32_t left = 0;
    // The count is read before the mutex is locked, because the mutex of a deleted object is gone.
    bool held = fRefCount.load(std::memory_order_relaxed) > 0;
    if (held) {
        WirralSynchronized const guard(*fMutex);
        if (held = fRefCount.load(std::memory_order_relaxed) > 0; held) {
            left = change(fRefCount, -1);
            log_count("%s(%03d) %x Refcount lowered to %d");
        }
    }
    // The guard unlocks the mutex before the object is deleted, because the mutex is deleted with it.
    if (!held)
        support_dll::AssertionFailure("fRefCount > 0", ".\\source\\refcount");
    else if (left == 0)
        delete this;
    return left;
}

void RefCount::find_level(CoreLog::VerbosityType *& verbosity, char const * module) noexcept
{
    if (verbosity == nullptr && gCoreLog != nullptr)
        verbosity = gCoreLog->getModuleVerbosity(module, fName);
}

void RefCount::log_life(char const * format) noexcept
{
    log("MEMORY", fMemoryVerbosity, 4, format);
}

void RefCount::log_count(char const * format) noexcept
{
    log("INTERFACE", fInterfaceVerbosity, 5, format);
}

void RefCount::log(
    char const * module, CoreLog::VerbosityType *& verbosity, std::int32_t threshold, char const * format) noexcept
{
    constexpr std::uint32_t kMessageCode = 0xC2011000;
    find_level(verbosity, module);
    std::int32_t const level = verbosity == nullptr ? 0 : verbosity->load();
    if (level < threshold)
        return;
    char16_t line[128];
    void const * const address = this;
    if (suprintf(line, std::size(line), format, fName, fId, address, fRefCount.load()) == 0)
        return;
    char16_t const * const inserts[] = { line };
    gCoreLog->log(kMessageCode, level, module, fName, 1, inserts);
}

}
