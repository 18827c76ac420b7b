#pragma once
#include "export.h"
#include "kelp_string.h"

#include <cstdint>

/// Writes numbers as text, the same in every locale.
class SUPPORT_API StringConverters {
public:
    /// Writes the digits of `value`, after a "-" if it is negative. Letters are in lower case. A radix outside 2 to
    /// 36 counts as 10.
    static void convertIntegerToString(std::int32_t value, KelpString & out, std::int32_t radix);

    /// Writes the shortest decimal number that reads back as `value`. If that has more than `digits` significant
    /// digits (1 to 17), writes the exact value rounded to that many digits, without trailing zeros. The separator
    /// is ".". Writes an exponent, as in 1e+20, if the rounded magnitude is 10 to the power of `digits` or more, or
    /// is below 0.0001 and not 0. With `alwaysExponent`, writes one for every finite number. Infinities and
    /// not-a-number are written as "inf", "-inf" and "nan". `radix` is not used.
    static void convertRealToString(
        double value, KelpString & out, std::int32_t radix, std::int32_t digits, bool alwaysExponent);
};
