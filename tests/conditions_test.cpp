#include "tests/condition_tree.h"
#include "tests/fixture.h"

#include <limits>
#include <stdexcept>

namespace {

using namespace BRIM_o;
// A value that is a text, or that the host does not have.
struct TextValue final : memory_cube::Node {
    TextValue(ExpressionType kind, char16_t const * text) : Node(kind)
    {
        fValue.vt = VT_BSTR;
        fValue.bstrVal = SysAllocString(ole_characters(text));
    }
    VARIANT const * getValue() override { return fValue.bstrVal == nullptr ? nullptr : &fValue; }
};

Tree value_node(char16_t const * text, ExpressionType kind = ET_VALUE)
{
    return { std::make_shared<TextValue>(kind, text) };
}

// The tree's text as the whole set; that of [F] goes in for the current tuple.
#define TREE(...) CALL(f.set->Filter(Tree(__VA_ARGS__).get(), f.single))

std::string const kBad = raises(MDX_ERR_BAD_EXPRESSION);

Tree const a = text_node(u"a"), b = text_node(u"b"), c = text_node(u"c"), x(ET_TUPLE_VALUE, { text_node(u"x") });

// What the table of kinds in the reference of the operations does not show.
TEST(Conditions, Texts)
{
    expect_operations<MDXSet, kBoth>({
        { TREE(text_node(u" it's \"[ ")), " it's \"[ " },
        { TREE(value_node(u"True", ET_BOOLVAL)), "1<2" },
        { TREE(value_node(u"0", ET_BOOLVAL)), "1>2" },
        { TREE(value_node(nullptr, ET_BOOLVAL)), kBad },
        { TREE(value_node(u"-42")), "-42" },
        { TREE(value_node(u"18446744073709551615")), "1.844674407370955e+19" },
        { TREE(number_node(0.1 + 0.2)), "0.3" },
        { TREE(value_node(u"nine")), kBad },
        { TREE(number_node(std::numeric_limits<double>::quiet_NaN())), kBad },
        { TREE(number_node(-std::numeric_limits<double>::infinity())), kBad },
        { CALL(f.set->Filter(Tree(ET_CURRENT).get(), f.tuple)), "( [F], [G] ) " },
        { CALL(f.set->TakeFilter(Tree(ET_CURRENTSET).get(), nullptr)), "FILTER( {A}, {A})" },
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
    Tree const range(ET_BETWEEN, { { ET_ADD, { x, text_node(u"n", ET_NATIVE) } }, ET_CURRENT, a });
    Tree const tree(ET_AND, { range, { ET_NOT, { { ET_TUPLE_IS_NULL, { { ET_TUPLE, { a, ET_CURRENTSET, b } } } } } } });
    set->Filter(tree.get(), f.single);
    EXPECT_EQ("x + ( n ) >= [F] AND x + ( n ) <= a AND NOT( ( a, {A}, b )  = NULL )", mdx_of(*set));
    EXPECT_EQ(Kinds({ 151, 0, 158, 52, 124, 2, 42, 124, 153, 19, 140, 124, 3, 124 }), set->fVisited);
    EXPECT_EQ(Kinds({ 151, 0, 158, 124, 42, 124, 153, 19, 140, 124, 3, 124 }), set->fAsked);

    // The null test looks at the kind beneath after the hook and before the operand.
    Tree const test(ET_TUPLE_IS_NULL, { a });
    set->fVisited = set->fAsked = {};
    EXPECT_EQ(kBad, error_of([&] { set->Filter(test.get(), nullptr); }));
    EXPECT_EQ(Kinds{ 19 }, set->fVisited);
    EXPECT_EQ(Kinds{ 19 }, set->fAsked);
    set->fWrites = 19;
    EXPECT_EQ("ours", mdx_of(*set->Filter(test.get(), nullptr)));
}

}
