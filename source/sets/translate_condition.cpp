#include "mdx_set.h"

#include "../frame/mdx_error.h"
#include "../text.h"
#include "../expressions/mdx_tuple.h"
#include "../host/automation.h"
#include "../host/expression.h"
#include "../host/string_converters.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <new>

using namespace BRIM_o;

// How the nodes of one kind are translated. A shape is a function that writes a node of such kinds to `text`, which
// is empty; it translates each operand by a call of the set's translate_condition.
struct ConditionKind {
    using Shape = void(MDXSet * set, KelpString & text, Expression * expression, MDXTuple const * tuple,
        ConditionKind const & kind);

    ExpressionType type;
    bool asksServer; // before anything of the node is translated
    Shape * write;
    Row text{ {}, nullptr, 0 }; // its places are the operands; empty for a shape that has a text of its own
};

namespace {

[[noreturn]] void reject()
{
    throw MDXError(MDX_ERR_BAD_EXPRESSION);
}

// An operand that is missing throws std::out_of_range.
Expression * operand(Expression * expression, std::size_t index)
{
    return expression->getChildren().at(index);
}

// The node's value in another type; rejected where the value has no such form.
class ConvertedValue {
public:
    ConvertedValue(Expression * expression, VARTYPE type)
    {
        VariantInit(&fValue);
        auto * const source = const_cast<VARIANT *>(expression->getValue()); // some systems' headers lack a const
        if (source == nullptr)
            reject();
        HRESULT const result = VariantChangeType(&fValue, source, 0, type);
        if (result == E_OUTOFMEMORY)
            throw std::bad_alloc();
        if (result != S_OK)
            reject();
    }
    ~ConvertedValue() { VariantClear(&fValue); }
    ConvertedValue(ConvertedValue const &) = delete;
    ConvertedValue & operator=(ConvertedValue const &) = delete;

    VARIANT const * operator->() const { return &fValue; }

private:
    VARIANT fValue;
};

}

// The shapes. Trees go deep, and each level of one is a call: a shape keeps no more than one text and few locals,
// and the first operand is translated into the text that the node itself goes on with.
struct ConditionShapes {
    // The row as it is.
    static void literal(MDXSet *, KelpString & text, Expression *, MDXTuple const *, ConditionKind const & kind)
    {
        text.append(kind.text.letters());
    }

    // What the node itself, the set or the tuple has to say.
    static void payload(
        MDXSet *, KelpString & text, Expression * expression, MDXTuple const *, ConditionKind const &)
    {
        text = expression->getString();
    }
    static void current_set(MDXSet * set, KelpString & text, Expression *, MDXTuple const *, ConditionKind const &)
    {
        text = set->fText;
    }
    static void current_tuple(
        MDXSet *, KelpString & text, Expression *, MDXTuple const * tuple, ConditionKind const &)
    {
        text = tuple->getText();
    }
    static void value(MDXSet *, KelpString & text, Expression * expression, MDXTuple const *, ConditionKind const &)
    {
        constexpr std::int32_t kRadix = 10;
        constexpr std::int32_t kDigits = 16;
        ConvertedValue const value(expression, VT_R8);
        if (!std::isfinite(value->dblVal))
            reject();
        StringConverters::convertRealToString(value->dblVal, text, kRadix, kDigits, false);
    }
    static void truth(MDXSet *, KelpString & text, Expression * expression, MDXTuple const *, ConditionKind const &)
    {
        ConvertedValue const value(expression, VT_BOOL);
        text = value->boolVal != VARIANT_FALSE ? u"1<2" : u"1>2";
    }

    // The only operand, alone or between two pieces.
    static void operand_alone(
        MDXSet * set, KelpString & text, Expression * expression, MDXTuple const * tuple, ConditionKind const &)
    {
        set->translate_condition(text, operand(expression, 0), tuple);
    }
    static void one_operand(MDXSet * set, KelpString & text, Expression * expression, MDXTuple const * tuple,
        ConditionKind const & kind)
    {
        set->translate_condition(text, operand(expression, 0), tuple);
        enclose(text, kind.text.piece(0), kind.text.piece(1));
    }
    static void null_test(MDXSet * set, KelpString & text, Expression * expression, MDXTuple const * tuple,
        ConditionKind const & kind)
    {
        ExpressionType const type = operand(expression, 0)->getType();
        if (type != ET_TUPLE && type != ET_CURRENT)
            reject();
        one_operand(set, text, expression, tuple, kind);
    }

