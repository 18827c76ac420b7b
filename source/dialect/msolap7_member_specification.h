#pragma once
#include "../host/export.h"
#include "../statements/formula_specifications.h"

// MEMBER member AS ' value ', solve order and properties after the quotes: this server wants definitions between
// single quotes.
class MDX_API MSOLAP7MemberSpecification : public MDXMemberSpecification {
public:
    MSOLAP7MemberSpecification(MDXField * member, MDXValue * value, std::int32_t solveOrder,
        std::vector<KelpString> const & propertyNames, std::vector<KelpString> const & propertyValues,
        bool qualified, KelpString const & cubeName);
    ~MSOLAP7MemberSpecification() override;

    // Throws MDX_ERR_PROPERTY_COUNT_MISMATCH when there are more or fewer values than names.
    KelpString getText() override;
};
