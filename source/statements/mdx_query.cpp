#include "statements/mdx_query.h"

#include <atomic>

static std::atomic<std::int32_t> gNextId{ 0 };

MDXQuery::MDXQuery(KelpString const & cubeName)
    : RefCount(KelpString::Base(u"MDXQuery"), gNextId++), fCubeName(cubeName)
{}

MDXQuery::~MDXQuery() = default;
