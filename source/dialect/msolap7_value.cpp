#include "msolap7_value.h"

#include "../text.h"
#include "../expressions/mdx_field.h"

MDXValue * MSOLAP7Value::TakeProperty(MDXField const * field, KelpString const & name)
{
    if (name.strcmp("Caption", true) != 0 && name.strcmp("Description", true) != 0)
        return MDXValue::TakeProperty(field, name);
    return rewrite<u"$1.Name">(this, { field->getText() });
}
