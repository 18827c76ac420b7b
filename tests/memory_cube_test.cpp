#include "allocations.h"
#include "fixture.h"

#include <stdexcept>

namespace {

using namespace memory_cube;
using namespace memory_cube::conditions;

TEST(Cube, TakesTheUniqueNamesOfAServer)
{
    Cube cube("[Hotels]");
    Dimension * const property = cube.add_dimension("Property", UniqueName("[Dim Property]"));
    Hierarchy * const city = cube.add_hierarchy(property, "City", UniqueName("[Dim Property].[H1]"));
    Level * const level = cube.add_level(city, UniqueName("[Dim Property].[H1].[Level 1]"));
    Member * const member = cube.add_member(UniqueName("[Property].[City].&[42]"));
    Maker const make(cube);
    EXPECT_EQ("[Dim Property].[H1].CURRENTMEMBER ", make.current(city)->getText());
    EXPECT_EQ("[Dim Property].[x]", make.member("")->MoveToRootNode(property, "x")->getText());
    EXPECT_EQ("[Dim Property].[H1].[Level 1].MEMBERS ", make.set(level)->getText());
    EXPECT_EQ("[Property].[City].&[42]", make.member(cube.member("[Property].[City].&[42]"))->getText());
    EXPECT_EQ("[Property].[City].&[42].[Zoë]", cube.add_member(member, "Zoë")->getUniqueName());
    EXPECT_EQ("[Dim Property].[H1].[Mean]", cube.add_calculation(city, "Mean")->getUniqueName());
}

// After a failed allocation, the same call succeeds.
TEST(Cube, AddsAPartCompletelyOrNotAtAll)
{
    if (!kAllocationsFail)
        GTEST_SKIP() << "allocations cannot be made to fail";
    bool failed = true;
    for (std::size_t nth = 1; failed; ++nth) {
        Cube cube("[Sales]");
        Hierarchy * const stores = cube.add_hierarchy(cube.add_dimension("A dimension with a long name"), "A hierarchy, too");
        failed = fails_at_allocation(nth, [&] {
            cube.add_level(stores, "A level");
            cube.add_calculation(stores, "A calculated member");
        });
        EXPECT_EQ(cube.levels().size(), stores->fLevels.size());
        EXPECT_EQ(cube.calculations().size(), stores->fCalculations.size());
        if (cube.levels().empty())
            cube.add_level(stores, "A level");
        if (cube.calculations().empty())
            cube.add_calculation(stores, "A calculated member");
        EXPECT_EQ(1u, stores->fLevels.size());
        EXPECT_EQ(1u, stores->fCalculations.size());
    }
}

TEST(Cube, NeverGivesAnIdTwice)
{
    Cube cube("[Sales]");
    Hierarchy * const stores = cube.add_hierarchy(cube.add_dimension("Store"));
    cube.add_calculation(stores, "North");
    cube.add_calculation(stores, "South");
    stores->fCalculations.erase(stores->fCalculations.begin());
    cube.add_calculation(stores, "West");
    std::vector<BRIM_o::CalculationId> ids;
    stores->getCalculationIds(ids);
    EXPECT_EQ((std::vector<BRIM_o::CalculationId>{ 2, 3 }), ids);
    BRIM_o::Calculation * found = nullptr;
    EXPECT_FALSE(stores->getCalculation(1, found));
    EXPECT_TRUE(stores->getCalculation(2, found));
}

TEST(Cube, KeepsItsPartsWhenItIsMoved)
{
    Cube cube("[Sales]", true);
    Dimension * const store = cube.add_dimension("Store");
    Hierarchy * const stores = cube.add_hierarchy(store);
    Member const * const japan = cube.add_member(UniqueName("[Store].[Japan]"));
    Level * const city = cube.add_level(stores, "City");
    cube.add_calculation(stores, "North");
    Cube & same = cube;
    cube = std::move(same);
    EXPECT_EQ(store, cube.dimension("[Store]"));
    Cube other("[Other]");
    other = std::move(cube);
    EXPECT_EQ(store, other.dimension("[Store]"));
    EXPECT_EQ(stores, other.hierarchy("[Store]"));
    EXPECT_EQ(japan, other.member("[Store].[Japan]"));
    EXPECT_THROW(other.member("[Store].[Ireland]"), std::out_of_range);
    EXPECT_EQ(city, stores->getLevel(0));
    EXPECT_EQ(nullptr, stores->getLevel(1));
    EXPECT_THROW(other.add_level(stores, "City"), std::invalid_argument);
    EXPECT_THROW(other.add_calculation(stores, "North"), std::invalid_argument);
    other.add_calculation(stores, "South");
    std::vector<BRIM_o::CalculationId> ids;
    stores->getCalculationIds(ids);
    EXPECT_EQ((std::vector<BRIM_o::CalculationId>{ 1, 2 }), ids);
    EXPECT_EQ("[Sales]", other.name());
    EXPECT_TRUE(other.flat_hierarchy_names());
}

struct Conditions : testing::Test {
    Maker const make{ "[Sales]" };
    RefPtr<MDXField> const sales = make.member("S");
    RefPtr<MDXTuple> const key = make.tuple({ sales, make.member("Y") });

