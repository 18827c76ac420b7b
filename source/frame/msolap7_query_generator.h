#pragma once
#include "mdx_query_generator.h"
#include "../host/export.h"

/// Makes objects of the MSOLAP dialect's classes.
class MDX_API MSOLAP7QueryGenerator : public MDXQueryGenerator {
public:
    MSOLAP7QueryGenerator(KelpString const & cubeName, bool flatHierarchyNames);
    ~MSOLAP7QueryGenerator() override;

    MDXQuery * GenerateQuery(MDXQuery::QueryType type, BRIM_o::Cube * cube) override;
    MDXSet * GenerateSet(BRIM_o::Hierarchy const * hierarchy) override;
    MDXSet * GenerateSet(std::vector<MDXField *> const & fields) override;
    MDXSet * GenerateSet(std::vector<MDXTuple *> const & tuples) override;
    MDXSet * GenerateSet(BRIM_o::Level const * level) override;
    MDXSet * GenerateSet(KelpString const & text) override;
    MDXSet * GenerateSet(MDXSet const * other) override;
    MDXSet * GenerateSet() override;
    MDXField * GenerateField(KelpString const & owner, KelpString const & name) override;
    MDXField * GenerateField(MDXField const * other) override;
    MDXField * GenerateField(BRIM_o::Level const * level, KelpString const & name) override;
    MDXField * GenerateField(BRIM_o::Calculation const * calculation, KelpString const & name) override;
    MDXField * GenerateField(BRIM_o::Dimension const * dimension) override;
    MDXField * GenerateField(BRIM_o::Member const * member) override;
    MDXField * GenerateField(KelpString const & text) override;
    MDXField * GenerateField(BRIM_o::Hierarchy const * hierarchy, KelpString const & name) override;
    MDXField * GenerateField(BRIM_o::Hierarchy const * hierarchy) override;
    using MDXQueryGenerator::GenerateValue;
    MDXValue * GenerateValue(std::int32_t value) override;
    MDXValue * GenerateValue(KelpString const & text) override;
    MDXTuple * GenerateTuple() override;
    MDXMemberProperty * GenerateMemberProperty(KelpString const & owner, KelpString const & property) override;
    ServerType GetServerType() const override;

protected:
    MDXQueryLog * create_mdx_query_log() override;

private:
    bool fFlatHierarchyNames;
};
