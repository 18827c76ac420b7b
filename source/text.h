#pragma once
#include "host/kelp_string.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

// How texts are made: from rows. A row is a literal with numbered places, and takes a text for each of them. The
// texts stand in braces, so that C++ asks for them from left to right:
//
//     return rewrite<u"FILTER( $1, $2)">(this, { fText, condition->getText() });
//
// A place may stand more than once. A place without a text, a text without a place and a "$" without a digit do not
// compile. Texts are borrowed until the row is written: what a host gives by reference is copied first, into a
// string of ours, unless it is the last that is asked for.
//
// All that is done for speed is done here and in text.cpp: rows are split when they are compiled, texts are
// measured before they are allocated, and a text that is wrapped grows within its own buffer.

// The digits of a number, as a text for a place.
class Decimal {
public:
    explicit Decimal(std::int64_t number) noexcept;
    operator std::u16string_view() const noexcept { return { fDigits, fLength }; }

private:
    char16_t fDigits[20];
    std::size_t fLength;
};

inline Decimal decimal(std::int64_t number) noexcept
{
    return Decimal(number);
}

// A text for a place. A string is not looked at before the row is written, so that an expression's own text may
// change while the texts after it are asked for. Numbers, bools, characters and literals are no texts.
class Text {
public:
    Text(std::u16string const & text) noexcept : fString(&text) {}
    Text(std::u16string_view text) noexcept : fView(text) {}
    Text(Decimal const & number) noexcept : fView(number) {}

    std::u16string_view view() const noexcept { return fString != nullptr ? std::u16string_view(*fString) : fView; }
    bool is(std::u16string const & text) const noexcept { return fString == &text; }

private:
    std::u16string const * fString = nullptr;
    std::u16string_view fView;
};

// A row as it is compiled: its letters without the places, and how many of them stand before each place and at the
// end.
class Row {
public:
    struct Stretch {
        std::uint16_t length;
        std::uint16_t text; // the index of the text that follows, where one does
    };

    constexpr Row(std::u16string_view letters, Stretch const * stretches, std::size_t places) noexcept
        : fLetters(letters), fStretches(stretches), fPlaces(places)
    {}

    constexpr std::u16string_view letters() const noexcept { return fLetters; }
    constexpr std::size_t places() const noexcept { return fPlaces; }
    constexpr Stretch stretch(std::size_t index) const noexcept { return fStretches[index]; }

    // The letters before the place with that index, or after the last place.
    constexpr std::u16string_view piece(std::size_t index) const noexcept
    {
        std::size_t start = 0;
        for (std::size_t i = 0; i < index; ++i)
            start += fStretches[i].length;
        return fLetters.substr(start, fStretches[index].length);
    }

private:
    std::u16string_view fLetters;
    Stretch const * fStretches;
    std::size_t fPlaces;
};

namespace compiled {

// A literal as an argument of a template.
template <std::size_t Size>
struct Literal {
    char16_t text[Size];

    consteval Literal(char16_t const (&literal)[Size])
    {
        for (std::size_t i = 0; i < Size; ++i)
            text[i] = literal[i];
    }
    consteval std::size_t places() const
    {
        std::size_t count = 0;
        for (char16_t const character : text)
            count += character == u'$';
        return count;
    }
};

template <Literal literal>
struct Split {
    static constexpr std::size_t kPlaces = literal.places();
    static constexpr std::size_t kLetters = sizeof literal.text / sizeof(char16_t) - 1 - 2 * kPlaces;

    char16_t letters[kLetters + 1]{};
    Row::Stretch stretches[kPlaces + 1]{};
    std::size_t texts = 0;

    consteval Split()
    {
        char16_t const * from = literal.text;
        char16_t * to = letters;
        bool named[9]{};
        for (std::size_t place = 0; *from != u'\0'; ++from) {
            if (*from != u'$') {
                *to++ = *from;
                if (++stretches[place].length == 0)
                    throw "more letters than a row may have";
                continue;
            }
            ++from;
            if (*from < u'1' || *from > u'9')
                throw "a $ without a digit";
            std::size_t const text = static_cast<std::size_t>(*from - u'1');
            named[text] = true;
            texts = text + 1 > texts ? text + 1 : texts;
            stretches[place++].text = static_cast<std::uint16_t>(text);
        }
        for (std::size_t text = 0; text < texts; ++text)
            if (!named[text])
                throw "a text without a place";
    }
};

template <Literal literal>
inline constexpr Split<literal> split;

}

// A literal as a row.
template <compiled::Literal literal>
inline constexpr Row row{ { compiled::split<literal>.letters, compiled::Split<literal>::kLetters },
    compiled::split<literal>.stretches, compiled::Split<literal>::kPlaces };

namespace compiled {

template <Literal literal, std::size_t Count>
constexpr Row const & row_for() noexcept
{
    static_assert(split<literal>.texts == Count, "as many texts as the row has places");
    return row<literal>;
}

// Whether the places of a row are those of its texts, one after the other.
constexpr bool in_turn(Row const & row, std::size_t texts) noexcept
{
    bool inTurn = row.places() == texts;
    for (std::size_t i = 0; i < row.places(); ++i)
        inTurn = inTurn && row.stretch(i).text == i;
    return inTurn;
}

}

