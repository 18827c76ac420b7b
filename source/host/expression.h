#pragma once
#include "variant.h"

#include <cstdint>
#include <vector>

namespace BRIM_o {

/// The kinds of node in a condition tree. Each comment shows the text of the node; a, b and c are its operands.
/// Translating a node of any other kind throws MDX_ERR_BAD_EXPRESSION.
enum ExpressionType : std::int32_t {
    ET_BETWEEN = 0,        ///< a >= b AND a <= c
    ET_OUTSIDE = 1,        ///< a < b OR a > c
    ET_NATIVE = 2,         ///< its text; unlike ET_STRING, never offered to server_translate
    ET_CURRENTSET = 3,     ///< the set that is filtered
    ET_TUPLE_IS_NULL = 19, ///< a = NULL; the operand is ET_TUPLE or ET_CURRENT
    ET_FILTER = 37,        ///< FILTER( a, b ) or FILTER( a, b, c ); likewise the next four
    ET_TOPSUM = 38,
    ET_BOTTOMSUM = 39,
    ET_TOPPERCENT = 40,
    ET_BOTTOMPERCENT = 41,
    ET_CURRENT = 42,     ///< the tuple that is given to TakeFilter
    ET_TUPLE_VALUE = 52, ///< a, the value of a tuple
    ET_EXCEPT = 64,      ///< EXCEPT( a, b ) or EXCEPT( a, b, c ); likewise the next two
    ET_BOTTOMCOUNT = 71,
    ET_TOPCOUNT = 72,
    ET_MEMBER_VALUE = 86, ///< a, the value of a member
    ET_STRING = 124,      ///< its text; a text constant includes its quotes
    ET_TUPLE = 140,       ///< ( a, b, ... )
    ET_UNDEFINED = 141,   ///< 1<2, which is always true
    ET_VALUE = 142,       ///< its value, as a real number
    ET_BOOLVAL = 143,     ///< 1<2 or 1>2: its value as a bool
    ET_EQUALTO = 145,     ///< a = b, without parentheses; likewise the next seven
    ET_NOTEQUALTO = 146,
    ET_LESSTHAN = 147,
    ET_LESSTHANOREQUALTO = 148,
    ET_GREATERTHAN = 149,
    ET_GREATERTHANOREQUALTO = 150,
    ET_AND = 151,
    ET_OR = 152,
    ET_NOT = 153,    ///< NOT( a )
    ET_NEGATE = 157, ///< -( a )
    ET_ADD = 158,    ///< ( a ) + ( b ), without parentheses around an ET_TUPLE_VALUE; likewise the next three
    ET_SUBTRACT = 159,
    ET_TIMES = 160,
    ET_DIVIDE = 161,
    ET_INTDIVIDE = 162, ///< as ET_DIVIDE, unless a dialect has a function for it
    ET_GROUP_190 = 190, ///< ( a )
    ET_TEXT_193 = 193,  ///< its text
    ET_TEXT_199 = 199,  ///< its text
    ET_GROUP_206 = 206  ///< ( a )
};

/// One node of a condition tree, implemented by the host. A node has the operands of its kind, none of them null;
/// if one is missing, std::out_of_range is thrown. The library keeps no node. The tree must not change during a
/// call.
class Expression {
public:
    virtual std::vector<Expression *> const & getChildren() = 0; ///< the operands, in order
    virtual ExpressionType getType() = 0;
    virtual VARIANT const * getValue() = 0;   ///< for ET_VALUE and ET_BOOLVAL; null is rejected
    virtual char16_t const * getString() = 0; ///< for the kinds that hold a text; ends with a zero

protected:
    ~Expression() = default;
};

}
