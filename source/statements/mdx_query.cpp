#include "mdx_query.h"

#include "../object_class.h"

static constinit support::ObjectClass gClass{ u"MDXQuery" };

MDXQuery::MDXQuery(KelpString const & cubeName) : RefCount(gClass), fCubeName(cubeName) {}

MDXQuery::~MDXQuery() = default;
