#pragma once
#include "../host/export.h"
#include "../host/kelp_string.h"

/// Sets `result` to `source` with each single quote doubled, for use between single quotes. Adds no quotes around
/// the text and changes nothing else, so it works on whole expressions too. The two may be the same string.
MDX_API void quote_member_name(KelpString & result, KelpString const & source);

/// Sets `result` to `source` with each "]" doubled, for a name between brackets. The two may be the same string.
/// The name is misspelled ("sqaure"), but hosts link to it, so it cannot change.
MDX_API void double_sqaure_brackets(KelpString & result, KelpString const & source);
