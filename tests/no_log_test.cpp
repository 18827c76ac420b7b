// A process without a log: this program has the counted base alone, with a module that found none.
#include "frame/library_entry.h"
#include "refcount.h"

#include <gtest/gtest.h>

#include <memory>

CoreLog * gCoreLog = nullptr;

namespace {

class Thing final : public support::RefCount {
public:
    Thing() : RefCount(KelpString("Thing"), 0) {}
    ~Thing() override = default;
};

}

TEST(RefCountWithoutLog, CountsAndWritesNothing)
{
    CoreLog & log = *support_dll::getLogObject();
    bool written = false;
    log.setSink([](void * context, std::uint32_t, std::int32_t, KelpString const &, KelpString const &, KelpString const &) { *static_cast<bool *>(context) = true; }, &written);
    *log.getModuleVerbosity("MEMORY", "Thing") = 9;
    *log.getModuleVerbosity("INTERFACE", "Thing") = 9;
    support::RefCount * const thing = new Thing;
    EXPECT_EQ(2, thing->use());
    EXPECT_EQ(1, thing->unuse());
    EXPECT_EQ(0, thing->unuse());
    EXPECT_FALSE(written);
    log.setSink(nullptr, nullptr);
}
