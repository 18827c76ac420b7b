#pragma once
#include <cstdint>

/// Codes of the errors that the module raises. Their messages are in support/common/error_messages.cpp.
enum MDXErrorCode : std::uint32_t {
    MDX_ERR_NO_AXES = 0x201706B,                 ///< getText() of a SELECT that has no axis
    MDX_ERR_AXIS_OUT_OF_ORDER = 0x201706C,       ///< an axis whose number is not the next one
    MDX_ERR_NO_FORMULAS = 0x201706D,             ///< getText() of a CREATE that has no formula
    MDX_ERR_PROPERTY_COUNT_MISMATCH = 0x201706E, ///< a member formula with more or fewer values than names
    MDX_ERR_NOTHING_TO_DROP = 0x201706F,         ///< getText() of a DROP that has no name
    MDX_ERR_MIXED_DROP = 0x2017070,              ///< members and sets in one DROP
    MDX_ERR_BAD_ENUM = 0x2017076,                ///< a value out of range; inserts: the value, the enumeration
    MDX_ERR_MISSING_TUPLE = 0x2017077,           ///< no tuple for TakeExtremity or for memory_cube's Condition::get
    MDX_ERR_EMPTY_TUPLE = 0x2017078,             ///< getText() of a tuple that has no field
    MDX_ERR_BAD_EXPRESSION = 0x2017079           ///< a node of a condition tree that has no translation
};
