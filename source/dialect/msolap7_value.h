#pragma once
#include "../expressions/mdx_value.h"

// A value in the MSOLAP dialect, where TakeProperty asks for a member's name instead of its caption or
// description.
class MSOLAP7Value final : public MDXValue {
public:
    using MDXValue::MDXValue;

    // field.Name for the properties Caption and Description. The case of ASCII letters in the name is ignored.
    MDXValue * TakeProperty(MDXField const * field, KelpString const & name) override;

private:
    ~MSOLAP7Value() override = default;
};
