// A process without a log: this program has the counted base alone, with a module that found none.
#include <odbomodule/frame/library_entry.h>
#include <odbomodule/refcount.h>

#include <gtest/gtest.h>

CoreLog * gCoreLog = nullptr;

TEST(RefCountWithoutLog, CountsAllTheSame)
{
    struct Thing final : support::RefCount {
        using RefCount::RefCount;
    };
    support::RefCount * const thing = new Thing("Thing", 0);
    EXPECT_EQ(2, thing->use());
    EXPECT_EQ(1, thing->unuse());
    EXPECT_EQ(0, thing->unuse());
}
