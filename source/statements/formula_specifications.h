#pragma once
#include "../host/export.h"
#include "../host/kelp_string.h"
#include "../ref_ptr.h"

#include <cstdint>
#include <vector>
class MDXField;
class MDXSet;
class MDXValue;

MDX_EXPORTS_BEGIN

/// The definition of a calculated member or a named set in a WITH clause or CREATE. The statement makes and owns
/// it. `qualified` puts the cube's name and a dot before the defined name. getText() asks the member, value or set
/// for its text. None of these may be null.
class MDX_API MDXSingleFormulaSpecification {
public:
    explicit MDXSingleFormulaSpecification(KelpString const & cubeName);
    virtual ~MDXSingleFormulaSpecification();
    MDXSingleFormulaSpecification(MDXSingleFormulaSpecification const &) = delete;
    MDXSingleFormulaSpecification & operator=(MDXSingleFormulaSpecification const &) = delete;

    /// The formula, which ends in a blank.
    virtual KelpString getText() = 0;
    /// Assigns getText() to `out`.
    virtual void writeText(KelpString & out) = 0;

protected:
    KelpString fCubeName;
};

/// SET name AS set. Takes a reference to the set.
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

/// MEMBER member AS value, SOLVE_ORDER = number, property name = property value. A negative solve order is left
/// out. Property values are MDX and inserted unchanged: a text constant must include its quotes. Takes references
/// to the member and the value.
class MDX_API MDXMemberSpecification : public MDXSingleFormulaSpecification {
public:
    MDXMemberSpecification(MDXField * member, MDXValue * value, std::int32_t solveOrder,
        std::vector<KelpString> const & propertyNames, std::vector<KelpString> const & propertyValues,
        bool qualified, KelpString const & cubeName);
    ~MDXMemberSpecification() override;

    /// Throws MDX_ERR_PROPERTY_COUNT_MISMATCH if the numbers of property names and values differ.
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

MDX_EXPORTS_END
