#include "msolap7_value.h"

#include "../expressions/mdx_field.h"
#include "../text.h"

using namespace mdx_text;

MDXValue * MSOLAP7Value::TakeProperty(MDXField const * field, KelpString const & name)
{
    if (name.strcmp("Caption", true) != 0 && name.strcmp("Description", true) != 0)
        return MDXValue::TakeProperty(field, name);
    return rewrite<u"$1.Name">(this, { field->getText() });
}
