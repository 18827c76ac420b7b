#include "narrow_text.h"

#include <algorithm>
#include <utility>

namespace {

constexpr char32_t kReplacement = 0xFFFD;

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

// Removes one code point from the start of `text` and returns it. If the sequence is ill-formed, removes its valid
// beginning, at least one byte, and returns U+FFFD.
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
    // The second byte reveals overlong forms, surrogates and code points past U+10FFFF.
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

}

char16_t NarrowReader::take() noexcept
{
    if (fLow != u'\0')
        return std::exchange(fLow, u'\0');
    char32_t const point = take_code_point(fText);
    if (point < 0x10000)
        return static_cast<char16_t>(point);
    fLow = static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF));
    return static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10));
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
    if (bits < 0x80) // only ASCII, as in most texts
        return;

    out.resize(end); // keeps enough room: no code point has more 16-bit characters than bytes
    for (NarrowReader reader(text); !reader.at_end();)
        out.push_back(reader.take());
}

std::string to_narrow(std::u16string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t point = text[i];
        if (point >= 0xD800 && point <= 0xDFFF) {
            char32_t const next = i + 1 < text.size() ? text[i + 1] : 0;
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
