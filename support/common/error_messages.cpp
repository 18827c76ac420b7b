#include "support/common/error_messages.h"

// The numbers stand here a second time, so that this library needs nothing of the modules that raise them.
char const * error_message(std::uint32_t code) noexcept
{
    switch (code) {
    case 0x201706B: return "The query has no axes.";          // MDX_ERR_NO_AXES
    case 0x201706C: return "An axis was added out of order."; // MDX_ERR_AXIS_OUT_OF_ORDER
    case 0x201706D: return "There is no formula to create.";  // MDX_ERR_NO_FORMULAS
    case 0x201706E:
        return "The numbers of property names and property values differ."; // MDX_ERR_PROPERTY_COUNT_MISMATCH
    case 0x201706F: return "There is nothing to drop.";                     // MDX_ERR_NOTHING_TO_DROP
    case 0x2017070: return "Members and sets cannot be dropped by one statement."; // MDX_ERR_MIXED_DROP
    case 0x2017076: return "The value %1 is out of range for the enumeration %2."; // MDX_ERR_BAD_ENUM
    case 0x2017077: return "A tuple is needed to measure by.";                     // MDX_ERR_MISSING_TUPLE
    case 0x2017078: return "The tuple is empty.";                                  // MDX_ERR_EMPTY_TUPLE
    case 0x2017079: return "The expression cannot be translated.";                 // MDX_ERR_BAD_EXPRESSION
    default: return nullptr;
    }
}
