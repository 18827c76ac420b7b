#include "host/automation.h"
#include "host/string_converters.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

// Any text converts or is refused; a number that is written reads back as itself.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    KelpString text;
    for (std::size_t i = 0; i < size; ++i)
        text += static_cast<char16_t>(data[i]);
    VARIANT source;
    VariantInit(&source);
    source.vt = VT_BSTR;
    source.bstrVal = SysAllocStringLen(text.data(), static_cast<unsigned>(text.size()));
    for (VARTYPE const type : { VT_R8, VT_I4, VT_BOOL, VT_BSTR }) {
        VARIANT result;
        VariantInit(&result);
        HRESULT const answer = VariantChangeType(&result, &source, 0, type);
        if (answer == S_OK ? result.vt != type : result.vt != VT_EMPTY)
            std::abort();
        VariantClear(&result);
    }
    VariantClear(&source);

    double value = 0;
    if (size >= sizeof value) {
        std::memcpy(&value, data, sizeof value);
        KelpString digits;
        StringConverters::convertRealToString(value, digits, 10, 17, false);
        if (std::isfinite(value) && std::strtod(digits.toUTF8().c_str(), nullptr) != value)
            std::abort();
        StringConverters::convertRealToString(value, digits, 10, 16, false);
        if (digits.size() > 24)
            std::abort();
    }
    return 0;
}
