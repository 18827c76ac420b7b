#pragma once
#include "../host/base_error.h"
#include "../host/error_codes.h"
#include "../host/export.h"

#include <cstdint>

/// What the module throws, always by value. Its module is "ODBOMODULE", its level SeverityError, its status
/// NotCompleted. Catch it as MDXError, BaseError or BRIM_o::AnyError; it does not derive from std::exception.
class MDX_API MDXError : public BaseError {
public:
    explicit MDXError(std::uint32_t code);
    MDXError(MDXError const &);
    MDXError & operator=(MDXError const &);
    ~MDXError() override;
};

// For the module's own sources; the library does not export it. Throws MDX_ERR_BAD_ENUM with the value and the
// enumeration's name as inserts.
[[noreturn]] void raise_bad_enum(std::int32_t value, char const * enumeration);
