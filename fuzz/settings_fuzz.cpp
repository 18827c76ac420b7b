#undef NDEBUG // the invariants are assertions
#include "../support/linux/registry_text.h"

#include <cassert>
#include <fuzzer/FuzzedDataProvider.h>
#include <string>

static KelpString quoted(KelpString const & text)
{
    KelpString result("\"");
    for (char16_t const character : text)
        result.append(character == u'"' || character == u'\\' ? 1 : 0, u'\\').append(1, character);
    return result += u"\"";
}

// A value that is written after any text is read back unchanged, even if a comment, a broken line and another key
// follow.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    FuzzedDataProvider bytes(data, size);
    auto const words = [&bytes] {
        KelpString text = KelpString::fromUTF8(bytes.ConsumeRandomLengthString(64));
        std::erase(text, u'\n');
        return text;
    };
    KelpString const key = u"K" + words();
    KelpString const name = u"N" + words();
    KelpString const value = words();
    KelpString const line = quoted(name) + u"=" + quoted(value);
    KelpString tail = words();
    std::erase(tail, u'"');
    tail = u"\n;" + tail + u"\n" + quoted(name) + u"=\"" + tail + u"\n[L" + tail + u"]\n" + line;

    KelpString const any = KelpString::fromUTF8(bytes.ConsumeRemainingBytesAsString());
    assert(find_registry_value(any + tail, key, name) == find_registry_value(any, key, name));
    KelpString const file = any + u"\n[" + key + u"]\n" + line;
    assert(find_registry_value(file, key, name) == RegistryValue(value));
    assert(find_registry_value(file + tail, key, name) == RegistryValue(value));
    return 0;
}
