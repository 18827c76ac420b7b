#include "tests/fixture.h"

#include <limits>
#include <stdexcept>

namespace {

using namespace BRIM_o;
using memory_cube::Condition, memory_cube::current, memory_cube::current_set, memory_cube::mdx, memory_cube::tuple;

// A value that is a text.
Condition text_value(char16_t const * text, ExpressionType kind = ET_VALUE)
{
    static std::vector<std::shared_ptr<OLECHAR>> texts;
    Condition value(kind);
    value.fValue.vt = VT_BSTR;
    value.fValue.bstrVal = texts.emplace_back(SysAllocString(ole_characters(text)), SysFreeString).get();
    return value;
}

MDXSet * filter_without_value(Fixture & f)
{
    Condition truth(true);
    AskedNode node(truth);
    node.fHasValue = false;
    return f.set->Filter(&node, f.single);
}

// The tree's text as the whole set; that of [F] goes in for the current tuple.
#define TREE(...) CALL(f.set->Filter((__VA_ARGS__).get(), f.single))

std::string const kBad = raises(MDX_ERR_BAD_EXPRESSION);

// What the table of kinds in the reference of the operations does not show.
TEST(Conditions, Texts)
{
    expect_operations<MDXSet, kBoth>({
        { TREE(mdx(" it's \"[ ")), " it's \"[ " },
        { TREE(text_value(u"True", ET_BOOLVAL)), "1<2" },
        { TREE(text_value(u"0", ET_BOOLVAL)), "1>2" },
        { CALL(filter_without_value(f)), kBad },
        { TREE(text_value(u"-42")), "-42" },
        { TREE(text_value(u"18446744073709551615")), "1.844674407370955e+19" },
        { TREE(Condition(0.1 + 0.2)), "0.3" },
        { TREE(text_value(u"nine")), kBad },
        { TREE(Condition(std::numeric_limits<double>::quiet_NaN())), kBad },
        { TREE(Condition(-std::numeric_limits<double>::infinity())), kBad },
        { CALL(f.set->Filter(current().get(), f.tuple)), "( [F], [G] ) " },
        { CALL(f.set->TakeFilter(current_set().get(), nullptr)), "FILTER( {A}, {A})" },
    });
}

using Kinds = std::vector<std::int32_t>;

// Watches the two hooks of a translation, and writes one kind itself. What it writes to others is not taken.
struct Watching final : MDXSet {
    using MDXSet::MDXSet;
    Kinds fVisited, fAsked;
    std::int32_t fWrites = -1;

protected:
    void translate_condition(KelpString & text, Expression * expression, MDXTuple const * tuple) override
    {
        EXPECT_TRUE(text.empty());
        fVisited.push_back(expression->getType());
        MDXSet::translate_condition(text, expression, tuple);
    }
    bool server_translate(KelpString & text, Expression * expression, MDXTuple const *) override
    {
        EXPECT_TRUE(text.empty());
        fAsked.push_back(expression->getType());
        bool const writes = expression->getType() == fWrites;
        text = writes ? "ours" : "not taken";
        return writes;
    }
};

TEST(Conditions, AskTheServerBeforeTheOperands)
{
    Fixture f;
    RefPtr<Watching> const set(new Watching(KelpString("{A}")));
    Condition const range = between(value(mdx("x")) + Condition(ET_NATIVE, "n"), current(), mdx("a"));
    Condition tree = range && !is_null(tuple({ mdx("a"), current_set(), mdx("b") }));
    set->Filter(tree.get(), f.single);
    EXPECT_EQ("x + ( n ) >= [F] AND x + ( n ) <= a AND NOT( ( a, {A}, b )  = NULL )", mdx_of(*set));
    EXPECT_EQ(Kinds({ 151, 0, 158, 52, 124, 2, 42, 124, 153, 19, 140, 124, 3, 124 }), set->fVisited);
    EXPECT_EQ(Kinds({ 151, 0, 158, 124, 42, 124, 153, 19, 140, 124, 3, 124 }), set->fAsked);

    // The null test looks at the kind beneath after the hook and before the operand.
    Condition test(ET_TUPLE_IS_NULL, { mdx("a") });
    set->fVisited = set->fAsked = {};
    EXPECT_EQ(kBad, error_of([&] { set->Filter(test.get(), nullptr); }));
    EXPECT_EQ(Kinds{ 19 }, set->fVisited);
    EXPECT_EQ(Kinds{ 19 }, set->fAsked);
    set->fWrites = 19;
    EXPECT_EQ("ours", mdx_of(*set->Filter(test.get(), nullptr)));
}

}
