#include <odbomodule/memory_cube.h>

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

TEST(Cube, SaysWhatItDoesNotHave)
{
    memory_cube::Cube cube("[Sales]");
    std::pair<char const *, std::function<void()>> const rows[] = {
        { "The cube has no dimension [X]", [&] { cube.dimension("[X]"); } },
        { "The cube has no hierarchy [X]", [&] { cube.hierarchy("[X]"); } },
        { "The cube has no level [X]", [&] { cube.level("[X]"); } },
        { "The cube has no member [X]", [&] { cube.member("[X]"); } },
        { "The cube has no calculated member [X]", [&] { cube.calculation("[X]"); } },
    };
    for (auto const & [want, ask] : rows) {
        try {
            ask();
            FAIL();
        } catch (std::out_of_range const & error) {
            EXPECT_STREQ(want, error.what());
        }
    }
    memory_cube::Hierarchy * const stores = cube.add_hierarchy(cube.add_dimension("Store"));
    EXPECT_THROW(cube.add_dimension("Store"), std::invalid_argument);
    cube.add_calculation(stores, "Europe");
    BRIM_o::Calculation * found = nullptr;
    EXPECT_TRUE(stores->getCalculation(1, found));
    EXPECT_FALSE(stores->getCalculation(2, found));
}
