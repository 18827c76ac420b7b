#pragma once
#include "../host/export.h"
#include "../host/kelp_string.h"

// Sets `result` to `source` with each single quote doubled, to stand between single quotes. Nothing else changes,
// and no quotes are put around it. Works on whole expressions too. The two may be one string.
MDX_API void quote_member_name(KelpString & result, KelpString const & source);

// The same with each "]", for a name that goes between brackets. Hosts link by this spelling, so it must stay.
MDX_API void double_sqaure_brackets(KelpString & result, KelpString const & source);