// What rows come to. Other code goes through the functions below, which see to it that the texts are as many as the
// places.
namespace engine {

KelpString write(Row const & row, Text const * texts);
void append(KelpString & text, Row const & row, Text const * texts);
void rewrite(KelpString & text, Row const & row, Text const * texts);

}

// What MDXField, MDXSet and MDXValue befriend: the way to their texts for the functions below.
struct TextFields {
    template <class Object>
    static auto & text(Object * object) noexcept
    {
        return object->fText;
    }
    template <class Object>
    static auto & quoted(Object * object) noexcept
    {
        return object->fQuotedText;
    }
    template <class Object>
    static auto & valid(Object * object) noexcept
    {
        return object->fQuotedTextValid;
    }
};

// The text of a row.
template <compiled::Literal literal, std::size_t Count>
KelpString mdx(Text const (&texts)[Count])
{
    return engine::write(compiled::row_for<literal, Count>(), texts);
}

// Appends a row to a text, which may not be one of the row's own.
template <compiled::Literal literal, std::size_t Count>
void append(KelpString & text, Text const (&texts)[Count])
{
    engine::append(text, compiled::row_for<literal, Count>(), texts);
}

template <compiled::Literal literal>
void append(KelpString & text)
{
    text.append(compiled::row_for<literal, 0>().letters());
}

// Makes a row the text of an expression, whose old text may be one of the row's, but no view into it; its
// quoted text is out of date then. Returns the expression. Should memory run out, the expression is as it was.
template <compiled::Literal literal, class Object, std::size_t Count>
Object * rewrite(Object * object, Text const (&texts)[Count])
{
    engine::rewrite(TextFields::text(object), compiled::row_for<literal, Count>(), texts);
    TextFields::valid(object) = false;
    return object;
}

// The same with a text that is whole.
template <class Object>
Object * rewrite(Object * object, KelpString text)
{
    TextFields::text(object) = std::move(text);
    TextFields::valid(object) = false;
    return object;
}

// The same with a row that has no place.
template <compiled::Literal literal, class Object>
Object * rewrite(Object * object)
{
    return rewrite(object, KelpString::Base(compiled::row_for<literal, 0>().letters()));
}

// Writes a row over the text of an expression piece by piece, and asks each argument for its text only when its
// place has come: an argument that is the expression itself gives what has been written so far, and so much stays
// if one throws.
template <compiled::Literal literal, class Object, class... Arguments>
Object * rewrite_in_turn(Object * object, Arguments const *... arguments)
{
    constexpr Row const & pieces = compiled::row_for<literal, sizeof...(Arguments)>();
    static_assert(compiled::in_turn(pieces, sizeof...(Arguments)), "each argument once, in its turn");
    std::size_t place = 0;
    rewrite(object, KelpString::Base(pieces.piece(place)));
    (rewrite<u"$1$2$3">(object, { TextFields::text(object), arguments->getText(), pieces.piece(++place) }), ...);
    return object;
}

// Takes over the texts of another expression. Should memory run out, the expression is as it was.
template <class Object>
void assign_texts(Object * object, Object const * other)
{
    KelpString text = TextFields::text(other);
    KelpString quoted = TextFields::quoted(other);
    TextFields::text(object) = std::move(text);
    TextFields::quoted(object) = std::move(quoted);
    TextFields::valid(object) = TextFields::valid(other);
}

// Sets `result` to `source` with each `character` doubled. The two may be one string.
void double_each(KelpString & result, KelpString const & source, char character);

// The quoted text of an expression: its text with each single quote doubled, made anew when the text has changed.
template <class Object>
KelpString quoted_text(Object * object)
{
    if (!TextFields::valid(object)) {
        double_each(TextFields::quoted(object), TextFields::text(object), '\'');
        TextFields::valid(object) = true;
    }
    return TextFields::quoted(object);
}

// For a text that grows from its middle: opening + text + closing; text + between + right, in the buffer of the
// longer one (`right` is used up); and text + between + the first `length` characters of itself. Functions of their
// own, so that a recursion that ends in them keeps a small stack frame.
void enclose(KelpString & text, std::u16string_view opening, std::u16string_view closing);
void merge(KelpString & text, std::u16string_view between, KelpString & right);
void append_start(KelpString & text, std::u16string_view between, std::size_t length);

// Opening, then what `text_of` gives for each item with the separator between two of them, then closing.
template <class Items, class TextOf>
KelpString join(std::u16string_view opening, Items const & items, std::u16string_view separator,
    std::u16string_view closing, TextOf const & text_of)
{
    KelpString text;
    text.append(opening);
    bool first = true;
    for (auto const & item : items) {
        if (!first)
            text.append(separator);
        first = false;
        text.append(text_of(item));
    }
    text.append(closing);
    return text;
}

template <class Items, class TextOf>
KelpString join(Items const & items, std::u16string_view separator, TextOf const & text_of)
{
    return join({}, items, separator, {}, text_of);
}
template <class Texts>
KelpString join(Texts const & texts, std::u16string_view separator)
{
    return join(texts, separator, [](KelpString const & text) -> KelpString const & { return text; });
}
