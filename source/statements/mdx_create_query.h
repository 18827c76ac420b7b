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

// CREATE: calculated members and named sets of the cube, each with the cube's name before its own. Takes references
// on what it is given, which may not be null.
class MDX_API MDXCreateQuery : public MDXQuery {
public:
    explicit MDXCreateQuery(KelpString const & cubeName);

    // There is one form; `multiLine` is not read. Throws MDX_ERR_NO_FORMULAS without a formula, and what a formula
    // throws; the statement stays as it was.
    KelpString getText(bool multiLine) const override;
    void writeText(KelpString & out) const override;

    // See MDXMemberSpecification. Lists of different lengths are an error only when the text is asked for.
    virtual void AddMemberFormula(MDXField * name, MDXValue * value, std::int32_t solveOrder,
        std::vector<KelpString> const & propertyNames, std::vector<KelpString> const & propertyValues);
    virtual void AddSetFormula(KelpString const & name, MDXSet * set);
    // Stores a text that is the whole statement from now on, CREATE included; the list is ignored.
    virtual void AddRawMemberFormula(KelpString const & text);

protected:
    ~MDXCreateQuery() override;

    std::vector<std::unique_ptr<MDXSingleFormulaSpecification>> fFormulas;
    bool fUseRawFormula = false;
    KelpString fRawFormula;
};
