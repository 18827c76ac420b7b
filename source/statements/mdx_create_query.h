#pragma once
#include "../host/export.h"
#include "../host/kelp_string.h"
#include "mdx_query.h"

#include <cstdint>
#include <memory>
#include <vector>
class MDXField;
class MDXSet;
class MDXSingleFormulaSpecification;
class MDXValue;

MDX_EXPORTS_BEGIN

/// CREATE: defines calculated members and named sets of the cube; the cube's name precedes each name. Takes
/// references to what is added, which may not be null.
class MDX_API MDXCreateQuery : public MDXQuery {
public:
    explicit MDXCreateQuery(KelpString const & cubeName);

    /// The statement has one form: `multiLine` is not read. Throws MDX_ERR_NO_FORMULAS if there is no formula, and
    /// what a formula throws.
    KelpString getText(bool multiLine) const override;
    void writeText(KelpString & out) const override;

    /// See MDXMemberSpecification. If the numbers of property names and values differ, getText throws.
    virtual void AddMemberFormula(MDXField * name, MDXValue * value, std::int32_t solveOrder,
        std::vector<KelpString> const & propertyNames, std::vector<KelpString> const & propertyValues);
    virtual void AddSetFormula(KelpString const & name, MDXSet * set);
    /// Stores the whole statement, CREATE included, as text. From then on getText returns `text` and ignores all
    /// formulas.
    virtual void AddRawMemberFormula(KelpString const & text);

protected:
    ~MDXCreateQuery() override;

    std::vector<std::unique_ptr<MDXSingleFormulaSpecification>> fFormulas;
    bool fUseRawFormula = false;
    KelpString fRawFormula;
};

MDX_EXPORTS_END
