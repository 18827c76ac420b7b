#include "msolap7_set_specification.h"

#include "../sets/mdx_set.h"
#include "../text.h"

using namespace mdx_text;

KelpString MSOLAP7SetSpecification::getText()
{
    if (fQualified)
        return mdx<u"SET $1.$2 AS ' $3 ' ">({ fCubeName, fSetName, fSet->getQuotedText() });
    return mdx<u"SET $1 AS ' $2 ' ">({ fSetName, fSet->getQuotedText() });
}
