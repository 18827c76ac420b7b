#include "error_messages.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

struct ErrorMessage {
    std::uint32_t code;
    char const * text;
};

// One row for each code of MDXErrorCode in source/frame/mdx_error.h. This library depends on no module, so that
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
    { 0x2017079,                                                                // MDX_ERR_BAD_EXPRESSION
        "The condition has a node of an unknown kind, a value that is no finite number or no bool, or a null test of "
        "something other than a tuple." },
};

// Whether after each "%" comes the number of an insert.
constexpr bool names_inserts(std::string_view text)
{
    for (std::size_t at = 0; (at = text.find('%', at)) != text.npos; at += 2) {
        if (at + 1 == text.size() || text[at + 1] < '1' || text[at + 1] > '9')
            return false;
    }
    return true;
}
static_assert(std::all_of(std::begin(kMessages), std::end(kMessages),
    [](ErrorMessage const & message) { return names_inserts(message.text); }));

}

char const * error_message(std::uint32_t code) noexcept
{
    for (ErrorMessage const & message : kMessages) {
        if (message.code == code)
            return message.text;
    }
    return nullptr;
}
