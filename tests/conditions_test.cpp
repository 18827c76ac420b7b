#include "fixture.h"

#include <limits>
#include <stdexcept>
#include <type_traits>

namespace {

using namespace BRIM_o;
using memory_cube::Node;

// A condition tree that owns its nodes.
class Tree {
public:
    Tree(ExpressionType type, std::vector<Tree> operands = {}) : fOperands(std::make_shared<std::vector<Tree>>(std::move(operands)))
    {
        auto const node = std::make_shared<Node>(type);
        for (Tree const & operand : *fOperands)
            node->fOperands.push_back(operand.get());
        fNode = node;
    }
    Tree(std::shared_ptr<Expression> node) : fNode(std::move(node)) {}
    Expression * get() const { return fNode.get(); }

private:
    std::shared_ptr<std::vector<Tree>> fOperands;
    std::shared_ptr<Expression> fNode;
};

Tree text(std::u16string const & characters, ExpressionType type = ET_STRING)
{
    return { std::make_shared<Node>(type, characters) };
}

// A node with a value, which one field of the VARIANT holds.
template <class Field, class Value>
Tree value(VARTYPE type, Field VARIANT::*field, Value content, ExpressionType kind = ET_VALUE)
{
    auto const node = std::make_shared<Node>(kind);
    node->fValue.vt = type;
    node->fValue.*field = static_cast<Field>(content);
    return { node };
}
Tree real(double number)
{
    return { std::make_shared<Node>(number) };
}
Tree written(char16_t const * characters, ExpressionType kind = ET_VALUE)
{
    return value(VT_BSTR, &VARIANT::bstrVal, SysAllocString(ole_characters(characters)), kind);
}

// A node that the host fails to give a value or a kind for.
struct Broken final : Expression {
    ExpressionType fType;
    bool fThrows;
    std::vector<Expression *> fOperands;

