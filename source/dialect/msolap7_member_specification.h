#pragma once
#include "../host/export.h"
#include "../statements/formula_specifications.h"

/// MEMBER member AS ' value ' , solve order and properties. The MSOLAP dialect quotes the definition.
class MDX_API MSOLAP7MemberSpecification : public MDXMemberSpecification {
public:
    MSOLAP7MemberSpecification(MDXField * member, MDXValue * value, std::int32_t solveOrder,
        std::vector<KelpString> const & propertyNames, std::vector<KelpString> const & propertyValues,
        bool qualified, KelpString const & cubeName);
    ~MSOLAP7MemberSpecification() override;

    /// Throws MDX_ERR_PROPERTY_COUNT_MISMATCH if the numbers of property names and values differ.
    KelpString getText() override;
};
