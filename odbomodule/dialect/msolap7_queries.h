#pragma once
#include "odbomodule/host/export.h"
#include "odbomodule/statements/mdx_create_query.h"
#include "odbomodule/statements/mdx_drop_query.h"
#include "odbomodule/statements/mdx_select_query.h"

// The statements of this server's dialect: definitions stand between single quotes, and there is no drill-through.
class MSOLAP7SelectQuery final : public MDXSelectQuery {
public:
    using MDXSelectQuery::MDXSelectQuery;

    void AddMemberFormula(MDXField * name, MDXValue * value, std::int32_t solveOrder,
        std::vector<KelpString> const & propertyNames, std::vector<KelpString> const & propertyValues) override;
    void AddSetFormula(KelpString const & name, MDXSet * set) override;
    void AddAxisSpecification(std::int32_t axis, MDXSet * set, std::vector<KelpString> const & properties,
        NonEmptyStatus status) override;
    // Does nothing and returns false.
    bool SpecifyDrillThrough() override;

private:
    ~MSOLAP7SelectQuery() override = default;
};

class MDX_API MSOLAP7CreateQuery : public MDXCreateQuery {
public:
    explicit MSOLAP7CreateQuery(KelpString const & cubeName);

    void AddMemberFormula(MDXField * name, MDXValue * value, std::int32_t solveOrder,
        std::vector<KelpString> const & propertyNames, std::vector<KelpString> const & propertyValues) override;
    void AddSetFormula(KelpString const & name, MDXSet * set) override;

protected:
    ~MSOLAP7CreateQuery() override;
};

class MDX_API MSOLAP7DropQuery : public MDXDropQuery {
public:
    explicit MSOLAP7DropQuery(KelpString const & cubeName);

protected:
    ~MSOLAP7DropQuery() override;
};
