#pragma once
#include "mdx_query_generator.h"
#include "../host/export.h"

/// Makes objects of the MSOLAP dialect's classes.
class MDX_API MSOLAP7QueryGenerator : public MDXQueryGenerator {
public:
    MSOLAP7QueryGenerator(KelpString const & cubeName, bool flatHierarchyNames);
    ~MSOLAP7QueryGenerator() override;

    [[nodiscard]] MDXQuery * GenerateQuery(MDXQuery::QueryType type, BRIM_o::Cube * cube) override;
    [[nodiscard]] MDXSet * GenerateSet(BRIM_o::Hierarchy const * hierarchy) override;
    [[nodiscard]] MDXSet * GenerateSet(std::vector<MDXField *> const & fields) override;
    [[nodiscard]] MDXSet * GenerateSet(std::vector<MDXTuple *> const & tuples) override;
    [[nodiscard]] MDXSet * GenerateSet(BRIM_o::Level const * level) override;
    [[nodiscard]] MDXSet * GenerateSet(KelpString const & text) override;
    [[nodiscard]] MDXSet * GenerateSet(MDXSet const * other) override;
    [[nodiscard]] MDXSet * GenerateSet() override;
    [[nodiscard]] MDXField * GenerateField(KelpString const & owner, KelpString const & name) override;
    [[nodiscard]] MDXField * GenerateField(MDXField const * other) override;
    [[nodiscard]] MDXField * GenerateField(BRIM_o::Level const * level, KelpString const & name) override;
    [[nodiscard]] MDXField * GenerateField(
        BRIM_o::Calculation const * calculation, KelpString const & name) override;
    [[nodiscard]] MDXField * GenerateField(BRIM_o::Dimension const * dimension) override;
    [[nodiscard]] MDXField * GenerateField(BRIM_o::Member const * member) override;
    [[nodiscard]] MDXField * GenerateField(KelpString const & text) override;
    [[nodiscard]] MDXField * GenerateField(BRIM_o::Hierarchy const * hierarchy, KelpString const & name) override;
    [[nodiscard]] MDXField * GenerateField(BRIM_o::Hierarchy const * hierarchy) override;
    using MDXQueryGenerator::GenerateValue;
    [[nodiscard]] MDXValue * GenerateValue(std::int32_t value) override;
    [[nodiscard]] MDXValue * GenerateValue(KelpString const & text) override;
    [[nodiscard]] MDXTuple * GenerateTuple() override;
    [[nodiscard]] MDXMemberProperty * GenerateMemberProperty(
        KelpString const & owner, KelpString const & property) override;
    ServerType GetServerType() const override;

protected:
    MDXQueryLog * create_mdx_query_log() override;

private:
    bool fFlatHierarchyNames;
};
