#include "text.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <utility>

namespace mdx_text {

Decimal::Decimal(std::int64_t number) noexcept
{
    char digits[sizeof fDigits / sizeof *fDigits];
    char * const end = std::to_chars(digits, std::end(digits), number).ptr;
    fLength = static_cast<std::size_t>(std::copy(digits, end, fDigits) - fDigits);
}

static std::size_t length_of(Template const & form, Text const * texts) noexcept
{
    std::size_t length = form.letters().size();
    for (std::size_t i = 0; i < form.placeholders(); ++i)
        length += texts[form[i].text].view().size();
    return length;
}

// Appends the part of a template that begins at placeholder `i`; `letters` are the letters from there to the end.
static void append_from(
    KelpString & text, Template const & form, std::size_t i, char16_t const * letters, Text const * texts)
{
    for (; i < form.placeholders(); ++i) {
        auto const [before, index] = form[i];
        text.append(letters, before);
        letters += before;
        text.append(texts[index].view());
    }
    text.append(letters, form[i].before);
}

void append_written(KelpString & text, Template const & form, Text const * texts)
{
    append_from(text, form, 0, form.letters().data(), texts);
}

KelpString written(Template const & form, Text const * texts)
{
    KelpString text;
    text.reserve(length_of(form, texts));
    append_written(text, form, texts);
    return text;
}

// Wraps the old text in place. Only placeholder `old` refers to it, and the capacity is large enough.
static void wrap(KelpString & text, Template const & form, std::size_t old, Text const * texts)
{
    std::size_t before = form[old].before;
    for (std::size_t i = 0; i < old; ++i)
        before += form[i].before + texts[form[i].text].view().size();
    text.insert(0, before, u' ');

    char16_t * to = text.data();
    char16_t const * letters = form.letters().data();
    for (std::size_t i = 0; i <= old; ++i) {
        auto const [count, index] = form[i];
        to = std::copy_n(letters, count, to);
        letters += count;
        if (i < old)
            to = std::copy_n(texts[index].view().data(), texts[index].view().size(), to);
    }
    append_from(text, form, old + 1, letters, texts);
}

void overwrite(KelpString & text, Template const & form, Text const * texts)
{
    std::size_t const length = length_of(form, texts);
    std::size_t old = 0; // the last placeholder that the old text replaces
    std::size_t count = 0;
    for (std::size_t i = 0; i < form.placeholders(); ++i) {
        if (texts[form[i].text].is(text)) {
            old = i;
            ++count;
        }
    }
    if (count == 1 && length <= text.capacity())
        return wrap(text, form, old, texts);

    // A text that is wrapped once is likely to be wrapped again, so reserve half as much again.
    KelpString fresh;
    fresh.reserve(count == 0 ? length : length + length / 2);
    append_written(fresh, form, texts);
    text = std::move(fresh);
}

void enclose(KelpString & text, Template const & form)
{
    Text const texts[] = { text };
    overwrite(text, form, texts);
}

void combine(KelpString & text, Template const & form, KelpString & second)
{
    Text const texts[] = { text, second };
    KelpString & longest = second.size() > text.size() ? second : text;
    overwrite(longest, form, texts);
    if (&longest != &text)
        text.swap(longest);
}

void combine(KelpString & text, Template const & form, KelpString & second, KelpString & third)
{
    Text const texts[] = { text, second, third };
    KelpString & longer = third.size() > second.size() ? third : second;
    KelpString & longest = longer.size() > text.size() ? longer : text;
    overwrite(longest, form, texts);
    if (&longest != &text)
        text.swap(longest);
}

void double_each(KelpString & result, KelpString const & source, char character)
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

}
