#include "msolap7_drop_query.h"

MSOLAP7DropQuery::MSOLAP7DropQuery(KelpString const & cubeName) : MDXDropQuery(cubeName) {}

MSOLAP7DropQuery::~MSOLAP7DropQuery() = default;
