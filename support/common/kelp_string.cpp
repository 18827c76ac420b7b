#include <odbomodule/host/kelp_string.h>

#include "narrow_text.h"

#include <algorithm>
#include <cstring>
#include <ostream>

namespace {

constexpr char32_t kReplacement = 0xFFFD;

std::string_view view(char const * text) noexcept
{
    return text == nullptr ? std::string_view() : std::string_view(text);
}

void append_code_point(std::string & out, char32_t point)
{
    auto const tail = [&](unsigned shift) { out.push_back(static_cast<char>(0x80 | ((point >> shift) & 0x3F))); };
    if (point < 0x80) {
        out.push_back(static_cast<char>(point));
    } else if (point < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (point >> 6)));
        tail(0);
    } else if (point < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (point >> 12)));
        tail(6);
        tail(0);
    } else {
        out.push_back(static_cast<char>(0xF0 | (point >> 18)));
        tail(12);
        tail(6);
        tail(0);
    }
}

// Reads one code point and takes it off `text`. A sequence that breaks off counts as one replacement character: it
// is taken up to the first byte that does not belong to it.
char32_t take_code_point(std::string_view & text) noexcept
{
    auto const take = [&] {
        auto const byte = static_cast<unsigned char>(text.front());
        text.remove_prefix(1);
        return byte;
    };
    unsigned char const lead = take();
    if (lead < 0x80)
        return lead;
    if (lead < 0xC2 || lead > 0xF4)
        return kReplacement;

    int const tails = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    // Overlong forms, surrogates and what is past U+10FFFF can be told by the second byte.
    unsigned char low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    unsigned char high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    char32_t point = lead & (0x3Fu >> tails);
    for (int i = 0; i < tails; ++i) {
        if (text.empty() || static_cast<unsigned char>(text.front()) < low ||
            static_cast<unsigned char>(text.front()) > high)
            return kReplacement;
        point = (point << 6) | (take() & 0x3Fu);
        low = 0x80;
        high = 0xBF;
    }
    return point;
}

// UTF-8 as 16-bit characters, one by one.
class Units {
public:
    explicit Units(std::string_view text) noexcept : fText(text) {}

    bool at_end() const noexcept { return fText.empty() && fLow == u'\0'; }
    char16_t take() noexcept
    {
        if (fLow != u'\0')
            return std::exchange(fLow, u'\0');
        char32_t const point = take_code_point(fText);
        if (point < 0x10000)
            return static_cast<char16_t>(point);
        fLow = static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF));
        return static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10));
    }

private:
    std::string_view fText;
    char16_t fLow = u'\0'; // the second half of a pair, if it comes next
};

}

void append_narrow(std::u16string & out, std::string_view text)
{
    std::size_t const end = out.size();
    out.resize(end + text.size());
    unsigned char bits = 0;
    std::transform(text.begin(), text.end(), out.begin() + static_cast<std::ptrdiff_t>(end), [&](char character) {
        auto const byte = static_cast<unsigned char>(character);
        bits |= byte;
        return char16_t{ byte };
    });
    if (bits < 0x80) // ASCII alone, as most texts are
        return;

    out.resize(end); // leaves room for all: no character has more units than bytes
    for (Units units(text); !units.at_end();)
        out.push_back(units.take());
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
    Base::reserve(narrow.size()); // may fail, while the old text still stands
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
    // The C library finds a byte much faster than the string finds a character. The byte may be either half of a
    // character, and the other half may differ.
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
    Units units(view(text));
    for (char16_t mine : *this) {
        if (units.at_end())
            return 1;
        char16_t theirs = units.take();
        if (ignoreCase) {
            mine = ascii_lower(mine);
            theirs = ascii_lower(theirs);
        }
        if (mine != theirs)
            return mine < theirs ? -1 : 1;
    }
    return units.at_end() ? 0 : -1;
}

KelpString KelpString::fromUTF8(std::string_view text)
{
    KelpString result;
    append_narrow(result, text);
    return result;
}

std::string KelpString::toUTF8() const
{
    std::string result;
    result.reserve(size());
    for (size_type i = 0; i < size(); ++i) {
        char32_t point = (*this)[i];
        if (point >= 0xD800 && point <= 0xDFFF) {
            char32_t const next = i + 1 < size() ? (*this)[i + 1] : 0;
            if (point < 0xDC00 && next >= 0xDC00 && next <= 0xDFFF) {
                point = 0x10000 + ((point - 0xD800) << 10) + (next - 0xDC00);
                ++i;
            } else {
                point = kReplacement;
            }
        }
        append_code_point(result, point);
    }
    return result;
}

std::ostream & operator<<(std::ostream & out, KelpString const & text)
{
    return out << text.toUTF8();
}
