#include "odbomodule/base/refcount.h"

#include "odbomodule/base/library_entry.h"
#include "odbomodule/base/object_class.h"
#include "odbomodule/host/wirral_mutex.h"

#include <iterator>

namespace support {

static constexpr std::uint32_t kMessageCode = 0xC2011000;

RefCount::RefCount(KelpString const & name, std::int32_t id)
    : fMutex(std::make_unique<WirralMutex>()), fId(id), fName(name)
{
    log(fMemoryVerbosity, "MEMORY", 4, "%s(%03d) %x created");
}

RefCount::RefCount(ObjectClass & objectClass)
    : fMutex(std::make_unique<WirralMutex>()),
      fId(objectClass.nextId++),
      fInterfaceVerbosity(objectClass.interfaceVerbosity),
      fMemoryVerbosity(objectClass.memoryVerbosity),
      fName(KelpString::Base(objectClass.name))
{
    if (fMemoryVerbosity == nullptr) { // the first object of its class
        find(fInterfaceVerbosity, "INTERFACE");
        find(fMemoryVerbosity, "MEMORY");
        objectClass.interfaceVerbosity = fInterfaceVerbosity;
        objectClass.memoryVerbosity = fMemoryVerbosity;
    }
    log(fMemoryVerbosity, "MEMORY", 4, "%s(%03d) %x created");
}

RefCount::RefCount(RefCount const & other) : RefCount(other.fName, other.fId) {}

RefCount::~RefCount()
{
    fMutex.reset();
    log(fMemoryVerbosity, "MEMORY", 4, "%s(%03d) %x destroyed");
}

RefCount & RefCount::operator=(RefCount const &)
{
    support_dll::AssertionFailure("! \"support::RefCount::operator=\"", ".\\source\\refcount");
    return *this;
}

std::int32_t RefCount::use()
{
    WirralSynchronized const guard(*fMutex);
    ++fRefCount;
    log(fInterfaceVerbosity, "INTERFACE", 5, "%s(%03d) %x Refcount raised to %d");
    return fRefCount;
}

std::int32_t RefCount::unuse()
{
    std::int32_t left = 0;
    bool held = false;
    {
        WirralSynchronized const guard(*fMutex);
        held = fRefCount > 0;
        if (held) {
            left = --fRefCount;
            log(fInterfaceVerbosity, "INTERFACE", 5, "%s(%03d) %x Refcount lowered to %d");
        }
    }
    // The mutex is free before the object goes, since it goes with the object.
    if (!held)
        support_dll::AssertionFailure("fRefCount > 0", ".\\source\\refcount");
    else if (left == 0)
        delete this;
    return left;
}

void RefCount::log(
    CoreLog::VerbosityType *& verbosity, char const * module, std::int32_t lowest, char const * format) noexcept
{
    if (verbosity == nullptr)
        find(verbosity, module);
    std::int32_t const level = verbosity == nullptr ? 0 : verbosity->load();
    if (level >= lowest)
        write(level, module, format);
}

void RefCount::find(CoreLog::VerbosityType *& verbosity, char const * module) noexcept
{
    try {
        if (gCoreLog != nullptr)
            verbosity = gCoreLog->getModuleVerbosity(module, fName);
    } catch (...) {
    }
}

void RefCount::write(std::int32_t level, char const * module, char const * format) noexcept
{
    try {
        char16_t buffer[128];
        void const * const address = this;
        suprintf(buffer, std::size(buffer), format, fName, fId, address, fRefCount);
        char16_t const * const inserts[] = { buffer };
        gCoreLog->log(kMessageCode, level, module, fName, 1, inserts);
    } catch (...) {
    }
}

}
