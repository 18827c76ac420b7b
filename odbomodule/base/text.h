#pragma once
#include "odbomodule/host/kelp_string.h"

#include <charconv>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <type_traits>
#include <utility>

// How texts are made. A piece is a narrow ASCII literal, a narrow view, a 16-bit text or decimal(n). A text is
// measured first, allocated once, then written; every trick that makes this quick is in this file.

// The digits of a number, as a piece.
class Decimal {
public:
    explicit Decimal(std::int64_t number) noexcept
    {
        char digits[kMost] = {};
        fLength = static_cast<std::size_t>(std::to_chars(digits, digits + kMost, number).ptr - digits);
        for (std::size_t i = 0; i < fLength; ++i)
            fDigits[i] = static_cast<char16_t>(digits[i]);
    }
    operator std::u16string_view() const noexcept { return { fDigits, fLength }; }

private:
    static constexpr std::size_t kMost = 20;
    char16_t fDigits[kMost];
    std::size_t fLength;
};

inline Decimal decimal(std::int64_t number) noexcept
{
    return Decimal(number);
}

namespace piece {

template <std::size_t Size>
constexpr std::size_t length(char const (&)[Size]) noexcept
{
    return Size - 1;
}
inline std::size_t length(std::string_view text) noexcept
{
    return text.size();
}
inline std::size_t length(std::u16string_view text) noexcept
{
    return text.size();
}
template <class Number>
requires std::is_arithmetic_v<Number> std::size_t length(Number)
= delete;

// Writes a piece at a place that has room for it; returns the place behind it.
inline char16_t * write(char16_t * at, std::string_view text) noexcept
{
    for (char const character : text)
        *at++ = static_cast<unsigned char>(character);
    return at;
}
inline char16_t * write(char16_t * at, std::u16string_view text) noexcept
{
    return std::char_traits<char16_t>::copy(at, text.data(), text.size()) + text.size();
}

// A literal is widened on the stack: the standard library would make a string of it.
template <std::size_t Size>
void append(KelpString & text, char const (&literal)[Size])
{
    if constexpr (Size > 1) {
        char16_t wide[Size - 1];
        for (std::size_t i = 0; i + 1 < Size; ++i)
            wide[i] = static_cast<unsigned char>(literal[i]);
        text.append(wide, Size - 1);
    }
}
inline void append(KelpString & text, std::string_view narrow)
{
    char16_t wide[32];
    while (!narrow.empty()) {
        std::string_view const part = narrow.substr(0, std::size(wide));
        write(wide, part);
        text.append(wide, part.size());
        narrow.remove_prefix(part.size());
    }
}
inline void append(KelpString & text, std::u16string_view wide)
{
    text.append(wide);
}

template <class Piece>
bool is(KelpString const & text, Piece const & piece) noexcept
{
    if constexpr (std::is_same_v<Piece, KelpString>)
        return &text == &piece;
    else
        return false;
}

}

// Appends the pieces, none of which may be `text` itself.
template <class... Pieces>
void append(KelpString & text, Pieces const &... pieces)
{
    (piece::append(text, pieces), ...);
}

// The pieces, one directly behind the other.
template <class... Pieces>
KelpString concat(Pieces const &... pieces)
{
    KelpString text;
    text.reserve((piece::length(pieces) + ... + 0));
    append(text, pieces...);
    return text;
}

// text = concat(pieces...), where `text` may be one of the pieces. A text that stands once among them and has
// room grows where it is; without room, the new one gets half as much again for the next rewrite. Should
// memory run out, `text` is as it was.
template <class... Pieces>
void rewrite(KelpString & text, Pieces const &... pieces)
{
    std::size_t const total = (piece::length(pieces) + ... + 0);
    std::size_t const places = (std::size_t{ piece::is(text, pieces) } + ... + 0);
    if (places != 1 || total > text.capacity()) {
        KelpString fresh;
        fresh.reserve(places == 0 ? total : total + total / 2);
        append(fresh, pieces...);
        text = std::move(fresh);
        return;
    }

    std::size_t ahead = 0;
    bool found = false;
    auto const measure = [&](auto const & piece) {
        found = found || piece::is(text, piece);
        if (!found)
            ahead += piece::length(piece);
    };
    (measure(pieces), ...);

    if (ahead > 0)
        text.insert(0, ahead, u' ');
    char16_t * at = text.data();
    found = false;
    auto const put = [&](auto const & piece) {
        if (piece::is(text, piece))
            found = true;
        else if (found)
            piece::append(text, piece);
        else
            at = piece::write(at, piece);
    };
    (put(pieces), ...);
}

// text = text + keyword + right, in the buffer of the longer one. `right` is used up. These three are functions of
// their own so that a recursion that ends in them keeps a small stack frame.
void merge(KelpString & text, std::string_view keyword, KelpString & right);

// text = opening + text + closing
void enclose(KelpString & text, std::string_view opening, std::string_view closing);

// Appends the first `length` characters of the text itself.
void append_start(KelpString & text, std::size_t length);

// Appends what `text_of` gives for each item, with the separator between two of them.
template <class Items, std::size_t Size, class TextOf>
void append_joined(KelpString & text, Items const & items, char const (&separator)[Size], TextOf const & text_of)
{
    bool first = true;
    for (auto const & item : items) {
        if (!first)
            append(text, separator);
        first = false;
        append(text, text_of(item));
    }
}

template <class Items, std::size_t Size, class TextOf>
KelpString join(Items const & items, char const (&separator)[Size], TextOf const & text_of)
{
    KelpString text;
    append_joined(text, items, separator, text_of);
    return text;
}

template <class Items, std::size_t Size>
KelpString join(Items const & texts, char const (&separator)[Size])
{
    return join(texts, separator, [](KelpString const & text) -> KelpString const & { return text; });
}
