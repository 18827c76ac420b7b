#undef NDEBUG // the invariants are assertions
#include <odbomodule/odbomodule.h>

#include <cassert>
#include <cstring>

static KelpString with_mark_doubled(char16_t mark, KelpString const & text)
{
    KelpString result;
    for (char16_t const character : text)
        result.append(character == mark ? 2 : 1, character);
    return result;
}

// Quoting doubles the mark and changes nothing else. A round trip through UTF-8 keeps well-formed text.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    KelpString text(KelpString::Base(size / 2, u'\0'));
    std::memcpy(text.data(), data, text.size() * sizeof(char16_t));
    KelpString doubled;
    quote_member_name(doubled, text);
    assert(doubled == with_mark_doubled(u'\'', text));
    double_sqaure_brackets(doubled, text);
    assert(doubled == with_mark_doubled(u']', text));

    KelpString const back = KelpString::fromUTF8(text.toUTF8());
    assert(back.size() == text.size() && back.toUTF8() == text.toUTF8());
    KelpString const read = KelpString::fromUTF8({ reinterpret_cast<char const *>(data), size });
    assert(KelpString::fromUTF8(read.toUTF8()) == read);
    return 0;
}