    Broken(ExpressionType type, bool throws) : fType(type), fThrows(throws) {}
    std::vector<Expression *> const & getChildren() override { return fOperands; }
    ExpressionType getType() override { return fThrows ? throw std::runtime_error("host") : fType; }
    VARIANT const * getValue() override { return nullptr; }
    char16_t const * getString() override { return u""; }
};

ExpressionType kind(std::int32_t number)
{
    return static_cast<ExpressionType>(number);
}

// The text of [F] goes in for the current tuple.
MDXSet * filter(Fixture & f, Tree const & tree)
{
    return f.set->Filter(tree.get(), f.single.get());
}

#define TREE(...) CALL(filter(f, __VA_ARGS__))

Raises const kBad{ MDX_ERR_BAD_EXPRESSION };

Tree const a = text(u"a");
Tree const b = text(u"b");
Tree const c = text(u"c");
Tree const x(ET_TUPLE_VALUE, { text(u"x") });

TEST(Conditions, LeavesAndValues)
{
    check_both({
        { "native", TREE(text(u"it's [", ET_NATIVE)), "it's [" },
        { "string", TREE(text(u" it's \"[ ")), " it's \"[ " },
        { "other texts", TREE({ ET_EQUALTO, { text(u"it's", ET_TEXT_193), text(u"[", ET_TEXT_199) } }), "it's = [" },
        { "current set", TREE(ET_CURRENTSET), "{A}" },
        { "current", TREE(ET_CURRENT), "[F]" },
        { "undefined", TREE(ET_UNDEFINED), "1<2" },
        { "true", TREE(value(VT_BOOL, &VARIANT::boolVal, -1, ET_BOOLVAL)), "1<2" },
        { "false", TREE(value(VT_I4, &VARIANT::lVal, 0, ET_BOOLVAL)), "1>2" },
        { "true as a text", TREE(written(u"True", ET_BOOLVAL)), "1<2" },
        { "bool that is none", TREE(written(u"maybe", ET_BOOLVAL)), kBad },
        { "bool without a value", TREE({ std::make_shared<Broken>(ET_BOOLVAL, false) }), kBad },
        { "whole", TREE(value(VT_I4, &VARIANT::lVal, -42)), "-42" },
        { "largest whole", TREE(value(VT_UI8, &VARIANT::ullVal, std::numeric_limits<std::uint64_t>::max())), "1.844674407370955e+19" },
        { "16 digits", TREE(real(0.1 + 0.2)), "0.3" },
        { "no number", TREE(written(u"nine")), kBad },
        { "null", TREE(value(VT_NULL, &VARIANT::lVal, 0)), kBad },
        { "none", TREE({ std::make_shared<Broken>(ET_VALUE, false) }), kBad },
        { "not a number", TREE(real(std::numeric_limits<double>::quiet_NaN())), kBad },
        { "infinity", TREE(real(-std::numeric_limits<double>::infinity())), kBad },
    });
}

TEST(Conditions, OperatorsAndFunctions)
{
    check_both({
        { "between", TREE({ ET_BETWEEN, { a, b, c } }), "a >= b AND a <= c" },
        { "outside", TREE({ ET_OUTSIDE, { a, b, c } }), "a < b OR a > c" },
        { "equality", TREE({ ET_AND, { { ET_EQUALTO, { a, b } }, { ET_NOTEQUALTO, { b, c } } } }), "a = b AND b <> c" },
        { "less", TREE({ ET_OR, { { ET_LESSTHAN, { a, b } }, { ET_LESSTHANOREQUALTO, { b, c } } } }), "a < b OR b <= c" },
        { "greater", TREE({ ET_OR, { { ET_GREATERTHAN, { a, b } }, { ET_GREATERTHANOREQUALTO, { b, c } } } }), "a > b OR b >= c" },
        { "and", TREE({ ET_AND, { a, b, c } }), "a AND b" },
        { "not", TREE({ ET_NOT, { a } }), "NOT( a )" },
        { "negate twice", TREE({ ET_NEGATE, { { ET_NEGATE, { x } } } }), "-( -( x ) )" },
        { "groups", TREE({ ET_GROUP_190, { { ET_GROUP_206, { a } } } }), "( ( a ) )" },
        { "member value", TREE({ ET_MEMBER_VALUE, { a } }), "a" },
        { "tuple value", TREE(x), "x" },
        { "add", TREE({ ET_ADD, { x, a } }), "x + ( a )" },
        { "subtract", TREE({ ET_SUBTRACT, { a, x } }), "( a ) - x" },
        { "times", TREE({ ET_TIMES, { { ET_MEMBER_VALUE, { a } }, real(2) } }), "( a ) * ( 2 )" },
        { "divide", TREE({ ET_DIVIDE, { x, x } }), "x / x" },
        { "whole divide", TREE({ ET_INTDIVIDE, { a, b } }), "( a ) / ( b )" },
        { "tuple of one", TREE({ ET_TUPLE, { a } }), "( a ) " },
        { "tuple in a sum", TREE({ ET_ADD, { { ET_TUPLE, { a, b, c } }, x } }), "( ( a, b, c )  ) + x" },
        { "null tuple", TREE({ ET_TUPLE_IS_NULL, { { ET_TUPLE, { a, b } } } }), "( a, b )  = NULL" },
        { "null current", TREE({ ET_TUPLE_IS_NULL, { ET_CURRENT } }), "[F] = NULL" },
        { "null value", TREE({ ET_TUPLE_IS_NULL, { real(1) } }), kBad },
        { "filter, except", TREE({ ET_FILTER, { { ET_EXCEPT, { a, b } }, c } }), "FILTER( EXCEPT( a, b ), c )" },
        { "counts", TREE({ ET_TOPCOUNT, { { ET_BOTTOMCOUNT, { a, b, c } }, b } }), "TOPCOUNT( BOTTOMCOUNT( a, b, c ), b )" },
        { "sums", TREE({ ET_TOPSUM, { { ET_BOTTOMSUM, { a, b, c } }, b, c } }), "TOPSUM( BOTTOMSUM( a, b, c ), b, c )" },
        { "percents, a fourth operand", TREE({ ET_TOPPERCENT, { { ET_BOTTOMPERCENT, { a, b } }, b, c, kind(4) } }), "TOPPERCENT( BOTTOMPERCENT( a, b ), b, c )" },
        { "past the last kind", TREE(kind(300)), kBad },
        { "old set twice", TREE({ ET_EXCEPT, { ET_CURRENTSET, { ET_TOPCOUNT, { ET_CURRENTSET, real(3), x } } } }), "EXCEPT( {A}, TOPCOUNT( {A}, 3, x ) )" },
    });
}

TEST(Conditions, FilterAndTakeFilter)
{
    check_both({
        { "tuple", CALL(f.set->Filter(Tree(ET_CURRENT).get(), f.tuple.get())), "( [F], [G] ) " },
        { "tuple without a field", CALL(f.set->Filter(Tree(ET_CURRENT).get(), f.empty.get())), Raises{ MDX_ERR_EMPTY_TUPLE } },
        { "filtered", CALL(f.set->TakeFilter(Tree(ET_AND, { { ET_GREATERTHAN, { x, real(1.5) } }, { ET_NOT, { { ET_TUPLE_IS_NULL, { ET_CURRENT } } } } }).get(), f.single.get())),
            "FILTER( {A}, x > 1.5 AND NOT( [F] = NULL ))" },
        { "filtered by itself", CALL(f.set->TakeFilter(Tree(ET_CURRENTSET).get(), nullptr)), "FILTER( {A}, {A})" },
    });
}

// Watches the two hooks of a translation, and may write a kind itself.
struct Watching final : MDXSet {
    using MDXSet::MDXSet;
    std::vector<std::int32_t> fVisited;
    std::vector<std::int32_t> fAsked;
    std::int32_t fWrites = -1;
    MDXTuple const * fTuple = nullptr;

protected:
    void translate_condition(KelpString & out, BRIM_o::Expression * expression, MDXTuple const * tuple) override
    {
        EXPECT_TRUE(out.empty());
        fVisited.push_back(expression->getType());
        fTuple = tuple;
        MDXSet::translate_condition(out, expression, tuple);
    }
    bool server_translate(KelpString & out, BRIM_o::Expression * expression, MDXTuple const * tuple) override
    {
        EXPECT_TRUE(out.empty());
        EXPECT_EQ(fTuple, tuple);
        fAsked.push_back(expression->getType());
        if (expression->getType() != fWrites)
            return false;
        out = "ours";
        return true;
    }

private:
    ~Watching() override = default;
};
using Kinds = std::vector<std::int32_t>;

TEST(Conditions, HookOrder)
{
    Fixture f;
    Held<Watching> const set(new Watching(KelpString("{A}")));
    Tree const tree(
        ET_AND, { { ET_LESSTHAN, { { ET_ADD, { x, text(u"n", ET_NATIVE) } }, ET_CURRENT } }, { ET_NOT, { { ET_TUPLE_IS_NULL, { { ET_TUPLE, { a, ET_CURRENTSET } } } } } } });
    set->Filter(tree.get(), f.single.get());
    EXPECT_EQ("x + ( n ) < [F] AND NOT( ( a, {A} )  = NULL )", set->getText().toUTF8());
    EXPECT_EQ(f.single.get(), set->fTuple);
    EXPECT_EQ(Kinds({ 151, 147, 158, 52, 124, 2, 42, 153, 19, 140, 124, 3 }), set->fVisited);
    EXPECT_EQ(Kinds({ 151, 158, 124, 42, 153, 19, 140, 124, 3 }), set->fAsked);

    // The null test looks at the kind beneath behind the hook and ahead of the operand.
    Held<Watching> const failing(new Watching(KelpString("{A}")));
    Tree const test(ET_TUPLE_IS_NULL, { text(u"a") });
    expect_error({ MDX_ERR_BAD_EXPRESSION }, [&] { failing->Filter(test.get(), nullptr); });
    EXPECT_EQ(Kinds{ 19 }, failing->fVisited);
    EXPECT_EQ(Kinds{ 19 }, failing->fAsked);
    failing->fWrites = 19;
    EXPECT_EQ("ours", failing->Filter(test.get(), nullptr)->getText().toUTF8());
}

// The number of each kind, the operands that it reads, and whether the hook may write it.
struct KindRow {
    ExpressionType kind;
    std::int32_t number;
    std::size_t operands;
    bool asked;
};
KindRow const kKinds[] = { { ET_BETWEEN, 0, 3, true }, { ET_OUTSIDE, 1, 3, true }, { ET_NATIVE, 2, 0, false }, { ET_CURRENTSET, 3, 0, true }, { ET_TUPLE_IS_NULL, 19, 1, true },
    { ET_FILTER, 37, 2, true }, { ET_TOPSUM, 38, 2, true }, { ET_BOTTOMSUM, 39, 2, true }, { ET_TOPPERCENT, 40, 2, true }, { ET_BOTTOMPERCENT, 41, 2, true },
    { ET_CURRENT, 42, 0, true }, { ET_TUPLE_VALUE, 52, 1, false }, { ET_EXCEPT, 64, 2, true }, { ET_BOTTOMCOUNT, 71, 2, true }, { ET_TOPCOUNT, 72, 2, true },
    { ET_MEMBER_VALUE, 86, 1, false }, { ET_STRING, 124, 0, true }, { ET_TUPLE, 140, 1, true }, { ET_UNDEFINED, 141, 0, false }, { ET_VALUE, 142, 0, true },
    { ET_BOOLVAL, 143, 0, false }, { ET_EQUALTO, 145, 2, false }, { ET_NOTEQUALTO, 146, 2, false }, { ET_LESSTHAN, 147, 2, false }, { ET_LESSTHANOREQUALTO, 148, 2, false },
    { ET_GREATERTHAN, 149, 2, false }, { ET_GREATERTHANOREQUALTO, 150, 2, false }, { ET_AND, 151, 2, true }, { ET_OR, 152, 2, true }, { ET_NOT, 153, 1, true },
    { ET_NEGATE, 157, 1, false }, { ET_ADD, 158, 2, true }, { ET_SUBTRACT, 159, 2, true }, { ET_TIMES, 160, 2, true }, { ET_DIVIDE, 161, 2, true }, { ET_INTDIVIDE, 162, 2, true },
    { ET_GROUP_190, 190, 1, false }, { ET_TEXT_193, 193, 0, true }, { ET_TEXT_199, 199, 0, true }, { ET_GROUP_206, 206, 1, false } };

TEST(Conditions, Kinds)
{
    std::int32_t unknown = -1;
    for (KindRow const & row : kKinds) {
        EXPECT_EQ(row.number, row.kind);
        for (; unknown < row.number; ++unknown) {
            Held<Watching> const set(new Watching(KelpString("{A}")));
            Tree const tree(ET_AND, { a, { kind(unknown), { a } } });
            expect_error(
                { MDX_ERR_BAD_EXPRESSION }, [&] { set->Filter(tree.get(), nullptr); }, std::to_string(unknown));
            EXPECT_EQ(Kinds({ 151, 124 }), set->fAsked) << unknown;
        }
        ++unknown;
        Held<Watching> const set(new Watching(KelpString("{A}")));
        set->fWrites = row.number;
        Tree const tree(row.kind, std::vector<Tree>(row.operands, row.asked ? kind(300) : ET_UNDEFINED));
        set->Filter(tree.get(), nullptr);
        EXPECT_EQ(row.asked, set->getText() == KelpString("ours")) << row.number;
        EXPECT_EQ(row.asked ? Kinds{ row.number } : Kinds{}, set->fAsked);
        Fixture f;
        if (row.operands > 0) {
            EXPECT_THROW(filter(f, { row.kind, std::vector<Tree>(row.operands - 1, a) }), std::out_of_range) << row.number;
        }
        EXPECT_EQ("{A}", f.set->getText().toUTF8());
    }
}

TEST(Conditions, NodeThatThrowsLeavesTheText)
{
    Fixture f;
    Tree const broken(std::make_shared<Broken>(ET_STRING, true));
    Tree const tree(ET_OR, { ET_CURRENTSET, { ET_NOT, { { ET_TUPLE, { a, broken } } } } });
    f.set->getQuotedText();
    EXPECT_THROW(filter(f, tree), std::runtime_error);
    EXPECT_THROW(f.set->TakeFilter(tree.get(), nullptr), std::runtime_error);
    EXPECT_EQ("{A}", f.set->getText().toUTF8());
    EXPECT_EQ("{A}", f.set->getQuotedText().toUTF8());
}

TEST(Conditions, LongChains)
{
    Tree left = b;
    Tree right = b;
    for (int i = 0; i < 2000; ++i) {
        left = Tree(ET_AND, { left, a });
        right = Tree(ET_AND, { a, right });
    }
    Fixture f;
    EXPECT_EQ(1U + 2000 * 6, filter(f, left)->getText().size());
    EXPECT_EQ("b AND a AND a AND ", f.set->getText().toUTF8().substr(0, 18));
    EXPECT_EQ(1U + 2000 * 6, filter(f, right)->getText().size());
    EXPECT_EQ(" AND a AND a AND b", f.set->getText().toUTF8().substr(1 + 2000 * 6 - 18));
}

}
