#pragma once
#include "../host/export.h"
#include "../statements/mdx_create_query.h"

// CREATE in this server's dialect: definitions stand between single quotes. A host may derive from it.
class MDX_API MSOLAP7CreateQuery : public MDXCreateQuery {
public:
    explicit MSOLAP7CreateQuery(KelpString const & cubeName);

    void AddMemberFormula(MDXField * name, MDXValue * value, std::int32_t solveOrder,
        std::vector<KelpString> const & propertyNames, std::vector<KelpString> const & propertyValues) override;
    void AddSetFormula(KelpString const & name, MDXSet * set) override;

protected:
    ~MSOLAP7CreateQuery() override;
};
