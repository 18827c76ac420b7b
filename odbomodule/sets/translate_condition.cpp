#include "odbomodule/sets/mdx_set.h"

#include "odbomodule/base/mdx_error.h"
#include "odbomodule/base/text.h"
#include "odbomodule/expressions/mdx_tuple.h"
#include "odbomodule/host/automation.h"
#include "odbomodule/host/expression.h"
#include "odbomodule/host/string_converters.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>

using namespace BRIM_o;

namespace {

constexpr std::int32_t kRadix = 10;
constexpr std::int32_t kDigits = 16;

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
        if (source == nullptr || VariantChangeType(&fValue, source, 0, type) != S_OK)
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

bool MDXSet::server_translate(KelpString &, Expression *, MDXTuple const *)
{
    return false;
}

// Trees go deep, and each level of one is a call: this function and what it ends in keep no more than one text and
// few locals, and the first operand is translated into the text that the node itself goes on with.
void MDXSet::translate_condition(KelpString & text, Expression * expression, MDXTuple const * tuple)
{
    ExpressionType const type = expression->getType();
    switch (type) {
    case ET_NATIVE: return translate_payload(text, expression);
    case ET_TUPLE_VALUE:
    case ET_MEMBER_VALUE: return translate_condition(text, operand(expression, 0), tuple);
    case ET_UNDEFINED: text = "1<2"; return;
    case ET_BOOLVAL: return translate_bool(text, expression);
    case ET_EQUALTO: return translate_infix(text, expression, tuple, " = ");
    case ET_NOTEQUALTO: return translate_infix(text, expression, tuple, " <> ");
    case ET_LESSTHAN: return translate_infix(text, expression, tuple, " < ");
    case ET_LESSTHANOREQUALTO: return translate_infix(text, expression, tuple, " <= ");
    case ET_GREATERTHAN: return translate_infix(text, expression, tuple, " > ");
    case ET_GREATERTHANOREQUALTO: return translate_infix(text, expression, tuple, " >= ");
    case ET_NEGATE: return translate_enclosed(text, expression, tuple, "-( ", " )");
    case ET_GROUP_190:
    case ET_GROUP_206: return translate_enclosed(text, expression, tuple, "( ", " )");

    // The server is asked about these before anything of them is translated.
    case ET_BETWEEN:
    case ET_OUTSIDE:
    case ET_CURRENTSET:
    case ET_TUPLE_IS_NULL:
    case ET_FILTER:
    case ET_TOPSUM:
    case ET_BOTTOMSUM:
    case ET_TOPPERCENT:
    case ET_BOTTOMPERCENT:
    case ET_CURRENT:
    case ET_EXCEPT:
    case ET_BOTTOMCOUNT:
    case ET_TOPCOUNT:
    case ET_STRING:
    case ET_TUPLE:
    case ET_VALUE:
    case ET_AND:
    case ET_OR:
    case ET_NOT:
    case ET_ADD:
    case ET_SUBTRACT:
    case ET_TIMES:
    case ET_DIVIDE:
    case ET_INTDIVIDE:
    case ET_TEXT_193:
    case ET_TEXT_199: break;

    default: reject();
    }

    if (server_translate(text, expression, tuple))
        return;

    switch (type) {
    case ET_BETWEEN: return translate_range(text, expression, tuple, true);
    case ET_OUTSIDE: return translate_range(text, expression, tuple, false);
    case ET_CURRENTSET: text = fText; return;
    case ET_CURRENT: text = tuple->getText(); return;
    case ET_TUPLE_IS_NULL: return translate_null_test(text, expression, tuple);
    case ET_STRING:
    case ET_TEXT_193:
    case ET_TEXT_199: return translate_payload(text, expression);
    case ET_TUPLE: return translate_list(text, expression, tuple, nullptr);
    case ET_VALUE: return translate_value(text, expression);
    case ET_AND: return translate_infix(text, expression, tuple, " AND ");
    case ET_OR: return translate_infix(text, expression, tuple, " OR ");
    case ET_NOT: return translate_enclosed(text, expression, tuple, "NOT( ", " )");
    case ET_ADD: return translate_arithmetic(text, expression, tuple, " + ");
    case ET_SUBTRACT: return translate_arithmetic(text, expression, tuple, " - ");
    case ET_TIMES: return translate_arithmetic(text, expression, tuple, " * ");
    case ET_DIVIDE:
    case ET_INTDIVIDE: return translate_arithmetic(text, expression, tuple, " / ");
    case ET_FILTER: return translate_list(text, expression, tuple, "FILTER( ");
    case ET_EXCEPT: return translate_list(text, expression, tuple, "EXCEPT( ");
    case ET_TOPCOUNT: return translate_list(text, expression, tuple, "TOPCOUNT( ");
    case ET_BOTTOMCOUNT: return translate_list(text, expression, tuple, "BOTTOMCOUNT( ");
    case ET_TOPSUM: return translate_list(text, expression, tuple, "TOPSUM( ");
    case ET_BOTTOMSUM: return translate_list(text, expression, tuple, "BOTTOMSUM( ");
    case ET_TOPPERCENT: return translate_list(text, expression, tuple, "TOPPERCENT( ");
    case ET_BOTTOMPERCENT: return translate_list(text, expression, tuple, "BOTTOMPERCENT( ");
    default: return;
    }
}

void MDXSet::translate_payload(KelpString & text, Expression * expression)
{
    text = expression->getString();
}

void MDXSet::translate_value(KelpString & text, Expression * expression)
{
    ConvertedValue const value(expression, VT_R8);
    if (!std::isfinite(value->dblVal))
        reject();
    KelpString digits;
    StringConverters::convertRealToString(value->dblVal, digits, kRadix, kDigits, false);
    text = digits;
}

void MDXSet::translate_bool(KelpString & text, Expression * expression)
{
    ConvertedValue const value(expression, VT_BOOL);
    text = value->boolVal != VARIANT_FALSE ? "1<2" : "1>2";
}

void MDXSet::translate_enclosed(
    KelpString & text, Expression * expression, MDXTuple const * tuple, char const * opening, char const * closing)
{
    text.clear();
    translate_condition(text, operand(expression, 0), tuple);
    enclose(text, opening, closing);
}

void MDXSet::translate_infix(
    KelpString & text, Expression * expression, MDXTuple const * tuple, char const * keyword)
{
    text.clear();
    translate_condition(text, operand(expression, 0), tuple);
    KelpString right;
    translate_condition(right, operand(expression, 1), tuple);
    merge(text, keyword, right);
}

// A tuple's value stands bare, any other operand in parentheses.
void MDXSet::translate_arithmetic(
    KelpString & text, Expression * expression, MDXTuple const * tuple, char const * sign)
{
    text.clear();
    translate_condition(text, operand(expression, 0), tuple);
    if (operand(expression, 0)->getType() != ET_TUPLE_VALUE)
        enclose(text, "( ", " )");
    KelpString right;
    translate_condition(right, operand(expression, 1), tuple);
    if (operand(expression, 1)->getType() != ET_TUPLE_VALUE)
        enclose(right, "( ", " )");
    merge(text, sign, right);
}

// The first operand is translated once and written twice.
void MDXSet::translate_range(KelpString & text, Expression * expression, MDXTuple const * tuple, bool between)
{
    text.clear();
    translate_condition(text, operand(expression, 0), tuple);
    std::size_t const length = text.size();
    KelpString bound;
    translate_condition(bound, operand(expression, 1), tuple);
    merge(text, between ? " >= " : " < ", bound);
    text += between ? " AND " : " OR ";
    append_start(text, length);
    bound.clear();
    translate_condition(bound, operand(expression, 2), tuple);
    merge(text, between ? " <= " : " > ", bound);
}

void MDXSet::translate_null_test(KelpString & text, Expression * expression, MDXTuple const * tuple)
{
    ExpressionType const type = operand(expression, 0)->getType();
    if (type != ET_TUPLE && type != ET_CURRENT)
        reject();
    text.clear();
    translate_condition(text, operand(expression, 0), tuple);
    append(text, " = NULL");
}

// A set function reads two operands, or three; a tuple, without a function, all of them, and closes with a blank.
void MDXSet::translate_list(
    KelpString & text, Expression * expression, MDXTuple const * tuple, char const * function)
{
    text.clear();
    translate_condition(text, operand(expression, 0), tuple);
    enclose(text, function != nullptr ? function : "( ", "");
    std::size_t const held = expression->getChildren().size();
    std::size_t const read = function != nullptr ? std::clamp<std::size_t>(held, 2, 3) : held;
    KelpString next;
    for (std::size_t i = 1; i < read; ++i) {
        next.clear();
        translate_condition(next, operand(expression, i), tuple);
        merge(text, ", ", next);
    }
    text += function != nullptr ? " )" : " ) ";
}
