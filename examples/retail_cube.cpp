#include "retail_cube.h"

#include <map>
#include <string>
#include <vector>

namespace {

struct CalculationRow {
    char const * name;
    char const * parent; // the parent's path; empty if the calculation is directly under the hierarchy
};
// `levels` are listed from the top down. `members` lists only the lowest members, each as a path from the top down,
// separated by "|". The members above them are made from the paths.
struct HierarchyRow {
    char const * dimension;
    char const * name; // empty if it has the name of its dimension
    std::vector<char const *> levels;
    std::vector<char const *> members;
    std::vector<CalculationRow> calculations;
};
HierarchyRow const kHierarchies[] = {
    { "Measures", "", { "MeasuresLevel" }, { "Unit Sales", "Store Sales", "Store Cost", "Customer Count" },
        { { "Profit", "" }, { "Profit per Customer", "" } } },
    { "Time", "Calendar", { "Year", "Quarter", "Month", "Day" },
        { "2024|Q3|September|2024-09-30", "2024|Q4|December|2024-12-24", "2025|Q1|January|2025-01-31",
            "2025|Q2|April|2025-04-01" },
        { { "2025 to Date", "2025" } } },
    { "Time", "Fiscal", { "Fiscal Year", "Fiscal Half", "Fiscal Week" },
        { "FY 2025|First Half|Week 1", "FY 2025|Second Half|Week 27" }, {} },
    { "Store", "", { "(All)", "Country", "City", "Store Name" },
        { "All Stores|Brazil|São Paulo|Avenida 9 de Julho", "All Stores|Ireland|Dublin|O'Brien's Corner",
            "All Stores|Japan|東京|銀座 Store 7", "All Stores|Switzerland|Zürich|Bahnhofstrasse 12",
            "All Stores|USA|Seattle|Store 15" },
        { { "Europe", "" }, { "Rest of the World", "" }, { "Flagship Stores", "All Stores" } } },
    { "Product", "", { "(All)", "Family", "Department", "Category", "Brand", "Product Name" },
        { "All Products|Drink|Beverages|Tea & Coffee|Hill's|Hill's Earl Grey",
            "All Products|Food|Snacks ]Salty[|Crisps|Golden|Golden Crisps [200 g]",
            "All Products|Food|Produce|Vegetables|Ebony|Ebony Red Pepper",
            "All Products|Non-Consumable|Household|Candles|Lumière|Lumière \"Nº 5\"" },
        { { "Snacks ]Salty[ and O'Brien's", "All Products|Food" } } },
    { "Customers", "", { "(All)", "Country", "State", "City", "Name" },
        { "All Customers|Ireland|Leinster|Dublin|Siobhán O'Brien",
            "All Customers|Switzerland|Zürich|Winterthur|Jürg Müller",
            "All Customers|Japan|東京都|東京|山田 花子" },
        {} },
};

using ByPath = std::map<std::string, memory_cube::Member *>;

memory_cube::Member * member_at(
    memory_cube::Cube & cube, memory_cube::Hierarchy * hierarchy, ByPath & known, std::string const & path)
{
    if (auto const found = known.find(path); found != known.end())
        return found->second;
    std::size_t const end = path.rfind('|');
    KelpString const name = path.substr(end + 1); // the whole path if there is no '|'
    return known[path] = end == path.npos
                             ? cube.add_member(hierarchy, name)
                             : cube.add_member(member_at(cube, hierarchy, known, path.substr(0, end)), name);
}

}

memory_cube::Cube retail_cube()
{
    memory_cube::Cube cube("[Sales]", true);
    std::map<std::string, memory_cube::Dimension *> dimensions;
    for (HierarchyRow const & row : kHierarchies) {
        memory_cube::Dimension *& dimension = dimensions[row.dimension];
        if (dimension == nullptr)
            dimension = cube.add_dimension(row.dimension);
        memory_cube::Hierarchy * const hierarchy = cube.add_hierarchy(dimension, row.name);
        for (char const * const level : row.levels)
            cube.add_level(hierarchy, level);
        ByPath known;
        for (char const * const path : row.members)
            member_at(cube, hierarchy, known, path);
        for (auto const & [name, parent] : row.calculations)
            cube.add_calculation(
                hierarchy, name, *parent == '\0' ? nullptr : member_at(cube, hierarchy, known, parent));
    }
    return cube;
}
