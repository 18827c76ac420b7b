#include "support/common/error_messages.h"

namespace {

struct ErrorMessage {
    std::uint32_t code;
    char const * text;
};

// One row for each code of MDXErrorCode in odbomodule/base/mdx_error.h. This library depends on no module, so that
// the codes stand here by number a second time. A new code there needs a row here.
constexpr ErrorMessage kMessages[] = {
    { 0x201706B, "The query has no axes." },                                    // MDX_ERR_NO_AXES
    { 0x201706C, "An axis was added out of order." },                           // MDX_ERR_AXIS_OUT_OF_ORDER
    { 0x201706D, "There is no formula to create." },                            // MDX_ERR_NO_FORMULAS
    { 0x201706E, "The numbers of property names and property values differ." }, // MDX_ERR_PROPERTY_COUNT_MISMATCH
    { 0x201706F, "There is nothing to drop." },                                 // MDX_ERR_NOTHING_TO_DROP
    { 0x2017070, "Members and sets cannot be dropped by one statement." },      // MDX_ERR_MIXED_DROP
    { 0x2017076, "The value %1 is out of range for the enumeration %2." },      // MDX_ERR_BAD_ENUM
    { 0x2017077, "A tuple is needed to measure by." },                          // MDX_ERR_MISSING_TUPLE
    { 0x2017078, "The tuple is empty." },                                       // MDX_ERR_EMPTY_TUPLE
    { 0x2017079, "The expression cannot be translated." },                      // MDX_ERR_BAD_EXPRESSION
};

}

char const * error_message(std::uint32_t code) noexcept
{
    for (ErrorMessage const & message : kMessages) {
        if (message.code == code)
            return message.text;
    }
    return nullptr;
}
