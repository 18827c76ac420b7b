#include "odbomodule.h"

#include <cstdint>
#include <cstdlib>
#include <string>

static void require(bool holds)
{
    if (!holds)
        std::abort();
}

static KelpString halved(KelpString const & text, char16_t character)
{
    KelpString single;
    for (std::size_t i = 0; i < text.size(); ++i) {
        single += text[i];
        if (text[i] == character)
            require(text[++i] == character);
    }
    return single;
}

// Doubling a character can be undone; UTF-8 there and back changes nothing that was well formed.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    KelpString text;
    for (std::size_t i = 0; i + 1 < size; i += 2)
        text += static_cast<char16_t>(data[i] | data[i + 1] << 8);
    KelpString doubled;
    quote_member_name(doubled, text);
    require(halved(doubled, u'\'') == text);
    double_sqaure_brackets(doubled, text);
    require(halved(doubled, u']') == text);

    std::string const bytes = text.toUTF8();
    KelpString const back = KelpString::fromUTF8(bytes);
    require(back.size() == text.size());
    require(back.toUTF8() == bytes);
    KelpString const read = KelpString::fromUTF8({ reinterpret_cast<char const *>(data), size });
    require(KelpString::fromUTF8(read.toUTF8()) == read);
    return 0;
}
