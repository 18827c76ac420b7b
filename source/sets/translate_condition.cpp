#include "mdx_set.h"

#include "../expressions/mdx_tuple.h"
#include "../frame/mdx_error.h"
#include "../host/automation.h"
#include "../host/expression.h"
#include "../host/string_converters.h"
#include "../text.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <new>

using namespace BRIM_o;
using namespace mdx_text;

namespace {

struct Node;

// A kind of node. `shape` writes a node of this kind to its second argument, which is empty.
struct Kind {
    ExpressionType type;
    bool asksDialect; // server_translate is called before any operand is translated
    void (*shape)(Node const & node, KelpString & text);
    // Its placeholders are the operands; for set functions and tuples, $1 is the list of them. Empty if `shape`
    // needs no template.
    Template form{ {}, nullptr, 0 };
};

// A node that is being translated.
struct Node {
    using Translate = void(MDXSet * set, KelpString & text, Expression * expression, MDXTuple const * tuple);

    Expression * expression;
    MDXTuple const * tuple;
    Template const & form;
    MDXSet * set;
    KelpString const & setText;
    Translate * translate; // calls the set's translate_condition

    // Throws std::out_of_range if there is no such operand.
    Expression * operand(std::size_t index) const { return expression->getChildren().at(index); }
    // Writes the translation of an operand to `out`, which is empty.
    void operand(std::size_t index, KelpString & out) const { translate(set, out, operand(index), tuple); }
};

[[noreturn]] void reject()
{
    throw MDXError(MDX_ERR_BAD_EXPRESSION);
}

// The node's value, converted to another type. Rejects a value that cannot be converted.
class ConvertedValue {
public:
    ConvertedValue(Node const & node, VARTYPE type)
    {
        VariantInit(&fValue);
        auto * const source = const_cast<VARIANT *>(
            node.expression->getValue()); // some systems' headers lack a const
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

// The stack used per level limits the depth of a tree, so a shape has few local variables besides its texts. The
// first operand is translated directly into the node's own text, so a left-deep chain of ANDs takes linear time.

void literal(Node const & node, KelpString & text)
{
    text.append(node.form.letters());
}

void payload(Node const & node, KelpString & text)
{
    text = node.expression->getString();
}

void current_set(Node const & node, KelpString & text)
{
    text = node.setText;
}

void current_tuple(Node const & node, KelpString & text)
{
    text = node.tuple->getText();
}

void value(Node const & node, KelpString & text)
{
    constexpr std::int32_t kRadix = 10;
    constexpr std::int32_t kDigits = 16;
    ConvertedValue const number(node, VT_R8);
    if (!std::isfinite(number->dblVal))
        reject();
    StringConverters::convertRealToString(number->dblVal, text, kRadix, kDigits, false);
}

void truth(Node const & node, KelpString & text)
{
    ConvertedValue const boolean(node, VT_BOOL);
    text = boolean->boolVal != VARIANT_FALSE ? u"1<2" : u"1>2";
}

void pass_through(Node const & node, KelpString & text)
{
    node.operand(0, text);
}

void one_operand(Node const & node, KelpString & text)
{
    node.operand(0, text);
    enclose(text, node.form);
}

void null_test(Node const & node, KelpString & text)
{
    ExpressionType const type = node.operand(0)->getType();
    if (type != ET_TUPLE && type != ET_CURRENT)
        reject();
    one_operand(node, text);
}

void two_operands(Node const & node, KelpString & text)
{
    node.operand(0, text);
    KelpString second;
    node.operand(1, second);
    combine(text, node.form, second);
}

// The value of a tuple is written as it is, any other operand in parentheses.
inline void arithmetic_operand(Node const & node, std::size_t index, KelpString & text)
{
    node.operand(index, text);
    if (node.operand(index)->getType() != ET_TUPLE_VALUE)
        enclose(text, template_of<u"( $1 )">);
}

void arithmetic(Node const & node, KelpString & text)
{
    arithmetic_operand(node, 0, text);
    KelpString second;
    arithmetic_operand(node, 1, second);
    combine(text, node.form, second);
}

void three_operands(Node const & node, KelpString & text)
{
    node.operand(0, text);
    KelpString second, third;
    node.operand(1, second);
    node.operand(2, third);
    combine(text, node.form, second, third);
}

// Inserts the first `count` operands, separated by commas, as $1 of the template.
inline void list(Node const & node, std::size_t count, KelpString & text)
{
    node.operand(0, text);
    KelpString next;
    for (std::size_t i = 1; i < count; ++i) {
        next.clear();
        node.operand(i, next);
        combine(text, template_of<u"$1, $2">, next);
    }
    enclose(text, node.form);
}

void all_operands(Node const & node, KelpString & text)
{
    list(node, node.expression->getChildren().size(), text);
}

// Two operands, and a third if there is one.
void set_function(Node const & node, KelpString & text)
{
    list(node, std::clamp<std::size_t>(node.expression->getChildren().size(), 2, 3), text);
}

constexpr bool kAsked = true;
constexpr bool kNotAsked = false;

constexpr Kind kKinds[] = {
    { ET_BETWEEN, kAsked, three_operands, template_of<u"$1 >= $2 AND $1 <= $3"> },
    { ET_OUTSIDE, kAsked, three_operands, template_of<u"$1 < $2 OR $1 > $3"> },
    { ET_NATIVE, kNotAsked, payload },
    { ET_CURRENTSET, kAsked, current_set },
    { ET_TUPLE_IS_NULL, kAsked, null_test, template_of<u"$1 = NULL"> },
    { ET_FILTER, kAsked, set_function, template_of<u"FILTER( $1 )"> },
    { ET_TOPSUM, kAsked, set_function, template_of<u"TOPSUM( $1 )"> },
    { ET_BOTTOMSUM, kAsked, set_function, template_of<u"BOTTOMSUM( $1 )"> },
    { ET_TOPPERCENT, kAsked, set_function, template_of<u"TOPPERCENT( $1 )"> },
    { ET_BOTTOMPERCENT, kAsked, set_function, template_of<u"BOTTOMPERCENT( $1 )"> },
    { ET_CURRENT, kAsked, current_tuple },
    { ET_TUPLE_VALUE, kNotAsked, pass_through },
    { ET_EXCEPT, kAsked, set_function, template_of<u"EXCEPT( $1 )"> },
    { ET_BOTTOMCOUNT, kAsked, set_function, template_of<u"BOTTOMCOUNT( $1 )"> },
    { ET_TOPCOUNT, kAsked, set_function, template_of<u"TOPCOUNT( $1 )"> },
    { ET_MEMBER_VALUE, kNotAsked, pass_through },
    { ET_STRING, kAsked, payload },
    { ET_TUPLE, kAsked, all_operands, template_of<u"( $1 ) "> },
    { ET_UNDEFINED, kNotAsked, literal, template_of<u"1<2"> },
    { ET_VALUE, kAsked, value },
    { ET_BOOLVAL, kNotAsked, truth },
    { ET_EQUALTO, kNotAsked, two_operands, template_of<u"$1 = $2"> },
    { ET_NOTEQUALTO, kNotAsked, two_operands, template_of<u"$1 <> $2"> },
    { ET_LESSTHAN, kNotAsked, two_operands, template_of<u"$1 < $2"> },
    { ET_LESSTHANOREQUALTO, kNotAsked, two_operands, template_of<u"$1 <= $2"> },
    { ET_GREATERTHAN, kNotAsked, two_operands, template_of<u"$1 > $2"> },
    { ET_GREATERTHANOREQUALTO, kNotAsked, two_operands, template_of<u"$1 >= $2"> },
    { ET_AND, kAsked, two_operands, template_of<u"$1 AND $2"> },
    { ET_OR, kAsked, two_operands, template_of<u"$1 OR $2"> },
    { ET_NOT, kAsked, one_operand, template_of<u"NOT( $1 )"> },
    { ET_NEGATE, kNotAsked, one_operand, template_of<u"-( $1 )"> },
    { ET_ADD, kAsked, arithmetic, template_of<u"$1 + $2"> },
    { ET_SUBTRACT, kAsked, arithmetic, template_of<u"$1 - $2"> },
    { ET_TIMES, kAsked, arithmetic, template_of<u"$1 * $2"> },
    { ET_DIVIDE, kAsked, arithmetic, template_of<u"$1 / $2"> },
    { ET_INTDIVIDE, kAsked, arithmetic, template_of<u"$1 / $2"> },
    { ET_GROUP_190, kNotAsked, one_operand, template_of<u"( $1 )"> },
    { ET_TEXT_193, kAsked, payload },
    { ET_TEXT_199, kAsked, payload },
    { ET_GROUP_206, kNotAsked, one_operand, template_of<u"( $1 )"> },
};

static_assert(std::ranges::is_sorted(kKinds, {}, &Kind::type));

Kind const & kind_of(ExpressionType type)
{
    auto const * const found = std::ranges::lower_bound(kKinds, type, {}, &Kind::type);
    if (found == std::end(kKinds) || found->type != type)
        reject();
    return *found;
}

}

void MDXSet::translate_condition(KelpString & text, Expression * expression, MDXTuple const * tuple)
{
    Kind const & kind = kind_of(expression->getType());
    if (kind.asksDialect && server_translate(text, expression, tuple))
        return;
    text.clear();
    Node::Translate * const translate = [](MDXSet * set, KelpString & out, Expression * operand,
                                            MDXTuple const * current) {
        set->translate_condition(out, operand, current);
    };
    kind.shape({ expression, tuple, kind.form, this, fText, translate }, text);
}

bool MDXSet::server_translate(KelpString &, Expression *, MDXTuple const *)
{
    return false;
}
