#undef NDEBUG // the invariants are assertions
#include <odbomodule/host/automation.h>
#include <odbomodule/host/kelp_string.h>

#include <algorithm>
#include <bit>
#include <cassert>
#include <cmath>
#include <cstring>
#include <fuzzer/FuzzedDataProvider.h>

// The text of a value, or all its bits.
static std::u16string state(VARIANT const & value)
{
    if (value.vt == VT_BSTR)
        return std::u16string(value.bstrVal, SysStringLen(value.bstrVal));
    std::u16string bits(sizeof value / sizeof(char16_t), u'\0');
    std::memcpy(bits.data(), &value, sizeof value);
    return bits;
}

// Converts a value, a reference to it, and the value in place: one result. A refusal leaves the destination alone.
static void convert(VARTYPE from, VARTYPE to, std::int64_t bits, std::uint16_t flags, std::u16string const & text)
{
    VARIANT value{};
    if (from == VT_DECIMAL) {
        value.decVal.Hi32 = static_cast<std::uint32_t>(flags * 0x10001u);
        value.decVal.scale = static_cast<std::uint8_t>(flags % 32);
        value.decVal.sign = flags % 3 == 0 ? DECIMAL_NEG : 0;
        value.decVal.Lo64 = static_cast<std::uint64_t>(bits);
    } else {
        value.llVal = bits;
    }
    value.vt = from;
    bool const roundTrip = from == VT_R8 && to == VT_BSTR && std::fabs(value.dblVal) < 1e308;
    if (from == VT_BSTR)
        value.bstrVal = SysAllocStringLen(text.data(), static_cast<unsigned>(text.size()));
    VARIANT reference{};
    reference.vt = VT_BYREF | (from == VT_R8 || from == VT_BSTR ? from : VT_VARIANT);
    reference.byref = reference.vt == (VT_BYREF | VT_VARIANT) ? static_cast<void *>(&value) : &value.llVal;

    VARIANT result{};
    VARIANT referred{};
    HRESULT const code = VariantChangeType(&result, &value, flags, to);
    assert(code == S_OK || code == DISP_E_TYPEMISMATCH || code == DISP_E_OVERFLOW || code == DISP_E_BADVARTYPE ||
           code == E_INVALIDARG);
    assert(result.vt == (code == S_OK ? to : VT_EMPTY));
    assert(VariantChangeType(&referred, &reference, flags, to) == code && state(referred) == state(result));
    std::u16string const want = state(code == S_OK ? result : value);
    assert(VariantChangeType(&value, &value, flags, to) == code && state(value) == want);
    if (roundTrip) {
        assert(VariantChangeType(&value, &value, flags, VT_R8) == S_OK);
        assert(VariantChangeType(&value, &value, flags, VT_BSTR) == S_OK && state(value) == want);
    }
    for (VARIANT * const each : { &value, &result, &referred })
        VariantClear(each);
}

// A value converts as above. A formatted text is cut to what the buffer has room for, with a zero after it.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    FuzzedDataProvider bytes(data, size);
    std::string const narrow = bytes.ConsumeRandomLengthString();
    KelpString const wide = KelpString::fromUTF8(bytes.ConsumeRandomLengthString());
    auto const bits = bytes.ConsumeIntegral<std::int64_t>();
    auto const from = static_cast<VARTYPE>(bytes.ConsumeIntegral<VARTYPE>() & ~VT_BYREF);
    auto const to = bytes.ConsumeIntegral<VARTYPE>();
    convert(from, to, bits, bytes.ConsumeIntegral<std::uint16_t>(), wide);

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
