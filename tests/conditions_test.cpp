#include "fixture.h"

#include <initializer_list>
#include <utility>
#include <vector>
#if defined(__linux__)
#include <pthread.h>
#endif

namespace {

using namespace BRIM_o;
using namespace memory_cube::conditions;
using memory_cube::Condition;

MDXSet * filter_without_value(Fixture & f)
{
    Condition truth(true);
    AskedNode node(truth);
    node.fHasValue = false;
    return f.set->Filter(&node, f.single);
}

// What the table of kinds in the reference of the operations does not show.
TEST(Conditions, Texts)
{
    expect_operations<MDXSet, kBoth>({
        { CALL(filter_without_value(f)), raises(MDX_ERR_BAD_EXPRESSION) },
        { CALL(f.set->Filter(current().get(), f.tuple)), "( [F], [G] ) " },
        { CALL(f.set->Filter(current().get(), f.empty)), raises(MDX_ERR_EMPTY_TUPLE) },
        { CALL(f.set->TakeFilter(current_set().get(), nullptr)), "FILTER( {A}, {A})" },
    });
}

// A tree of that many nodes, each below the operand of the one above that has the number `place`.
[[maybe_unused]] Condition deep(ExpressionType kind, std::size_t place, int levels)
{
    Condition tree = mdx("a");
    for (int level = 0; level < levels; ++level) {
        std::vector<Condition> operands(3, mdx("b"));
        operands[place] = std::move(tree);
        tree = Condition(kind, std::move(operands));
    }
    return tree;
}

TEST(Conditions, MayBeDeepOnASmallStack)
{
#if !defined(__OPTIMIZE__) || !defined(NDEBUG) || !defined(__x86_64__) || !defined(__linux__)
    GTEST_SKIP() << "how much room a level takes is known of the library as it ships for this system";
#else
    auto const filter = [](void * tree) -> void * {
        Fixture f(kDialect);
        f.set->Filter(static_cast<Condition *>(tree), f.single);
        EXPECT_LT(4000u, f.set->getText().size());
        return nullptr;
    };
    for (auto const & [kind, place] : std::initializer_list<std::pair<ExpressionType, std::size_t>>{ { ET_AND, 0 }, { ET_AND, 1 },
             { ET_ADD, 0 }, { ET_ADD, 1 }, { ET_BETWEEN, 2 }, { ET_TUPLE, 0 }, { ET_TUPLE, 2 }, { ET_FILTER, 2 } }) {
        Condition tree = deep(kind, place, 4000);
        ::pthread_attr_t attributes;
        ::pthread_attr_init(&attributes);
        ::pthread_attr_setstacksize(&attributes, 1024 * 1024);
        ::pthread_t thread;
        ASSERT_EQ(0, ::pthread_create(&thread, &attributes, filter, &tree));
        ::pthread_join(thread, nullptr);
        ::pthread_attr_destroy(&attributes);
    }
#endif
}

}
