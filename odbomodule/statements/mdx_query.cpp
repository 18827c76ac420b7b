#include "odbomodule/statements/mdx_query.h"

#include "odbomodule/base/object_class.h"

static constinit support::ObjectClass gClass{ u"MDXQuery" };

MDXQuery::MDXQuery(KelpString const & cubeName) : RefCount(gClass), fCubeName(cubeName) {}

MDXQuery::~MDXQuery() = default;
