#include "mdx_query_generator.h"

#include "../log/mdx_query_log.h"

MDXQueryGenerator::MDXQueryGenerator(KelpString const & cubeName) : fCubeName(cubeName) {}

MDXQueryGenerator::~MDXQueryGenerator() = default;

MDXQueryLog * MDXQueryGenerator::GetMDXQueryLog()
{
    if (!fQueryLogCreated) {
        fQueryLog.reset(create_mdx_query_log());
        fQueryLogCreated = true;
    }
    return fQueryLog.get();
}
