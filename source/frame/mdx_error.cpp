#include "mdx_error.h"

#include "../host/string_converters.h"

MDXError::MDXError(std::uint32_t code) : BaseError(code, "ODBOMODULE", SeverityError, NotCompleted) {}

MDXError::MDXError(MDXError const &) = default;
MDXError & MDXError::operator=(MDXError const &) = default;
MDXError::~MDXError() = default;

void raise_bad_enum(std::int32_t value, char const * enumeration)
{
    MDXError error(MDX_ERR_BAD_ENUM);
    KelpString digits;
    StringConverters::convertIntegerToString(value, digits, 10);
    error.addInsert(digits);
    error.addInsert(enumeration);
    throw error;
}
