#include "statements/mdx_query.h"

#include "object_class.h"

static support::ObjectClass gClass{ u"MDXQuery" };

MDXQuery::MDXQuery(KelpString const & cubeName) : RefCount(gClass), fCubeName(cubeName) {}

MDXQuery::~MDXQuery() = default;
