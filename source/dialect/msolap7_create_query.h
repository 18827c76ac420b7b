#pragma once
#include "../host/export.h"
#include "../statements/mdx_create_query.h"

/// CREATE in the MSOLAP dialect: definitions are quoted. A host may derive from this class.
class MDX_API MSOLAP7CreateQuery : public MDXCreateQuery {
public:
    explicit MSOLAP7CreateQuery(KelpString const & cubeName);

    void AddMemberFormula(MDXField * name, MDXValue * value, std::int32_t solveOrder,
        std::vector<KelpString> const & propertyNames, std::vector<KelpString> const & propertyValues) override;
    void AddSetFormula(KelpString const & name, MDXSet * set) override;

protected:
    ~MSOLAP7CreateQuery() override;
};
