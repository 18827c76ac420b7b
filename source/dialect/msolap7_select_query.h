#pragma once
#include "../statements/mdx_select_query.h"

// SELECT in the MSOLAP dialect: definitions are quoted, and there is no drill-through.
class MSOLAP7SelectQuery final : public MDXSelectQuery {
public:
    using MDXSelectQuery::MDXSelectQuery;

    void AddMemberFormula(MDXField * name, MDXValue * value, std::int32_t solveOrder,
        std::vector<KelpString> const & propertyNames, std::vector<KelpString> const & propertyValues) override;
    void AddSetFormula(KelpString const & name, MDXSet * set) override;
    // Does nothing and returns false.
    bool SpecifyDrillThrough() override;

private:
    ~MSOLAP7SelectQuery() override = default;
};