    std::string mdx_of(Condition const & condition) const { return make.value(condition, key)->getText().toUTF8(); }
};

TEST_F(Conditions, ShareNodesThatNeverChange)
{
    Condition child = value(sales) > 1;
    Condition not_child = !child;
    Condition const copy = not_child;
    not_child = std::move(static_cast<Condition &>(*not_child.getChildren()[0]));
    EXPECT_EQ("S > 1", mdx_of(not_child));
    EXPECT_EQ("NOT( S > 1 )", mdx_of(copy));
    Condition & same = child;
    child = std::move(same);
    EXPECT_EQ("S > 1", mdx_of(child));
    Condition const moved = std::move(child);
    EXPECT_EQ("S > 1", mdx_of(child));
}

TEST_F(Conditions, MayHaveAMillionTerms)
{
#ifdef SANITIZED
    constexpr std::size_t count = 100'000; // the sanitizers make them slow
#else
    constexpr std::size_t count = 1'000'000;
#endif
    std::size_t const length = std::string_view("S > 1 AND ").size() * count - std::string_view(" AND ").size();
    EXPECT_EQ(length, mdx_of(all_of(std::vector(count, value(sales) > 1))).size());

    Condition chain = sales; // too deep to translate, but it can be built, copied and destroyed
    for (std::size_t i = 0; i < count; ++i)
        chain = chain && sales;
    Condition const copy = chain;
    chain = sales;
}

TEST_F(Conditions, NeedTheTupleThatTheyName)
{
    RefPtr<MDXSet> const rows = make.set("A");
    EXPECT_EQ(raises(MDX_ERR_MISSING_TUPLE), error_of([&] { take_filter(rows, sales || current() > 1); }));
    EXPECT_EQ(raises(MDX_ERR_MISSING_TUPLE), error_of([&] { make.value(-current()); }));
    EXPECT_EQ("A", rows->getText());
    take_filter(rows, current() > 1, key);
    take_filter(rows, Condition(sales));
    EXPECT_EQ("FILTER( FILTER( A, ( S, Y )  > 1), S)", rows->getText());
}

TEST(Maker, WritesNumbersOfAnySize)
{
    Maker const make("[Sales]");
    EXPECT_EQ("4000000000", make.value(4000000000u)->getText());
    EXPECT_EQ("-9007199254740993", make.value(-9007199254740993)->getText());
    EXPECT_EQ("1.5", make.value(1.5)->getText());
}

TEST(Statements, TakePropertiesAsPairs)
{
    Maker const make("[Sales]");
    RefPtr const query = make.create();
    add_formula(query, make.member("[M]"), make.value(1), { { "FORMAT_STRING", "'0'" }, { "LANGUAGE", "2057" } }, 2);
    EXPECT_EQ("CREATE MEMBER [Sales].[M] AS ' 1 ' , SOLVE_ORDER = 2, FORMAT_STRING = '0', LANGUAGE = 2057 ", query->getText(false));
}

}
