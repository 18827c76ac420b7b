#include <odbomodule/host/kelp_string.h>

#include "narrow_text.h"

#include <algorithm>
#include <cstring>
#include <ostream>

namespace {

std::string_view view(char const * text) noexcept
{
    return text == nullptr ? std::string_view() : std::string_view(text);
}

}

KelpString::KelpString(char const * text)
{
    append_narrow(*this, view(text));
}

KelpString & KelpString::operator=(Base const & text)
{
    Base::operator=(text);
    return *this;
}

KelpString & KelpString::operator=(Base && text) noexcept
{
    Base::operator=(std::move(text));
    return *this;
}

KelpString & KelpString::operator=(char const * text)
{
    std::string_view const narrow = view(text);
    Base::reserve(narrow.size()); // if this throws, the text is unchanged
    clear();
    append_narrow(*this, narrow);
    return *this;
}

KelpString & KelpString::operator=(char16_t const * text)
{
    assign(text == nullptr ? u"" : text);
    return *this;
}

KelpString & KelpString::operator+=(KelpString const & text)
{
    append(text);
    return *this;
}

KelpString & KelpString::operator+=(char const * text)
{
    append_narrow(*this, view(text));
    return *this;
}

KelpString & KelpString::operator+=(char16_t const * text)
{
    append(text == nullptr ? u"" : text);
    return *this;
}

KelpString & KelpString::operator+=(char16_t character)
{
    push_back(character);
    return *this;
}

KelpString::size_type KelpString::find(char character, size_type position) const noexcept
{
    if (static_cast<unsigned char>(character) >= 0x80)
        return npos;
    // The C library finds a byte much faster than std::u16string finds a character. The byte found may be half of
    // another character, so the whole character is compared.
    auto const wanted = static_cast<char16_t>(static_cast<unsigned char>(character));
    auto const * const bytes = reinterpret_cast<unsigned char const *>(data());
    size_type const end = 2 * size();
    for (size_type at = 2 * std::min(position, size()); at < end; at += 2) {
        void const * const found = std::memchr(bytes + at, static_cast<unsigned char>(character), end - at);
        if (found == nullptr)
            return npos;
        at = static_cast<size_type>(static_cast<unsigned char const *>(found) - bytes) / 2 * 2;
        if ((*this)[at / 2] == wanted)
            return at / 2;
    }
    return npos;
}

std::int32_t KelpString::strcmp(char const * text, bool ignoreCase) const noexcept
{
    NarrowReader other(view(text));
    for (char16_t mine : *this) {
        if (other.at_end())
            return 1;
        char16_t theirs = other.take();
        if (ignoreCase) {
            mine = ascii_lower(mine);
            theirs = ascii_lower(theirs);
        }
        if (mine != theirs)
            return mine < theirs ? -1 : 1;
    }
    return other.at_end() ? 0 : -1;
}

KelpString KelpString::fromUTF8(std::string_view text)
{
    KelpString result;
    append_narrow(result, text);
    return result;
}

std::string KelpString::toUTF8() const
{
    return to_narrow(*this);
}

std::ostream & operator<<(std::ostream & out, KelpString const & text)
{
    return out << text.toUTF8();
}
