#include "fuzz.h"
#include "host/automation.h"
#include "host/string_converters.h"

#include <algorithm>
#include <cmath>
#include <cstring>

// Any text converts or is refused; a number that is written reads back as itself.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    KelpString::Base const text(data, data + size);
    VARIANT source{};
    source.vt = VT_BSTR;
    source.bstrVal = SysAllocStringLen(text.data(), static_cast<unsigned>(text.size()));
    for (VARTYPE const type : { VT_R8, VT_I4, VT_BOOL, VT_BSTR }) {
        VARIANT result{};
        HRESULT const code = VariantChangeType(&result, &source, 0, type);
        require(result.vt == (code == S_OK ? type : VT_EMPTY));
        VariantClear(&result);
    }
    VariantClear(&source);

    double value = 0;
    std::memcpy(&value, data, std::min(size, sizeof value));
    KelpString digits;
    StringConverters::convertRealToString(value, digits, 10, 17, false);
    require(!std::isfinite(value) || std::strtod(digits.toUTF8().c_str(), nullptr) == value);
    return 0;
}
