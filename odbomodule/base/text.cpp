#include "odbomodule/base/text.h"

void merge(KelpString & text, std::string_view keyword, KelpString & right)
{
    if (right.size() <= text.size()) {
        append(text, keyword, right);
        return;
    }
    rewrite(right, text, keyword, right);
    text.swap(right);
}

void append_start(KelpString & text, std::size_t length)
{
    text.append(text, 0, length);
}

void enclose(KelpString & text, std::string_view opening, std::string_view closing)
{
    rewrite(text, opening, text, closing);
}
