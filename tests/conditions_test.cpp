#include "fixture.h"

#include <cstdint>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace {

using namespace BRIM_o;
using memory_cube::Node;

// A condition tree that owns its nodes.
class Tree {
public:
    Tree(ExpressionType type, std::vector<Tree> operands = {})
    {
        std::vector<Expression *> children;
        for (Tree const & operand : operands)
            children.push_back(operand.get());
        auto const parts = std::make_shared<Parts>(std::move(operands), type, std::move(children));
        fRoot = std::shared_ptr<Expression>(parts, &parts->fNode);
    }
    Tree(std::shared_ptr<Expression> node) : fRoot(std::move(node)) {}
    Expression * get() const { return fRoot.get(); }

private:
    struct Parts {
        std::vector<Tree> fOperands;
        Node fNode;

        Parts(std::vector<Tree> operands, ExpressionType type, std::vector<Expression *> children) : fOperands(std::move(operands)), fNode(type, std::move(children)) {}
    };
    std::shared_ptr<Expression> fRoot;
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
// On Windows a BSTR has wide characters.
Tree written(char16_t const * characters, ExpressionType kind = ET_VALUE)
{
    return value(VT_BSTR, &VARIANT::bstrVal, SysAllocString(reinterpret_cast<std::remove_pointer_t<BSTR> const *>(characters)), kind);
}
Tree money(std::int64_t tenThousandths)
{
    auto const node = std::make_shared<Node>(ET_VALUE);
    node->fValue.vt = VT_CY;
    node->fValue.cyVal.int64 = tenThousandths;
    return { node };
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
Tree valueless(ExpressionType type)
{
    return { std::make_shared<Broken>(type, false) };
}

ExpressionType kind(std::int32_t number)
{
    return static_cast<ExpressionType>(number);
}

// The text of [F] goes in for the current tuple.
MDXSet * filter(Fixture & f, Tree const & tree)
{
    return f.set->Filter(tree.get(), f.single.get());
}

// A tree, and the whole text of a set that is made from it, or the error.
struct ConditionRow {
    char const * name;
    Tree tree;
    Expected want;
};
Raises const kBad{ MDX_ERR_BAD_EXPRESSION };

void check_conditions(std::vector<ConditionRow> const & rows)
{
    for (ConditionRow const & row : rows) {
        for (bool const dialect : { false, true }) {
            Fixture f(dialect);
            std::string want = "{A}";
            if (auto const * const error = std::get_if<Raises>(&row.want)) {
                expect_error(
                    *error, [&] { filter(f, row.tree); }, row.name);
            } else {
                want = std::get<std::string>(row.want);
                EXPECT_EQ(f.set.get(), filter(f, row.tree)) << row.name;
            }
            EXPECT_EQ(want, f.set->getText().toUTF8()) << row.name;
            EXPECT_EQ(1, count_of(*f.single));
        }
    }
}

TEST(Conditions, Leaves)
{
    check_conditions({
        { "native", text(u"it's [", ET_NATIVE), "it's [" },
        { "string", text(u" it's \"[ "), " it's \"[ " },
        { "empty string", text(u""), "" },
        { "text 193", text(u"it's", ET_TEXT_193), "it's" },
        { "text 199", text(u"it's", ET_TEXT_199), "it's" },
        { "current set", ET_CURRENTSET, "{A}" },
        { "current", ET_CURRENT, "[F]" },
        { "undefined", ET_UNDEFINED, "1<2" },
        { "true", value(VT_BOOL, &VARIANT::boolVal, -1, ET_BOOLVAL), "1<2" },
        { "false", value(VT_I4, &VARIANT::lVal, 0, ET_BOOLVAL), "1>2" },
        { "true as a text", written(u"True", ET_BOOLVAL), "1<2" },
        { "bool that is none", written(u"maybe", ET_BOOLVAL), kBad },
        { "bool without a value", valueless(ET_BOOLVAL), kBad },
    });
}

TEST(Conditions, Values)
{
    check_conditions({
        { "whole", value(VT_I4, &VARIANT::lVal, -42), "-42" },
        { "bool", value(VT_BOOL, &VARIANT::boolVal, -1), "-1" },
        { "date", value(VT_DATE, &VARIANT::date, 36526.5), "36526.5" },
        { "text", written(u"9.25"), "9.25" },
        { "money", money(12345), "1.2345" },
        { "past the whole doubles", value(VT_I8, &VARIANT::llVal, 9007199254740993), "9007199254740992" },
        { "largest whole", value(VT_UI8, &VARIANT::ullVal, std::numeric_limits<std::uint64_t>::max()), "1.844674407370955e+19" },
        { "exponent", real(1e20), "1e+20" },
        { "shortest", real(9.2), "9.2" },
        { "16 digits", real(0.1 + 0.2), "0.3" },
        { "no number", written(u"nine"), kBad },
        { "null", value(VT_NULL, &VARIANT::lVal, 0), kBad },
        { "object", value(VT_UNKNOWN, &VARIANT::byref, nullptr), kBad },
        { "none", valueless(ET_VALUE), kBad },
        { "not a number", real(std::numeric_limits<double>::quiet_NaN()), kBad },
        { "infinity", real(-std::numeric_limits<double>::infinity()), kBad },
    });
}

Tree const a = text(u"a");
Tree const b = text(u"b");
Tree const c = text(u"c");
Tree const x(ET_TUPLE_VALUE, { text(u"x") });

TEST(Conditions, Operators)
{
    check_conditions({
        { "between", { ET_BETWEEN, { a, b, c } }, "a >= b AND a <= c" },
        { "outside", { ET_OUTSIDE, { a, b, c } }, "a < b OR a > c" },
        { "equal", { ET_EQUALTO, { a, b } }, "a = b" },
        { "not equal", { ET_NOTEQUALTO, { a, b } }, "a <> b" },
        { "less", { ET_LESSTHAN, { a, b } }, "a < b" },
        { "less or equal", { ET_LESSTHANOREQUALTO, { a, b } }, "a <= b" },
        { "greater", { ET_GREATERTHAN, { a, b } }, "a > b" },
        { "greater or equal", { ET_GREATERTHANOREQUALTO, { a, b } }, "a >= b" },
        { "and", { ET_AND, { a, b, c } }, "a AND b" },
        { "or", { ET_OR, { a, b } }, "a OR b" },
        { "not", { ET_NOT, { a } }, "NOT( a )" },
        { "negate", { ET_NEGATE, { a } }, "-( a )" },
        { "negate twice", { ET_NEGATE, { { ET_NEGATE, { x } } } }, "-( -( x ) )" },
        { "group 190", { ET_GROUP_190, { a } }, "( a )" },
        { "group 206", { ET_GROUP_206, { a } }, "( a )" },
        { "member value", { ET_MEMBER_VALUE, { a } }, "a" },
        { "tuple value", x, "x" },
        { "add", { ET_ADD, { x, a } }, "x + ( a )" },
        { "subtract", { ET_SUBTRACT, { a, x } }, "( a ) - x" },
        { "times", { ET_TIMES, { { ET_MEMBER_VALUE, { a } }, real(2) } }, "( a ) * ( 2 )" },
        { "divide", { ET_DIVIDE, { x, x } }, "x / x" },
        { "whole divide", { ET_INTDIVIDE, { a, b } }, "( a ) / ( b )" },
        { "tuple of one", { ET_TUPLE, { a } }, "( a ) " },
        { "tuple in a sum", { ET_ADD, { { ET_TUPLE, { a, b, c } }, x } }, "( ( a, b, c )  ) + x" },
        { "null tuple", { ET_TUPLE_IS_NULL, { { ET_TUPLE, { a, b } } } }, "( a, b )  = NULL" },
        { "null current", { ET_TUPLE_IS_NULL, { ET_CURRENT } }, "[F] = NULL" },
        { "null value", { ET_TUPLE_IS_NULL, { real(1) } }, kBad },
    });
}

TEST(Conditions, SetFunctions)
{
    check_conditions({
        { "filter", { ET_FILTER, { a, b } }, "FILTER( a, b )" },
        { "except", { ET_EXCEPT, { a, b } }, "EXCEPT( a, b )" },
        { "top count", { ET_TOPCOUNT, { a, b } }, "TOPCOUNT( a, b )" },
        { "bottom count", { ET_BOTTOMCOUNT, { a, b, c } }, "BOTTOMCOUNT( a, b, c )" },
        { "top sum", { ET_TOPSUM, { a, b, c } }, "TOPSUM( a, b, c )" },
        { "bottom sum", { ET_BOTTOMSUM, { a, b, c } }, "BOTTOMSUM( a, b, c )" },
        { "top percent", { ET_TOPPERCENT, { a, b, c, kind(4) } }, "TOPPERCENT( a, b, c )" },
        { "bottom percent", { ET_BOTTOMPERCENT, { a, b, c } }, "BOTTOMPERCENT( a, b, c )" },
        { "old set twice", { ET_EXCEPT, { ET_CURRENTSET, { ET_TOPCOUNT, { ET_CURRENTSET, real(3), x } } } }, "EXCEPT( {A}, TOPCOUNT( {A}, 3, x ) )" },
    });
}

TEST(Conditions, FilterAndTakeFilter)
{
    std::vector<SetRow> const rows = {
        { "the set itself", CALL(f.set->Filter(Tree(ET_CURRENTSET).get(), nullptr)), "{A}" },
        { "text", CALL(filter(f, text(u"it's"))), "it's" },
        { "tuple", CALL(f.set->Filter(Tree(ET_CURRENT).get(), f.tuple.get())), "( [F], [G] ) " },
        { "tuple without a field", CALL(f.set->Filter(Tree(ET_CURRENT).get(), f.empty.get())), Raises{ MDX_ERR_EMPTY_TUPLE } },
        { "filtered",
            [](Fixture & f) {
                Tree const null(ET_TUPLE_IS_NULL, { ET_CURRENT });
                Tree const tree(ET_AND, { { ET_GREATERTHAN, { x, real(1.5) } }, { ET_NOT, { null } } });
                return f.set->TakeFilter(tree.get(), f.single.get());
            },
            "FILTER( {A}, x > 1.5 AND NOT( [F] = NULL ))" },
        { "filtered by itself", CALL(f.set->TakeFilter(Tree(ET_CURRENTSET).get(), nullptr)), "FILTER( {A}, {A})" },
        { "bad filter", CALL(f.set->TakeFilter(Tree(kind(144)).get(), nullptr)), kBad },
    };
    check(rows);
    check(rows, true);
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

// The number of each kind and the operands that it reads.
struct KindRow {
    ExpressionType kind;
    std::int32_t number;
    std::size_t operands;
};
std::vector<KindRow> const gAsked = { { ET_BETWEEN, 0, 3 }, { ET_OUTSIDE, 1, 3 }, { ET_CURRENTSET, 3, 0 }, { ET_TUPLE_IS_NULL, 19, 1 }, { ET_FILTER, 37, 2 }, { ET_TOPSUM, 38, 2 },
    { ET_BOTTOMSUM, 39, 2 }, { ET_TOPPERCENT, 40, 2 }, { ET_BOTTOMPERCENT, 41, 2 }, { ET_CURRENT, 42, 0 }, { ET_EXCEPT, 64, 2 }, { ET_BOTTOMCOUNT, 71, 2 }, { ET_TOPCOUNT, 72, 2 },
    { ET_STRING, 124, 0 }, { ET_TUPLE, 140, 1 }, { ET_VALUE, 142, 0 }, { ET_AND, 151, 2 }, { ET_OR, 152, 2 }, { ET_NOT, 153, 1 }, { ET_ADD, 158, 2 }, { ET_SUBTRACT, 159, 2 },
    { ET_TIMES, 160, 2 }, { ET_DIVIDE, 161, 2 }, { ET_INTDIVIDE, 162, 2 }, { ET_TEXT_193, 193, 0 }, { ET_TEXT_199, 199, 0 } };
std::vector<KindRow> const gNotAsked = { { ET_NATIVE, 2, 0 }, { ET_TUPLE_VALUE, 52, 1 }, { ET_MEMBER_VALUE, 86, 1 }, { ET_UNDEFINED, 141, 0 }, { ET_BOOLVAL, 143, 0 },
    { ET_EQUALTO, 145, 2 }, { ET_NOTEQUALTO, 146, 2 }, { ET_LESSTHAN, 147, 2 }, { ET_LESSTHANOREQUALTO, 148, 2 }, { ET_GREATERTHAN, 149, 2 }, { ET_GREATERTHANOREQUALTO, 150, 2 },
    { ET_NEGATE, 157, 1 }, { ET_GROUP_190, 190, 1 }, { ET_GROUP_206, 206, 1 } };

TEST(Conditions, KindsThatTheHookMayWrite)
{
    for (KindRow const & row : gAsked) {
        EXPECT_EQ(row.number, row.kind);
        Held<Watching> const set(new Watching(KelpString("{A}")));
        set->fWrites = row.number;
        Tree const tree(row.kind, std::vector<Tree>(row.operands, kind(300)));
        EXPECT_EQ("ours", set->Filter(tree.get(), nullptr)->getText().toUTF8()) << row.number;
        EXPECT_EQ(Kinds{ row.number }, set->fAsked);
    }
    for (KindRow const & row : gNotAsked) {
        EXPECT_EQ(row.number, row.kind);
        Held<Watching> const set(new Watching(KelpString("{A}")));
        set->fWrites = row.number;
        set->Filter(Tree(row.kind, std::vector<Tree>(row.operands, ET_UNDEFINED)).get(), nullptr);
        EXPECT_EQ(Kinds{}, set->fAsked) << row.number;
    }
}

TEST(Conditions, UnknownKindsAndMissingOperands)
{
    std::vector<bool> known(302, false);
    for (std::vector<KindRow> const & rows : { gAsked, gNotAsked }) {
        for (KindRow const & row : rows) {
            known[static_cast<std::size_t>(row.number)] = true;
            if (row.operands == 0)
                continue;
            Fixture f;
            Tree const tree(row.kind, std::vector<Tree>(row.operands - 1, a));
            EXPECT_THROW(filter(f, tree), std::out_of_range) << row.number;
            EXPECT_EQ("{A}", f.set->getText().toUTF8());
        }
    }
    Held<Watching> const set(new Watching(KelpString("{it's}")));
    set->getQuotedText();
    for (std::int32_t number = -1; number <= 300; ++number) {
        if (number >= 0 && known[static_cast<std::size_t>(number)])
            continue;
        Tree const tree(ET_AND, { a, { kind(number), { a } } });
        expect_error(
            { MDX_ERR_BAD_EXPRESSION }, [&] { set->Filter(tree.get(), nullptr); }, std::to_string(number));
        EXPECT_EQ(Kinds({ 151, 124 }), set->fAsked) << number;
        set->fAsked.clear();
    }
    EXPECT_EQ("{it's}", set->getText().toUTF8());
    EXPECT_EQ("{it''s}", set->getQuotedText().toUTF8());
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
    Tree left = text(u"first");
    Tree right = text(u"last");
    for (int i = 0; i < 1999; ++i) {
        left = Tree(ET_AND, { left, a });
        right = Tree(ET_AND, { a, right });
    }
    left = Tree(ET_AND, { left, text(u"last") });
    right = Tree(ET_AND, { text(u"first"), right });
    for (Tree const & tree : { left, right }) {
        Fixture f;
        std::string const have = filter(f, tree)->getText().toUTF8();
        EXPECT_EQ(2000U * 5 + 1999 + 5 + 4, have.size());
        EXPECT_EQ("first AND a AND a AND ", have.substr(0, 22));
        EXPECT_EQ(" AND a AND a AND last", have.substr(have.size() - 21));
    }
}

}
