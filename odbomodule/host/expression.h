#pragma once
#include "odbomodule/host/variant.h"

#include <cstdint>
#include <vector>

namespace BRIM_o {

// The kinds of node in a condition tree. A node of another number is rejected.
enum ExpressionType : std::int32_t {
    ET_BETWEEN = 0,
    ET_OUTSIDE = 1,
    ET_NATIVE = 2,
    ET_CURRENTSET = 3,
    ET_TUPLE_IS_NULL = 19,
    ET_FILTER = 37,
    ET_TOPSUM = 38,
    ET_BOTTOMSUM = 39,
    ET_TOPPERCENT = 40,
    ET_BOTTOMPERCENT = 41,
    ET_CURRENT = 42,
    ET_TUPLE_VALUE = 52,
    ET_EXCEPT = 64,
    ET_BOTTOMCOUNT = 71,
    ET_TOPCOUNT = 72,
    ET_MEMBER_VALUE = 86,
    ET_STRING = 124,
    ET_TUPLE = 140,
    ET_UNDEFINED = 141,
    ET_VALUE = 142,
    ET_BOOLVAL = 143,
    ET_EQUALTO = 145,
    ET_NOTEQUALTO = 146,
    ET_LESSTHAN = 147,
    ET_LESSTHANOREQUALTO = 148,
    ET_GREATERTHAN = 149,
    ET_GREATERTHANOREQUALTO = 150,
    ET_AND = 151,
    ET_OR = 152,
    ET_NOT = 153,
    ET_NEGATE = 157,
    ET_ADD = 158,
    ET_SUBTRACT = 159,
    ET_TIMES = 160,
    ET_DIVIDE = 161,
    ET_INTDIVIDE = 162,
    ET_GROUP_190 = 190,
    ET_TEXT_193 = 193,
    ET_TEXT_199 = 199,
    ET_GROUP_206 = 206
};

// One node of a condition tree, implemented by the host. It has the operands of its kind, none of them null: with
// fewer of them, std::out_of_range is thrown. A tree stays as it is during a call.
class Expression {
public:
    virtual std::vector<Expression *> const & getChildren() = 0; // the operands, in order
    virtual ExpressionType getType() = 0;
    virtual VARIANT const * getValue() = 0;   // ET_VALUE and ET_BOOLVAL alone are asked; null is rejected
    virtual char16_t const * getString() = 0; // zero-ended; the kinds that hold a text alone are asked

protected:
    ~Expression() = default;
};

}
