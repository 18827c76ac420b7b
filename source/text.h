#pragma once
#include "host/kelp_string.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

// MDX text is built from templates: literals with placeholders $1 to $9.
//
//     return rewrite<u"FILTER( $1, $2)">(this, { fText, condition->getText() });
//
// The texts are in braces, so C++ evaluates them from left to right. A placeholder may occur more than once. A
// placeholder without a text, a text without a placeholder and a "$" without a digit do not compile.
//
// Texts are borrowed until the template is written. What a host returns by reference may change with the next call
// to the host: copy it into a KelpString, unless no other call to the host follows.
//
// For speed, templates are split at compile time, a new text is allocated once, and wrapping a text reuses its
// buffer if there is room.
namespace mdx_text {

// A number in decimal digits.
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

// A text for a placeholder. A string is not read until the template is written. Numbers, bools, characters and
// literals do not convert.
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

// A literal, split into its placeholders and the characters around them, called letters here.
class Template {
public:
    struct Placeholder {
        std::uint16_t before; // the number of letters between the previous placeholder and this one
        std::uint16_t text;   // the index of the text that replaces the placeholder
    };

    // After the last placeholder comes one more entry, for the letters at the end.
    constexpr Template(std::u16string_view letters, Placeholder const * placeholders, std::size_t count) noexcept
        : fLetters(letters), fPlaceholders(placeholders), fCount(count)
    {}

    constexpr std::u16string_view letters() const noexcept { return fLetters; }
    constexpr std::size_t placeholders() const noexcept { return fCount; }
    constexpr Placeholder const & operator[](std::size_t index) const noexcept { return fPlaceholders[index]; }

private:
    std::u16string_view fLetters;
    Placeholder const * fPlaceholders;
    std::size_t fCount;
};

// A literal as a template argument.
template <std::size_t Size>
struct Literal {
    char16_t text[Size];

    consteval Literal(char16_t const (&literal)[Size])
    {
        for (std::size_t i = 0; i < Size; ++i)
            text[i] = literal[i];
    }
    consteval std::size_t placeholders() const
    {
        std::size_t count = 0;
        for (char16_t const character : text)
            count += character == u'$';
        return count;
    }
};

// The storage of a Template.
template <Literal literal>
struct SplitLiteral {
    static constexpr std::size_t kPlaceholders = literal.placeholders();
    static constexpr std::size_t kLetters = sizeof literal.text / sizeof(char16_t) - 1 - 2 * kPlaceholders;

    char16_t letters[kLetters + 1]{};
    Template::Placeholder placeholders[kPlaceholders + 1]{};
    std::size_t texts = 0;

    consteval SplitLiteral()
    {
        char16_t const * from = literal.text;
        char16_t * to = letters;
        bool used[9]{};
        for (std::size_t i = 0; *from != u'\0'; ++from) {
            if (*from != u'$') {
                *to++ = *from;
                if (++placeholders[i].before == 0)
                    throw "more than 65535 characters before a placeholder or at the end";
                continue;
            }
            ++from;
            if (*from < u'1' || *from > u'9')
                throw "a $ without a digit";
            std::size_t const text = static_cast<std::size_t>(*from - u'1');
            used[text] = true;
            texts = text + 1 > texts ? text + 1 : texts;
            placeholders[i++].text = static_cast<std::uint16_t>(text);
        }
        for (std::size_t text = 0; text < texts; ++text)
            if (!used[text])
                throw "a text without a placeholder";
    }
};

template <Literal literal>
inline constexpr SplitLiteral<literal> split;

template <Literal literal>
inline constexpr Template template_of{ { split<literal>.letters, SplitLiteral<literal>::kLetters },
    split<literal>.placeholders, SplitLiteral<literal>::kPlaceholders };

// The template of a literal, after a check at compile time that it takes `Count` texts.
template <Literal literal, std::size_t Count>
constexpr Template const & template_for() noexcept
{
    static_assert(split<literal>.texts == Count, "the number of texts must match the placeholders");
    return template_of<literal>;
}

// What mdx, append and rewrite call; text.cpp implements it. `texts` has one element for each different placeholder
// of `form`.
KelpString written(Template const & form, Text const * texts);
void append_written(KelpString & text, Template const & form, Text const * texts);
void overwrite(KelpString & text, Template const & form, Text const * texts);

// A template with its texts inserted.
template <Literal literal, std::size_t Count>
KelpString mdx(Text const (&texts)[Count])
{
    return written(template_for<literal, Count>(), texts);
}

// Appends a template to `text`, which must not be one of `texts`.
template <Literal literal, std::size_t Count>
void append(KelpString & text, Text const (&texts)[Count])
{
    append_written(text, template_for<literal, Count>(), texts);
}

template <Literal literal>
void append(KelpString & text)
{
    text.append(template_for<literal, 0>().letters());
}

// MDXField, MDXSet and MDXValue befriend this, so that the functions below reach their fields.
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

// Gives an expression a new text and invalidates its quoted text. Returns the expression. The expression's own
// string may be one of `texts`; a view into it may not. If memory runs out, the expression is unchanged.
template <Literal literal, class Object, std::size_t Count>
Object * rewrite(Object * object, Text const (&texts)[Count])
{
    overwrite(TextFields::text(object), template_for<literal, Count>(), texts);
    TextFields::valid(object) = false;
    return object;
}

// The same with a finished text.
template <class Object>
Object * rewrite(Object * object, KelpString text)
{
    TextFields::text(object) = std::move(text);
    TextFields::valid(object) = false;
    return object;
}

// The same with a literal that has no placeholder.
template <Literal literal, class Object>
Object * rewrite(Object * object)
{
    return rewrite(object, KelpString::Base(template_for<literal, 0>().letters()));
}

// Copies text, quoted text and its validity from another expression. If memory runs out, `object` is unchanged.
template <class Object>
void assign_texts(Object * object, Object const * other)
{
    KelpString text = TextFields::text(other);
    KelpString quoted = TextFields::quoted(other);
    TextFields::text(object) = std::move(text);
    TextFields::quoted(object) = std::move(quoted);
    TextFields::valid(object) = TextFields::valid(other);
}

// Sets `result` to `source` with each `character` doubled. The two may be the same string.
void double_each(KelpString & result, KelpString const & source, char character);

// The text of an expression with each single quote doubled. It is kept until the text changes.
template <class Object>
KelpString quoted_text(Object * object)
{
    if (!TextFields::valid(object)) {
        double_each(TextFields::quoted(object), TextFields::text(object), '\'');
        TextFields::valid(object) = true;
    }
    return TextFields::quoted(object);
}

// These build a text from the inside out. $1 is `text`, $2 is `second` and $3 is `third`; the result replaces
// `text`. For speed, it is written in the buffer of the longest string if that has room. `second` and `third` have
// unspecified contents afterwards. These are plain functions, not function templates, which keeps the stack frames
// of recursive callers small.
void enclose(KelpString & text, Template const & form);
void combine(KelpString & text, Template const & form, KelpString & second);
void combine(KelpString & text, Template const & form, KelpString & second, KelpString & third);

// `opening`, then what `text_of` returns for each item, separated by `separator`, then `closing`.
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

}
