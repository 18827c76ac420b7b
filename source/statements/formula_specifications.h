#pragma once
#include "../ref_ptr.h"
#include "../host/export.h"
#include "../host/kelp_string.h"

#include <cstdint>
#include <vector>
class MDXField;
class MDXSet;
class MDXValue;

// The definition of a calculated member or a named set, as it stands in a WITH clause or after CREATE. Made and
// owned by a statement. `qualified` puts the cube's name and a dot before the defined name. What a formula holds is
// asked for its text whenever the formula is, and may not be null then.
class MDX_API MDXSingleFormulaSpecification {
public:
    explicit MDXSingleFormulaSpecification(KelpString const & cubeName);
    virtual ~MDXSingleFormulaSpecification();
    MDXSingleFormulaSpecification(MDXSingleFormulaSpecification const &) = delete;
    MDXSingleFormulaSpecification & operator=(MDXSingleFormulaSpecification const &) = delete;

    // The formula, with a blank at its end.
    virtual KelpString getText() = 0;
    // Assigns what getText gives to `out`.
    virtual void writeText(KelpString & out) = 0;

protected:
    KelpString fCubeName;
};

// SET name AS set. Takes a reference on the set.
class MDX_API MDXSetSpecification : public MDXSingleFormulaSpecification {
public:
    MDXSetSpecification(KelpString const & name, MDXSet * set, bool qualified, KelpString const & cubeName);
    ~MDXSetSpecification() override;

    KelpString getText() override;
    void writeText(KelpString & out) override;

protected:
    KelpString fSetName;
    RefPtr<MDXSet> fSet;
    bool fQualified;
};

// MEMBER member AS value, SOLVE_ORDER = number, name = property. A solve order below 0 is left out. Property values
// are MDX and go in unchanged: a text brings its own quotes. Takes a reference on the member and the value.
class MDX_API MDXMemberSpecification : public MDXSingleFormulaSpecification {
public:
    MDXMemberSpecification(MDXField * member, MDXValue * value, std::int32_t solveOrder,
        std::vector<KelpString> const & propertyNames, std::vector<KelpString> const & propertyValues,
        bool qualified, KelpString const & cubeName);
    ~MDXMemberSpecification() override;

    // Throws MDX_ERR_PROPERTY_COUNT_MISMATCH when there are more or fewer values than names.
    KelpString getText() override;
    void writeText(KelpString & out) override;

protected:
    RefPtr<MDXField> fMember;
    RefPtr<MDXValue> fValue;
    std::int32_t fSolveOrder;
    bool fQualified;
    std::vector<KelpString> fPropertyNames;
    std::vector<KelpString> fPropertyValues;
};
