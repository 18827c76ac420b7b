#include "dialect/msolap7_value.h"

#include "expressions/mdx_field.h"
#include "frame/concat.h"

MDXValue * MSOLAP7Value::TakeProperty(MDXField const * field, KelpString const & name)
{
    if (name.strcmp("Caption", true) != 0 && name.strcmp("Description", true) != 0)
        return MDXValue::TakeProperty(field, name);
    fQuotedTextValid = false;
    fText = concat(field->getText(), ".Name");
    return this;
}
