#include "examples/retail_cube.h"

#include "odbomodule/expressions/member_names.h"

#include <stdexcept>

namespace {

struct HierarchyRow {
    char const * dimension;
    char const * name; // empty if it has the name of its dimension
    char const * levels;
};
HierarchyRow const kHierarchies[] = {
    { "Measures", "", "MeasuresLevel" },
    { "Time", "Calendar", "Year|Quarter|Month|Day" },
    { "Time", "Fiscal", "Fiscal Year|Fiscal Half|Fiscal Week" },
    { "Store", "", "(All)|Country|State|City|Store Name" },
    { "Product", "", "(All)|Family|Department|Category|Brand|Product Name" },
    { "Customers", "", "(All)|Country|State|City|Name" },
};

// The members at the bottom; those above them follow from the paths.
struct MemberRow {
    char const * hierarchy;
    char const * path;
};
MemberRow const kMembers[] = {
    { "Measures", "Unit Sales" },
    { "Measures", "Store Sales" },
    { "Measures", "Store Cost" },
    { "Measures", "Customer Count" },
    { "Calendar", "2024|Q3|September|2024-09-30" },
    { "Calendar", "2024|Q4|December|2024-12-24" },
    { "Calendar", "2025|Q1|January|2025-01-31" },
    { "Calendar", "2025|Q2|April|2025-04-01" },
    { "Fiscal", "FY 2025|First Half|Week 1" },
    { "Fiscal", "FY 2025|Second Half|Week 27" },
    { "Store", "All Stores|Brazil|São Paulo|São Paulo|Avenida 9 de Julho" },
    { "Store", "All Stores|Ireland|Leinster|Dublin|O'Brien's Corner" },
    { "Store", "All Stores|Japan|東京都|東京|銀座 Store 7" },
    { "Store", "All Stores|Switzerland|Zürich|Zürich|Bahnhofstrasse 12" },
    { "Store", "All Stores|USA|Washington|Seattle|Store 15" },
    { "Product", "All Products|Drink|Beverages|Tea & Coffee|Hill's|Hill's Earl Grey" },
    { "Product", "All Products|Food|Snacks ]Salty[|Crisps|Golden|Golden Crisps [200 g]" },
    { "Product", "All Products|Food|Produce|Vegetables|Ebony|Ebony Red Pepper" },
    { "Product", "All Products|Non-Consumable|Household|Candles|Lumière|Lumière \"Nº 5\"" },
    { "Customers", "All Customers|Ireland|Leinster|Dublin|Siobhán O'Brien" },
    { "Customers", "All Customers|Switzerland|Zürich|Winterthur|Jürg Müller" },
    { "Customers", "All Customers|Japan|東京都|東京|山田 花子" },
};

// Only `parent` says where a calculated member hangs. The server knows it by its hierarchy and its own name.
struct CalculationRow {
    char const * hierarchy;
    char const * name;
    char const * parent; // the path of a member; empty directly under the hierarchy
};
CalculationRow const kCalculations[] = {
    { "Measures", "Profit", "" },
    { "Measures", "Profit per Customer", "" },
    { "Store", "Europe", "" },
    { "Store", "Rest of the World", "" },
    { "Store", "Flagship Stores", "All Stores" },
    { "Calendar", "2025 to Date", "2025" },
    { "Product", "Snacks ]Salty[ and O'Brien's", "All Products|Food" },
};

std::string key(std::string_view hierarchy, std::string_view name)
{
    return std::string(hierarchy).append("|").append(name);
}

std::string_view last_name(std::string_view path)
{
    return path.substr(path.rfind('|') + 1);
}

// owner.[name], with each "]" of the name doubled.
KelpString below(KelpString const & owner, std::string_view name)
{
    KelpString text;
    double_sqaure_brackets(text, KelpString::fromUTF8(name));
    return owner + u".[" + text + u"]";
}

template <class Objects>
auto find(Objects const & objects, std::string const & name)
{
    auto const found = objects.find(name);
    if (found == objects.end())
        throw std::out_of_range("The cube has no " + name);
    return found->second;
}

}

