#include "mdx_drop_query.h"

#include "../frame/mdx_error.h"
#include "../text.h"

using namespace mdx_text;

MDXDropQuery::MDXDropQuery(KelpString const & cubeName) : MDXQuery(cubeName)
{
    fQueryType = QT_DROP;
}

MDXDropQuery::~MDXDropQuery() = default;

KelpString MDXDropQuery::getText(bool) const
{
    if (fDropNames.empty())
        throw MDXError(MDX_ERR_NOTHING_TO_DROP);

    KelpString text = fDropKind == Members ? u"DROP MEMBER " : u"DROP SET ";
    for (KelpString const & name : fDropNames)
        append<u"$1.$2 ">(text, { fCubeName, name });
    return text;
}

void MDXDropQuery::writeText(KelpString & out) const
{
    out = getText(false);
}

bool MDXDropQuery::AddMemberToDrop(KelpString const & name)
{
    return add(Members, name);
}

bool MDXDropQuery::AddSetToDrop(KelpString const & name)
{
    return add(Sets, name);
}

bool MDXDropQuery::add(DropKind kind, KelpString const & name)
{
    if (fDropKind != None && fDropKind != kind)
        throw MDXError(MDX_ERR_MIXED_DROP);
    fDropNames.push_back(name);
    fDropKind = kind;
    return true;
}
