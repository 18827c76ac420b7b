#pragma once
#include "export.h"
#include "kelp_string.h"

#include <cstdint>

// Numbers to text, the same in every locale.
class SUPPORT_API StringConverters {
public:
    // The digits of `value`, with a "-" before them when it is negative. Letters are small. A radix outside 2 to 36
    // counts as 10.
    static void convertIntegerToString(std::int32_t value, KelpString & out, std::int32_t radix);

    // The shortest decimal number that reads back as `value`; where that has more than `digits` significant digits
    // (1 to 17), `value` is rounded to so many. No trailing zeros; the separator is ".". Numbers from 1e`digits` on
    // and below 0.0001 take the exponent form, as in 1e+20; with `alwaysExponent` all do. `radix` is not read.
    // Infinities and not-a-number give "inf", "-inf" and "nan".
    static void convertRealToString(
        double value, KelpString & out, std::int32_t radix, std::int32_t digits, bool alwaysExponent);
};
