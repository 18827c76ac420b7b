#include "refcount.h"

#include "frame/library_entry.h"
#include "object_class.h"
#include "host/wirral_mutex.h"

#include <iterator>

namespace support {

// A line of the log about an object. What cannot be found or written, for lack of memory or since the log throws,
// is left out: it is no reason to fail a holder.
struct LifeLine {
    char const * module;
    CoreLog::VerbosityType * RefCount::*level; // where an object keeps the module's level
    std::int32_t lowest;                       // the level from which on the line is written
    char const * format;                       // takes the name, the id, the address and the count

    static LifeLine const kCreated, kDestroyed, kRaised, kLowered;

    void write(RefCount & object) const noexcept
    {
        find_level(object);
        std::int32_t const current = object.*level == nullptr ? 0 : (object.*level)->load();
        if (current >= lowest)
            write(object, current);
    }
    void find_level(RefCount & object) const noexcept
    {
        try {
            if (object.*level == nullptr && gCoreLog != nullptr)
                object.*level = gCoreLog->getModuleVerbosity(module, object.fName);
        } catch (...) {
        }
    }
    void write(RefCount & object, std::int32_t current) const noexcept
    {
        constexpr std::uint32_t kMessageCode = 0xC2011000;
        try {
            char16_t buffer[128];
            void const * const address = &object;
            suprintf(buffer, std::size(buffer), format, object.fName, object.fId, address, object.fRefCount);
            char16_t const * const inserts[] = { buffer };
            gCoreLog->log(kMessageCode, current, module, object.fName, 1, inserts);
        } catch (...) {
        }
    }
};

LifeLine const LifeLine::kCreated{ "MEMORY", &RefCount::fMemoryVerbosity, 4, "%s(%03d) %x created" };
LifeLine const LifeLine::kDestroyed{ "MEMORY", &RefCount::fMemoryVerbosity, 4, "%s(%03d) %x destroyed" };
LifeLine const LifeLine::kRaised{ "INTERFACE", &RefCount::fInterfaceVerbosity, 5,
    "%s(%03d) %x Refcount raised to %d" };
LifeLine const LifeLine::kLowered{ "INTERFACE", &RefCount::fInterfaceVerbosity, 5,
    "%s(%03d) %x Refcount lowered to %d" };

RefCount::RefCount(KelpString const & name, std::int32_t id)
    : fMutex(std::make_unique<WirralMutex>()), fId(id), fName(name)
{
    LifeLine::kCreated.write(*this);
}

RefCount::RefCount(ObjectClass & objectClass)
    : fMutex(std::make_unique<WirralMutex>()),
      fId(objectClass.nextId++),
      fInterfaceVerbosity(objectClass.interfaceVerbosity),
      fMemoryVerbosity(objectClass.memoryVerbosity),
      fName(KelpString::Base(objectClass.name))
{
    if (fMemoryVerbosity == nullptr) { // the first object of its class
        LifeLine::kRaised.find_level(*this);
        LifeLine::kCreated.find_level(*this);
        objectClass.interfaceVerbosity = fInterfaceVerbosity;
        objectClass.memoryVerbosity = fMemoryVerbosity;
    }
    LifeLine::kCreated.write(*this);
}

RefCount::RefCount(RefCount const & other) : RefCount(other.fName, other.fId) {}

RefCount::~RefCount()
{
    fMutex.reset();
    LifeLine::kDestroyed.write(*this);
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
    LifeLine::kRaised.write(*this);
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
            LifeLine::kLowered.write(*this);
        }
    }
    // The mutex is free before the object goes, since it goes with the object.
    if (!held)
        support_dll::AssertionFailure("fRefCount > 0", ".\\source\\refcount");
    else if (left == 0)
        delete this;
    return left;
}

}
