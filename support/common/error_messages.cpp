#include "error_messages.h"

#include <odbomodule/host/error_codes.h>

char const * error_message(std::uint32_t code) noexcept
{
    switch (static_cast<MDXErrorCode>(code)) { // without a default: compilers warn about a code that has no message
    case MDX_ERR_NO_AXES: return "The query has no axes.";
    case MDX_ERR_AXIS_OUT_OF_ORDER: return "An axis was added out of order.";
    case MDX_ERR_NO_FORMULAS: return "There is no formula to create.";
    case MDX_ERR_PROPERTY_COUNT_MISMATCH: return "The numbers of property names and property values differ.";
    case MDX_ERR_NOTHING_TO_DROP: return "There is nothing to drop.";
    case MDX_ERR_MIXED_DROP: return "One statement cannot drop both members and sets.";
    case MDX_ERR_BAD_ENUM: return "The value %1 is out of range for the enumeration %2.";
    case MDX_ERR_MISSING_TUPLE: return "The operation or condition needs a tuple, but none was given.";
    case MDX_ERR_EMPTY_TUPLE: return "The tuple is empty.";
    case MDX_ERR_BAD_EXPRESSION:
        return "The condition contains a node of an unknown kind, a value that does not convert to a finite number "
               "or a bool, or a null test of something other than a tuple.";
    }
    return nullptr;
}
