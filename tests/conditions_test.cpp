#include "tests/fixture.h"

#include <limits>
#include <stdexcept>

namespace {

using namespace BRIM_o;
using memory_cube::Node;

// A condition tree. A node keeps those beneath it.
struct Tree {
    std::shared_ptr<Node> fNode;

    Tree(std::shared_ptr<Node> node) : fNode(std::move(node)) {}
    Tree(ExpressionType type, std::vector<Tree> const & operands = {}) : fNode(new Node(type), [operands](Node * node) { delete node; })
    {
        for (Tree const & operand : operands)
            fNode->fOperands.push_back(operand.get());
    }
    Expression * get() const { return fNode.get(); }
};

Tree text(std::u16string const & characters, ExpressionType type = ET_STRING)
{
    return { std::make_shared<Node>(type, characters) };
}

Tree real(double number)
{
    return { std::make_shared<Node>(number) };
}

// A value that is a text, or that the host does not have.
struct Written final : Node {
    Written(ExpressionType type, char16_t const * characters) : Node(type)
    {
        fValue.vt = VT_BSTR;
        fValue.bstrVal = SysAllocString(ole_characters(characters));
    }
    VARIANT const * getValue() override { return fValue.bstrVal == nullptr ? nullptr : &fValue; }
};

Tree written(char16_t const * characters, ExpressionType type = ET_VALUE)
{
    return { std::make_shared<Written>(type, characters) };
}

// The text of [F] goes in for the current tuple.
MDXSet * filter(Fixture & f, Tree const & tree)
{
    return f.set->Filter(tree.get(), f.single);
}

#define TREE(...) CALL(filter(f, __VA_ARGS__))

std::string const kBad = raises(MDX_ERR_BAD_EXPRESSION);

Tree const a = text(u"a"), b = text(u"b"), c = text(u"c"), x(ET_TUPLE_VALUE, { text(u"x") });

TEST(Conditions, Texts)
{
    expect_operations<MDXSet, kBoth>({
        { TREE(text(u"it's [", ET_NATIVE)), "it's [" },
        { TREE(text(u" it's \"[ ")), " it's \"[ " },
        { TREE({ ET_EQUALTO, { text(u"it's", ET_TEXT_193), text(u"[", ET_TEXT_199) } }), "it's = [" },
        { TREE(ET_UNDEFINED), "1<2" },
        { TREE(written(u"True", ET_BOOLVAL)), "1<2" },
        { TREE(written(u"0", ET_BOOLVAL)), "1>2" },
        { TREE(written(nullptr, ET_BOOLVAL)), kBad },
        { TREE(written(u"-42")), "-42" },
        { TREE(written(u"18446744073709551615")), "1.844674407370955e+19" },
        { TREE(real(0.1 + 0.2)), "0.3" },
        { TREE(written(u"nine")), kBad },
        { TREE(real(std::numeric_limits<double>::quiet_NaN())), kBad },
        { TREE(real(-std::numeric_limits<double>::infinity())), kBad },
        { TREE({ ET_BETWEEN, { a, b, c } }), "a >= b AND a <= c" },
        { TREE({ ET_OUTSIDE, { a, b, c } }), "a < b OR a > c" },
        { TREE({ ET_AND, { { ET_EQUALTO, { a, b } }, { ET_NOTEQUALTO, { b, c } } } }), "a = b AND b <> c" },
        { TREE({ ET_OR,
              { { ET_OR, { { ET_LESSTHAN, { a, b } }, { ET_LESSTHANOREQUALTO, { b, c } } } }, { ET_GREATERTHANOREQUALTO, { a, c } } } }),
            "a < b OR b <= c OR a >= c" },
        { TREE({ ET_AND, { a, b, c } }), "a AND b" },
        { TREE({ ET_NOT, { { ET_GROUP_190, { { ET_GROUP_206, { { ET_NEGATE, { { ET_NEGATE, { x } } } } } } } } } }),
            "NOT( ( ( -( -( x ) ) ) ) )" },
        { TREE({ ET_ADD, { x, { ET_SUBTRACT, { a, x } } } }), "x + ( ( a ) - x )" },
        { TREE({ ET_TIMES, { { ET_MEMBER_VALUE, { a } }, real(2) } }), "( a ) * ( 2 )" },
        { TREE({ ET_DIVIDE, { x, { ET_INTDIVIDE, { a, b } } } }), "x / ( ( a ) / ( b ) )" },
        { TREE({ ET_TUPLE, { a } }), "( a ) " },
        { TREE({ ET_ADD, { { ET_TUPLE, { a, b, c } }, x } }), "( ( a, b, c )  ) + x" },
        { TREE({ ET_TUPLE_IS_NULL, { { ET_TUPLE, { a, b } } } }), "( a, b )  = NULL" },
        { TREE({ ET_TUPLE_IS_NULL, { ET_CURRENT } }), "[F] = NULL" },
        { TREE({ ET_TUPLE_IS_NULL, { real(1) } }), kBad },
        { TREE({ ET_FILTER, { { ET_EXCEPT, { a, b } }, c } }), "FILTER( EXCEPT( a, b ), c )" },
        { TREE({ ET_TOPCOUNT, { { ET_BOTTOMCOUNT, { a, b, c } }, b } }), "TOPCOUNT( BOTTOMCOUNT( a, b, c ), b )" },
        { TREE({ ET_TOPSUM, { { ET_BOTTOMSUM, { a, b, c } }, b, c } }), "TOPSUM( BOTTOMSUM( a, b, c ), b, c )" },
        { TREE({ ET_TOPPERCENT, { { ET_BOTTOMPERCENT, { a, b } }, b, c, ExpressionType{ 4 } } }),
            "TOPPERCENT( BOTTOMPERCENT( a, b ), b, c )" },
        { TREE(ExpressionType{ 300 }), kBad },
        { CALL(f.set->Filter(Tree(ET_CURRENT).get(), f.tuple)), "( [F], [G] ) " },
        { CALL(f.set->Filter(Tree(ET_CURRENT).get(), f.empty)), raises(MDX_ERR_EMPTY_TUPLE) },
        { CALL(f.set->TakeFilter(
              Tree(ET_AND, { { ET_GREATERTHAN, { x, real(1.5) } }, { ET_NOT, { { ET_TUPLE_IS_NULL, { ET_CURRENT } } } } }).get(),
              f.single)),
            "FILTER( {A}, x > 1.5 AND NOT( [F] = NULL ))" },
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
    void translate_condition(KelpString & out, BRIM_o::Expression * expression, MDXTuple const * tuple) override
    {
        EXPECT_TRUE(out.empty());
        fVisited.push_back(expression->getType());
        MDXSet::translate_condition(out, expression, tuple);
    }
    bool server_translate(KelpString & out, BRIM_o::Expression * expression, MDXTuple const *) override
    {
        EXPECT_TRUE(out.empty());
        fAsked.push_back(expression->getType());
        bool const writes = expression->getType() == fWrites;
        out = writes ? "ours" : "not taken";
        return writes;
    }
};

TEST(Conditions, HookOrder)
{
    Fixture f;
    RefPtr<Watching> const set(new Watching(KelpString("{A}")));
    Tree const range(ET_BETWEEN, { { ET_ADD, { x, text(u"n", ET_NATIVE) } }, ET_CURRENT, a });
    Tree const tree(ET_AND, { range, { ET_NOT, { { ET_TUPLE_IS_NULL, { { ET_TUPLE, { a, ET_CURRENTSET, b } } } } } } });
    set->Filter(tree.get(), f.single);
    EXPECT_EQ("x + ( n ) >= [F] AND x + ( n ) <= a AND NOT( ( a, {A}, b )  = NULL )", mdx_of(*set));
    EXPECT_EQ(Kinds({ 151, 0, 158, 52, 124, 2, 42, 124, 153, 19, 140, 124, 3, 124 }), set->fVisited);
    EXPECT_EQ(Kinds({ 151, 0, 158, 124, 42, 124, 153, 19, 140, 124, 3, 124 }), set->fAsked);

    // The null test looks at the kind beneath behind the hook and ahead of the operand.
    Tree const test(ET_TUPLE_IS_NULL, { a });
    set->fVisited = set->fAsked = {};
    EXPECT_EQ(kBad, error_of([&] { set->Filter(test.get(), nullptr); }));
    EXPECT_EQ(Kinds{ 19 }, set->fVisited);
    EXPECT_EQ(Kinds{ 19 }, set->fAsked);
    set->fWrites = 19;
    EXPECT_EQ("ours", mdx_of(*set->Filter(test.get(), nullptr)));
}

// The number of each kind, the operands that it reads, and whether the hook may write it.
std::tuple<ExpressionType, std::int32_t, std::size_t, bool> const kKinds[] = { { ET_BETWEEN, 0, 3, true }, { ET_OUTSIDE, 1, 3, true },
    { ET_NATIVE, 2, 0, false }, { ET_CURRENTSET, 3, 0, true }, { ET_TUPLE_IS_NULL, 19, 1, true }, { ET_FILTER, 37, 2, true },
    { ET_TOPSUM, 38, 2, true }, { ET_BOTTOMSUM, 39, 2, true }, { ET_TOPPERCENT, 40, 2, true }, { ET_BOTTOMPERCENT, 41, 2, true },
    { ET_CURRENT, 42, 0, true }, { ET_TUPLE_VALUE, 52, 1, false }, { ET_EXCEPT, 64, 2, true }, { ET_BOTTOMCOUNT, 71, 2, true },
    { ET_TOPCOUNT, 72, 2, true }, { ET_MEMBER_VALUE, 86, 1, false }, { ET_STRING, 124, 0, true }, { ET_TUPLE, 140, 1, true },
    { ET_UNDEFINED, 141, 0, false }, { ET_VALUE, 142, 0, true }, { ET_BOOLVAL, 143, 0, false }, { ET_EQUALTO, 145, 2, false },
    { ET_NOTEQUALTO, 146, 2, false }, { ET_LESSTHAN, 147, 2, false }, { ET_LESSTHANOREQUALTO, 148, 2, false },
    { ET_GREATERTHAN, 149, 2, false }, { ET_GREATERTHANOREQUALTO, 150, 2, false }, { ET_AND, 151, 2, true }, { ET_OR, 152, 2, true },
    { ET_NOT, 153, 1, true }, { ET_NEGATE, 157, 1, false }, { ET_ADD, 158, 2, true }, { ET_SUBTRACT, 159, 2, true },
    { ET_TIMES, 160, 2, true }, { ET_DIVIDE, 161, 2, true }, { ET_INTDIVIDE, 162, 2, true }, { ET_GROUP_190, 190, 1, false },
    { ET_TEXT_193, 193, 0, true }, { ET_TEXT_199, 199, 0, true }, { ET_GROUP_206, 206, 1, false } };

TEST(Conditions, Kinds)
{
    std::int32_t unknown = -1;
    for (auto const & [kind, number, operands, asked] : kKinds) {
        EXPECT_EQ(number, kind);
        for (; unknown < number; ++unknown) {
            RefPtr<Watching> const set(new Watching(KelpString("{A}")));
            Tree const tree(ET_AND, { a, { ExpressionType{ unknown }, { a } } });
            EXPECT_EQ(kBad, error_of([&] { set->Filter(tree.get(), nullptr); })) << unknown;
            EXPECT_EQ(Kinds({ 151, 124 }), set->fAsked) << unknown;
        }
        ++unknown;
        RefPtr<Watching> const set(new Watching(KelpString("{A}")));
        set->fWrites = number;
        Tree const tree(kind, std::vector<Tree>(operands, asked ? ExpressionType{ 300 } : ET_UNDEFINED));
        set->Filter(tree.get(), nullptr);
        EXPECT_EQ(asked, set->getText() == KelpString("ours")) << number;
        EXPECT_EQ(asked ? Kinds{ number } : Kinds{}, set->fAsked);
        Fixture f;
        if (operands > 0) {
            EXPECT_THROW(filter(f, { kind, std::vector<Tree>(operands - 1, a) }), std::out_of_range) << number;
        }
        EXPECT_EQ("{A}", mdx_of(*f.set));
    }
}

}
