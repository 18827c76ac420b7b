#include "text.h"

#include <algorithm>
#include <charconv>
#include <iterator>

Decimal::Decimal(std::int64_t number) noexcept
{
    char digits[sizeof fDigits / sizeof *fDigits];
    char * const end = std::to_chars(digits, std::end(digits), number).ptr;
    fLength = static_cast<std::size_t>(std::copy(digits, end, fDigits) - fDigits);
}

namespace engine {

static std::size_t length_of(Row const & row, Text const * texts) noexcept
{
    std::size_t length = row.letters().size();
    for (std::size_t place = 0; place < row.places(); ++place)
        length += texts[row.stretch(place).text].view().size();
    return length;
}

// Appends what stands from a place on, its text included; `letters` are those from there to the row's end.
static void append_from(
    KelpString & text, Row const & row, std::size_t place, char16_t const * letters, Text const * texts)
{
    for (; place < row.places(); ++place) {
        auto const [count, index] = row.stretch(place);
        text.append(letters, count);
        letters += count;
        text.append(texts[index].view());
    }
    text.append(letters, row.stretch(place).length);
}

void append(KelpString & text, Row const & row, Text const * texts)
{
    append_from(text, row, 0, row.letters().data(), texts);
}

KelpString write(Row const & row, Text const * texts)
{
    KelpString text;
    text.reserve(length_of(row, texts));
    append(text, row, texts);
    return text;
}

// Writes around the old text, which stands at `place` and nowhere else, and has room.
static void wrap(KelpString & text, Row const & row, std::size_t place, Text const * texts)
{
    std::size_t before = row.stretch(place).length;
    for (std::size_t i = 0; i < place; ++i)
        before += row.stretch(i).length + texts[row.stretch(i).text].view().size();
    text.insert(0, before, u' ');

    char16_t * to = text.data();
    char16_t const * letters = row.letters().data();
    for (std::size_t i = 0; i <= place; ++i) {
        auto const [count, index] = row.stretch(i);
        to = std::copy_n(letters, count, to);
        letters += count;
        if (i < place)
            to = std::copy_n(texts[index].view().data(), texts[index].view().size(), to);
    }
    append_from(text, row, place + 1, letters, texts);
}

void rewrite(KelpString & text, Row const & row, Text const * texts)
{
    std::size_t const length = length_of(row, texts);
    std::size_t old = 0; // the last place of the old text
    std::size_t oldPlaces = 0;
    for (std::size_t place = 0; place < row.places(); ++place) {
        if (texts[row.stretch(place).text].is(text)) {
            old = place;
            ++oldPlaces;
        }
    }
    if (oldPlaces == 1 && length <= text.capacity())
        return wrap(text, row, old, texts);

    // Half as much again, since what was wrapped once is likely to be wrapped again.
    KelpString fresh;
    fresh.reserve(oldPlaces == 0 ? length : length + length / 2);
    append(fresh, row, texts);
    text = std::move(fresh);
}

}

void enclose(KelpString & text, std::u16string_view opening, std::u16string_view closing)
{
    text.insert(0, opening);
    text.append(closing);
}

void merge(KelpString & text, std::u16string_view between, KelpString & right)
{
    if (right.size() <= text.size()) {
        text.append(between);
        text.append(right);
        return;
    }
    right.insert(0, text.size() + between.size(), u' ');
    std::copy(between.begin(), between.end(), std::copy(text.begin(), text.end(), right.begin()));
    text.swap(right);
}

void append_start(KelpString & text, std::u16string_view between, std::size_t length)
{
    text.append(between);
    text.append(text, 0, length);
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
