#pragma once
#include "odbomodule/host/export.h"
#include "odbomodule/host/kelp_string.h"

#include <cstdint>

// Numbers to text, the same in every locale.
class SUPPORT_API StringConverters {
public:
    // Digits of `value`, with "-" ahead when it is negative. Letters are small. A radix outside 2 to 36
    // counts as 10.
    static void convertIntegerToString(std::int32_t value, KelpString & out, std::int32_t radix);

    // The shortest decimal form that reads back as `value`, or its rounding to `digits` significant digits
    // (1 to 17) where that is shorter; no trailing zeros, "." as the separator. From 1e`digits` on, and
    // below 0.0001, the exponent form, as in 1e+20. `radix` is 10; `alwaysExponent` asks for the exponent
    // form in any case. Infinities and not-a-number give "inf", "-inf" and "nan".
    static void convertRealToString(
        double value, KelpString & out, std::int32_t radix, std::int32_t digits, bool alwaysExponent);
};