    static void two_operands(MDXSet * set, KelpString & text, Expression * expression, MDXTuple const * tuple,
        ConditionKind const & kind)
    {
        set->translate_condition(text, operand(expression, 0), tuple);
        KelpString right;
        set->translate_condition(right, operand(expression, 1), tuple);
        merge(text, kind.text.piece(1), right);
    }
    // A tuple's value stands bare, any other operand in parentheses, which the row does not show.
    static void arithmetic(MDXSet * set, KelpString & text, Expression * expression, MDXTuple const * tuple,
        ConditionKind const & kind)
    {
        set->translate_condition(text, operand(expression, 0), tuple);
        if (operand(expression, 0)->getType() != ET_TUPLE_VALUE)
            enclose(text, u"( ", u" )");
        KelpString right;
        set->translate_condition(right, operand(expression, 1), tuple);
        if (operand(expression, 1)->getType() != ET_TUPLE_VALUE)
            enclose(right, u"( ", u" )");
        merge(text, kind.text.piece(1), right);
    }
    // The first operand is translated once and written twice.
    static void range(MDXSet * set, KelpString & text, Expression * expression, MDXTuple const * tuple,
        ConditionKind const & kind)
    {
        set->translate_condition(text, operand(expression, 0), tuple);
        std::size_t const length = text.size();
        KelpString bound;
        set->translate_condition(bound, operand(expression, 1), tuple);
        merge(text, kind.text.piece(1), bound);
        append_start(text, kind.text.piece(2), length);
        bound.clear();
        set->translate_condition(bound, operand(expression, 2), tuple);
        merge(text, kind.text.piece(3), bound);
    }

    // Two operands, and a third if there is one. The pieces of the row that are read are its first, that between
    // the first two places, and its last; so for a tuple, of which the row shows two operands.
    static void set_function(MDXSet * set, KelpString & text, Expression * expression, MDXTuple const * tuple,
        ConditionKind const & kind)
    {
        list(set, text, expression, tuple, kind.text,
            std::clamp<std::size_t>(expression->getChildren().size(), 2, 3));
    }
    // All operands, of which there is at least one.
    static void tuple_of_all(MDXSet * set, KelpString & text, Expression * expression, MDXTuple const * tuple,
        ConditionKind const & kind)
    {
        list(set, text, expression, tuple, kind.text, expression->getChildren().size());
    }
    static void list(MDXSet * set, KelpString & text, Expression * expression, MDXTuple const * tuple,
        Row const & row, std::size_t count)
    {
        set->translate_condition(text, operand(expression, 0), tuple);
        enclose(text, row.piece(0), {});
        KelpString next;
        for (std::size_t i = 1; i < count; ++i) {
            next.clear();
            set->translate_condition(next, operand(expression, i), tuple);
            merge(text, row.piece(1), next);
        }
        text.append(row.piece(row.places()));
    }
};

