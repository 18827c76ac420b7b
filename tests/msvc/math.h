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
int fpclassify(Number x)
{
    return __builtin_fpclassify(0, 1, 2, 3, 4, x);
}
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
template <class Number>
bool isnormal(Number x)
{
    return __builtin_isnormal(x);
}
