#undef NDEBUG // the invariants are assertions
#include "../support/linux/registry_text.h"

#include <cassert>
#include <fuzzer/FuzzedDataProvider.h>
#include <string>
#include <utility>

static KelpString quoted(KelpString const & text)
{
    KelpString result("\"");
    for (char16_t const character : text)
        result.append(character == u'"' || character == u'\\' ? 1 : 0, u'\\').append(1, character);
    return result += u"\"";
}

// The bytes of a file: 0 and 1 for UTF-8, without mark and with it, 2 and 3 for the byte orders of UTF-16.
static std::string encoded(KelpString const & text, int encoding)
{
    KelpString const marked(encoding == 0 ? text : KelpString(u"\uFEFF" + text));
    if (encoding < 2)
        return marked.toUTF8();
    std::string wide(reinterpret_cast<char const *>(marked.data()), marked.size() * sizeof(char16_t));
    for (std::size_t i = 0; encoding == 3 && i < wide.size(); i += 2)
        std::swap(wide[i], wide[i + 1]);
    return wide;
}

// A value that is written after anything at all reads back as itself. What a file says of a value stands, whatever
// comment, broken line and other key come after it.
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
    int const encoding = bytes.ConsumeIntegralInRange(0, 3);

    // An empty line comes first, since bytes that go on at the end of what stands before would take a line.
    KelpString tail = words();
    std::erase(tail, u'"');
    tail = u"\n\n;" + tail + u"\n" + quoted(name) + u"=\"" + tail + u"\n[L" + tail + u"]\n" + line;

    KelpString const any = decode_registry_text(bytes.ConsumeRemainingBytesAsString());
    assert(find_registry_value(any + tail, key, name) == find_registry_value(any, key, name));
    KelpString const file = decode_registry_text(encoded(any + u"\n\n[" + key + u"]\n" + line, encoding));
    assert(find_registry_value(file, key, name) == RegistryValue(value));
    assert(find_registry_value(file + tail, key, name) == RegistryValue(value));
    return 0;
}
