#pragma once
#include <odbomodule/host/automation.h>

#include <string_view>

// Reads a number as OLE automation does by the conventions of US English: "$ 1,234.50", "(12)", "1.5e3", "&HFF".
// Returns S_OK, DISP_E_TYPEMISMATCH for a text that is not a number, or DISP_E_OVERFLOW.
HRESULT parse_number(std::u16string_view text, double & out);
