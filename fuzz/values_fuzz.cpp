#undef NDEBUG // the invariants are assertions
#include <odbomodule/host/automation.h>
#include <odbomodule/host/kelp_string.h>
#include <odbomodule/host/string_converters.h>

#include <algorithm>
#include <bit>
#include <cassert>
#include <cmath>
#include <cstring>
#include <fuzzer/FuzzedDataProvider.h>

// Converts a value, a pointer to the value, and the value in place: all give the same result. A refused conversion
// leaves the destination unchanged.
static void convert(VARIANT value, VARTYPE to)
{
    VARIANT pointer{};
    pointer.vt = VT_BYREF | VT_VARIANT;
    pointer.byref = &value;
    VARIANT result{};
    VARIANT other{};
    HRESULT const code = VariantChangeType(&result, &value, 0, to);
    assert(code == S_OK || code == DISP_E_TYPEMISMATCH || code == DISP_E_OVERFLOW || code == DISP_E_BADVARTYPE ||
           code == E_INVALIDARG);
    assert(code != S_OK || to == VT_R8 || to == VT_BOOL);
    assert(result.vt == (code == S_OK ? to : VT_EMPTY));
    assert(VariantChangeType(&other, &pointer, 0, to) == code);
    assert(std::memcmp(&other, &result, sizeof result) == 0);
    VARIANT const want = code == S_OK ? result : value;
    assert(VariantChangeType(&value, &value, 0, to) == code);
    assert(std::memcmp(&value, &want, sizeof value) == 0);
    VariantClear(&value);
}

static VARIANT text_variant(std::u16string const & text)
{
    VARIANT value{};
    value.vt = VT_BSTR;
    value.bstrVal = SysAllocStringLen(text.data(), static_cast<unsigned>(text.size()));
    return value;
}

// The text of a real reads back as that real.
static void read_back(double real)
{
    KelpString text;
    StringConverters::convertRealToString(real, text, 10, 17, false);
    VARIANT value = text_variant(text);
    assert(VariantChangeType(&value, &value, 0, VT_R8) == S_OK && value.dblVal == real);
}

// Values convert as above. A formatted text is cut to what the buffer has room for, with a zero after it.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    FuzzedDataProvider bytes(data, size);
    std::string const narrow = bytes.ConsumeRandomLengthString();
    KelpString const wide = KelpString::fromUTF8(bytes.ConsumeRandomLengthString());
    auto const bits = bytes.ConsumeIntegral<std::int64_t>();
    auto const from = static_cast<VARTYPE>(bytes.ConsumeIntegral<VARTYPE>() & ~VT_BYREF);
    auto const to = bytes.PickValueInArray<VARTYPE>({ VT_R8, VT_BOOL, VT_I4, 77 });
    VARIANT value{};
    value.llVal = bits;
    if (from == VT_DECIMAL) {
        value.decVal.Hi32 = bytes.ConsumeIntegral<std::uint32_t>();
        value.decVal.scale = bytes.ConsumeIntegralInRange<std::uint8_t>(0, 31);
        value.decVal.sign = bytes.ConsumeBool() ? DECIMAL_NEG : 0;
    }
    value.vt = from;
    convert(from == VT_BSTR ? text_variant(wide) : value, to);
    if (auto const real = std::bit_cast<double>(bits); std::isfinite(real))
        read_back(real);

    FormatArgument const all[] = { bits, static_cast<std::int8_t>(bits), static_cast<std::uint64_t>(bits),
        std::bit_cast<double>(bits), narrow.c_str(), wide };
    FormatArgument const a = bytes.PickValueInArray(all);
    FormatArgument const b = bytes.PickValueInArray(all);
    std::u16string const whole = format_text(narrow.c_str(), a, b);
    std::u16string buffer(bytes.ConsumeIntegralInRange<std::size_t>(1, 64), u'#');
    auto const length = static_cast<std::size_t>(suprintf(buffer.data(), buffer.size(), narrow.c_str(), a, b));
    assert(length == std::min(whole.size(), buffer.size() - 1));
    assert(buffer.compare(0, length + 1, whole.substr(0, length) + u'\0') == 0);
    assert(buffer.find_first_not_of(u'#', length + 1) == buffer.npos);
    return 0;
}
