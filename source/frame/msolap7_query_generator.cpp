#include "msolap7_query_generator.h"

#include "../dialect/msolap7_create_query.h"
#include "../dialect/msolap7_drop_query.h"
#include "../dialect/msolap7_field.h"
#include "../dialect/msolap7_member_property.h"
#include "../dialect/msolap7_select_query.h"
#include "../dialect/msolap7_set.h"
#include "../dialect/msolap7_tuple.h"
#include "../dialect/msolap7_value.h"
#include "../log/mdx_query_log.h"
#include "mdx_error.h"

MDXQueryGenerator * createMSOLAP7QueryGenerator(KelpString const & cubeName, bool flatHierarchyNames)
{
    return new MSOLAP7QueryGenerator(cubeName, flatHierarchyNames);
}

MSOLAP7QueryGenerator::MSOLAP7QueryGenerator(KelpString const & cubeName, bool flatHierarchyNames)
    : MDXQueryGenerator(cubeName), fFlatHierarchyNames(flatHierarchyNames)
{}

MSOLAP7QueryGenerator::~MSOLAP7QueryGenerator() = default;

MDXQuery * MSOLAP7QueryGenerator::GenerateQuery(MDXQuery::QueryType type, BRIM_o::Cube *)
{
    switch (type) {
    case MDXQuery::QT_SELECT: return new MSOLAP7SelectQuery(fCubeName);
    case MDXQuery::QT_CREATE: return new MSOLAP7CreateQuery(fCubeName);
    case MDXQuery::QT_DROP: return new MSOLAP7DropQuery(fCubeName);
    default: raise_bad_enum(type, "QueryType");
    }
}

MDXSet * MSOLAP7QueryGenerator::GenerateSet(BRIM_o::Hierarchy const * hierarchy)
{
    return new MSOLAP7Set(hierarchy);
}

MDXSet * MSOLAP7QueryGenerator::GenerateSet(std::vector<MDXField *> const & fields)
{
    return new MSOLAP7Set(fields);
}

MDXSet * MSOLAP7QueryGenerator::GenerateSet(std::vector<MDXTuple *> const & tuples)
{
    return new MSOLAP7Set(tuples);
}

MDXSet * MSOLAP7QueryGenerator::GenerateSet(BRIM_o::Level const * level)
{
    return new MSOLAP7Set(level);
}

MDXSet * MSOLAP7QueryGenerator::GenerateSet(KelpString const & text)
{
    return new MSOLAP7Set(text);
}

MDXSet * MSOLAP7QueryGenerator::GenerateSet(MDXSet const * other)
{
    return new MSOLAP7Set(other);
}

MDXSet * MSOLAP7QueryGenerator::GenerateSet()
{
    return new MSOLAP7Set;
}

MDXField * MSOLAP7QueryGenerator::GenerateField(KelpString const & owner, KelpString const & name)
{
    return new MSOLAP7Field(owner, name, fFlatHierarchyNames);
}

MDXField * MSOLAP7QueryGenerator::GenerateField(MDXField const * other)
{
    return new MSOLAP7Field(other, fFlatHierarchyNames);
}

MDXField * MSOLAP7QueryGenerator::GenerateField(BRIM_o::Level const * level, KelpString const & name)
{
    return new MSOLAP7Field(level, name, fFlatHierarchyNames);
}

MDXField * MSOLAP7QueryGenerator::GenerateField(BRIM_o::Calculation const * calculation, KelpString const & name)
{
    return new MSOLAP7Field(calculation, name, fFlatHierarchyNames);
}

MDXField * MSOLAP7QueryGenerator::GenerateField(BRIM_o::Dimension const * dimension)
{
    return new MSOLAP7Field(dimension, fFlatHierarchyNames);
}

MDXField * MSOLAP7QueryGenerator::GenerateField(BRIM_o::Member const * member)
{
    return new MSOLAP7Field(member, fFlatHierarchyNames);
}

MDXField * MSOLAP7QueryGenerator::GenerateField(KelpString const & text)
{
    return new MSOLAP7Field(text, fFlatHierarchyNames);
}

MDXField * MSOLAP7QueryGenerator::GenerateField(BRIM_o::Hierarchy const * hierarchy, KelpString const & name)
{
    return new MSOLAP7Field(hierarchy, name, fFlatHierarchyNames);
}

MDXField * MSOLAP7QueryGenerator::GenerateField(BRIM_o::Hierarchy const * hierarchy)
{
    return new MSOLAP7Field(hierarchy, fFlatHierarchyNames);
}

MDXValue * MSOLAP7QueryGenerator::GenerateValue(std::int32_t value)
{
    return new MSOLAP7Value(value);
}

MDXValue * MSOLAP7QueryGenerator::GenerateValue(KelpString const & text)
{
    return new MSOLAP7Value(text);
}

MDXTuple * MSOLAP7QueryGenerator::GenerateTuple()
{
    return new MSOLAP7Tuple;
}

MDXMemberProperty * MSOLAP7QueryGenerator::GenerateMemberProperty(
    KelpString const & owner, KelpString const & property)
{
    return new MSOLAP7MemberProperty(owner, property);
}

MDXQueryGenerator::ServerType MSOLAP7QueryGenerator::GetServerType() const
{
    return fFlatHierarchyNames ? ST_FLAT_HIERARCHIES : ST_UNIQUE_HIERARCHIES;
}

MDXQueryLog * MSOLAP7QueryGenerator::create_mdx_query_log()
{
    auto log = std::make_unique<MDXQueryLog>(fCubeName);
    if (!log->open("Software\\Quarry Lane\\Fieldstone 11.0\\Tideline\\BRIM(o)\\Log\\Modules\\ODBOMODULE"))
        return nullptr;
    return log.release();
}
