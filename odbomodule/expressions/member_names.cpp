#include "odbomodule/expressions/member_names.h"

#include <algorithm>
#include <cstddef>
#include <utility>

static void double_each(KelpString & result, KelpString const & source, char character)
{
    std::size_t found = source.find(character, 0);
    if (found == KelpString::npos) {
        result = source;
        return;
    }
    auto const wanted = static_cast<char16_t>(character);
    KelpString doubled;
    doubled.reserve(source.size() + static_cast<std::size_t>(std::count(source.begin(), source.end(), wanted)));
    std::size_t start = 0;
    for (; found != KelpString::npos; found = source.find(character, start)) {
        doubled.append(source, start, found + 1 - start);
        doubled.push_back(wanted);
        start = found + 1;
    }
    doubled.append(source, start, KelpString::npos);
    result = std::move(doubled);
}

void quote_member_name(KelpString & result, KelpString const & source)
{
    double_each(result, source, '\'');
}

void double_sqaure_brackets(KelpString & result, KelpString const & source)
{
    double_each(result, source, ']');
}
