// RefCount in a process without a log: this program compiles refcount.cpp itself, and its module has no log.
#include <odbomodule/frame/library_entry.h>
#include <odbomodule/refcount.h>

#include <gtest/gtest.h>

CoreLog * gCoreLog = nullptr;

TEST(RefCountWithoutLog, StillCounts)
{
    struct Thing final : support::RefCount {
        using RefCount::RefCount;
    };
    support::RefCount * const thing = new Thing("Thing", 0);
    EXPECT_EQ(2, thing->use());
    EXPECT_EQ(1, thing->unuse());
    EXPECT_EQ(0, thing->unuse());
}