RetailCube::RetailCube(bool flatHierarchyNames) : fName("[Sales]")
{
    for (auto const & [dimension, name, levels] : kHierarchies)
        add_hierarchy(dimension, name, levels, flatHierarchyNames);
    for (auto const & [hierarchy, path] : kMembers)
        add_member(hierarchy, path);
    for (auto const & [hierarchy, name, parent] : kCalculations)
        add_calculation(hierarchy, name, parent);
}

void RetailCube::add_hierarchy(char const * dimension, char const * name, char const * levels, bool flat)
{
    KelpString const dimensionName = KelpString::fromUTF8(dimension);
    KelpString const ownName = KelpString::fromUTF8(name);
    KelpString const dimensionUniqueName = u"[" + dimensionName + u"]";
    if (fDimensionOf.find(dimension) == fDimensionOf.end())
        fDimensionOf[dimension] = &fDimensions.emplace_back(dimensionName, dimensionUniqueName);

    KelpString uniqueName = dimensionUniqueName;
    if (!ownName.empty() && flat)
        uniqueName = u"[" + dimensionName + u"." + ownName + u"]";
    else if (!ownName.empty())
        uniqueName = below(dimensionUniqueName, name);
    std::string const known = ownName.empty() ? dimension : name;
    memory_cube::Hierarchy & hierarchy = fHierarchies.emplace_back(fDimensionOf[dimension], ownName, uniqueName);
    fHierarchyOf[known] = &hierarchy;

    std::string_view rest = levels;
    while (!rest.empty()) {
        std::string_view const level = rest.substr(0, rest.find('|'));
        hierarchy.fLevels.push_back(&fLevels.emplace_back(below(uniqueName, level)));
        fLevelOf[key(known, level)] = hierarchy.fLevels.back();
        rest.remove_prefix(level.size() < rest.size() ? level.size() + 1 : rest.size());
    }
}

void RetailCube::add_member(std::string_view hierarchy, std::string_view path)
{
    if (fMemberOf.find(key(hierarchy, path)) != fMemberOf.end())
        return;
    KelpString owner = find(fHierarchyOf, std::string(hierarchy))->fUniqueName;
    if (std::size_t const end = path.rfind('|'); end != path.npos) {
        std::string_view const parent = path.substr(0, end);
        add_member(hierarchy, parent);
        owner = member(hierarchy, parent)->fUniqueName;
    }
    fMemberOf[key(hierarchy, path)] = &fMembers.emplace_back(below(owner, last_name(path)));
}

void RetailCube::add_calculation(std::string_view hierarchy, std::string_view name, std::string_view parent)
{
    memory_cube::Hierarchy * const owner = find(fHierarchyOf, std::string(hierarchy));
    KelpString const parentUniqueName = parent.empty() ? KelpString() : member(hierarchy, parent)->fUniqueName;
    memory_cube::Calculation & calculation = fCalculations.emplace_back(
        owner, below(owner->fUniqueName, name), parentUniqueName);
    fCalculationOf[key(hierarchy, name)] = &calculation;
    owner->fCalculations.emplace_back(static_cast<BRIM_o::CalculationId>(fCalculations.size()), &calculation);
}

memory_cube::Dimension * RetailCube::dimension(std::string_view name)
{
    return find(fDimensionOf, std::string(name));
}

memory_cube::Hierarchy * RetailCube::hierarchy(std::string_view name)
{
    return find(fHierarchyOf, std::string(name));
}

memory_cube::Level * RetailCube::level(std::string_view hierarchy, std::string_view name)
{
    return find(fLevelOf, key(hierarchy, name));
}

memory_cube::Member * RetailCube::member(std::string_view hierarchy, std::string_view path)
{
    return find(fMemberOf, key(hierarchy, path));
}

memory_cube::Calculation * RetailCube::calculation(std::string_view hierarchy, std::string_view name)
{
    return find(fCalculationOf, key(hierarchy, name));
}
