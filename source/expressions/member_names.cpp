#include "member_names.h"

#include "../text.h"

using namespace mdx_text;

void quote_member_name(KelpString & result, KelpString const & source)
{
    double_each(result, source, '\'');
}

void double_sqaure_brackets(KelpString & result, KelpString const & source)
{
    double_each(result, source, ']');
}
