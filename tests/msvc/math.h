#pragma once
#include_next <math.h>

// Wine has macros where Visual Studio has functions.
#undef fpclassify
#undef isfinite
#undef isinf
#undef isnan
#undef isnormal
#undef signbit
template <class Number>
bool isfinite(Number x)
{
    return __builtin_isfinite(x);
}
template <class Number>
bool isinf(Number x)
{
    return __builtin_isinf(x);
}
template <class Number>
bool isnan(Number x)
{
    return __builtin_isnan(x);
}