namespace {

using Shapes = ConditionShapes;
constexpr bool kAsked = true;
constexpr bool kNotAsked = false;

constexpr ConditionKind kKinds[] = {
    { ET_BETWEEN, kAsked, Shapes::range, row<u"$1 >= $2 AND $1 <= $3"> },
    { ET_OUTSIDE, kAsked, Shapes::range, row<u"$1 < $2 OR $1 > $3"> },
    { ET_NATIVE, kNotAsked, Shapes::payload },
    { ET_CURRENTSET, kAsked, Shapes::current_set },
    { ET_TUPLE_IS_NULL, kAsked, Shapes::null_test, row<u"$1 = NULL"> },
    { ET_FILTER, kAsked, Shapes::set_function, row<u"FILTER( $1, $2, $3 )"> },
    { ET_TOPSUM, kAsked, Shapes::set_function, row<u"TOPSUM( $1, $2, $3 )"> },
    { ET_BOTTOMSUM, kAsked, Shapes::set_function, row<u"BOTTOMSUM( $1, $2, $3 )"> },
    { ET_TOPPERCENT, kAsked, Shapes::set_function, row<u"TOPPERCENT( $1, $2, $3 )"> },
    { ET_BOTTOMPERCENT, kAsked, Shapes::set_function, row<u"BOTTOMPERCENT( $1, $2, $3 )"> },
    { ET_CURRENT, kAsked, Shapes::current_tuple },
    { ET_TUPLE_VALUE, kNotAsked, Shapes::operand_alone },
    { ET_EXCEPT, kAsked, Shapes::set_function, row<u"EXCEPT( $1, $2, $3 )"> },
    { ET_BOTTOMCOUNT, kAsked, Shapes::set_function, row<u"BOTTOMCOUNT( $1, $2, $3 )"> },
    { ET_TOPCOUNT, kAsked, Shapes::set_function, row<u"TOPCOUNT( $1, $2, $3 )"> },
    { ET_MEMBER_VALUE, kNotAsked, Shapes::operand_alone },
    { ET_STRING, kAsked, Shapes::payload },
    { ET_TUPLE, kAsked, Shapes::tuple_of_all, row<u"( $1, $2 ) "> },
    { ET_UNDEFINED, kNotAsked, Shapes::literal, row<u"1<2"> },
    { ET_VALUE, kAsked, Shapes::value },
    { ET_BOOLVAL, kNotAsked, Shapes::truth },
    { ET_EQUALTO, kNotAsked, Shapes::two_operands, row<u"$1 = $2"> },
    { ET_NOTEQUALTO, kNotAsked, Shapes::two_operands, row<u"$1 <> $2"> },
    { ET_LESSTHAN, kNotAsked, Shapes::two_operands, row<u"$1 < $2"> },
    { ET_LESSTHANOREQUALTO, kNotAsked, Shapes::two_operands, row<u"$1 <= $2"> },
    { ET_GREATERTHAN, kNotAsked, Shapes::two_operands, row<u"$1 > $2"> },
    { ET_GREATERTHANOREQUALTO, kNotAsked, Shapes::two_operands, row<u"$1 >= $2"> },
    { ET_AND, kAsked, Shapes::two_operands, row<u"$1 AND $2"> },
    { ET_OR, kAsked, Shapes::two_operands, row<u"$1 OR $2"> },
    { ET_NOT, kAsked, Shapes::one_operand, row<u"NOT( $1 )"> },
    { ET_NEGATE, kNotAsked, Shapes::one_operand, row<u"-( $1 )"> },
    { ET_ADD, kAsked, Shapes::arithmetic, row<u"$1 + $2"> },
    { ET_SUBTRACT, kAsked, Shapes::arithmetic, row<u"$1 - $2"> },
    { ET_TIMES, kAsked, Shapes::arithmetic, row<u"$1 * $2"> },
    { ET_DIVIDE, kAsked, Shapes::arithmetic, row<u"$1 / $2"> },
    { ET_INTDIVIDE, kAsked, Shapes::arithmetic, row<u"$1 / $2"> },
    { ET_GROUP_190, kNotAsked, Shapes::one_operand, row<u"( $1 )"> },
    { ET_TEXT_193, kAsked, Shapes::payload },
    { ET_TEXT_199, kAsked, Shapes::payload },
    { ET_GROUP_206, kNotAsked, Shapes::one_operand, row<u"( $1 )"> },
};

constexpr std::size_t kNumbers = ET_GROUP_206 + 1; // from 0 to the last kind's

// The place of each kind in the table, and for an unknown number the place after its end.
constexpr auto kPlaces = [] {
    std::array<std::uint8_t, kNumbers> places{};
    places.fill(std::size(kKinds));
    for (std::uint8_t i = 0; ConditionKind const & kind : kKinds)
        places[static_cast<std::size_t>(kind.type)] = i++;
    return places;
}();

ConditionKind const & kind_of(ExpressionType type)
{
    if (type < 0 || static_cast<std::size_t>(type) >= kNumbers)
        reject();
    std::size_t const place = kPlaces[static_cast<std::size_t>(type)];
    if (place == std::size(kKinds))
        reject();
    return kKinds[place];
}

}

void MDXSet::translate_condition(KelpString & text, Expression * expression, MDXTuple const * tuple)
{
    ConditionKind const & kind = kind_of(expression->getType());
    if (kind.asksServer && server_translate(text, expression, tuple))
        return;
    text.clear();
    kind.write(this, text, expression, tuple, kind);
}

bool MDXSet::server_translate(KelpString &, Expression *, MDXTuple const *)
{
    return false;
}
