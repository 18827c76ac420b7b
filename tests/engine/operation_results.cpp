// Prints a statement for each row of docs/results.md; results_page.py writes the rows as C++. With the argument "flat", the names of
// hierarchies are flat.
#include <odbomodule/memory_cube.h>

#include <iostream>
#include <string_view>
#include <vector>

namespace {

using namespace BRIM_o; // the kinds of nodes
using namespace memory_cube::conditions;
using memory_cube::Condition;

// The cube [Sales] with the names of the page, and a function for each kind of table. It prints a row as a statement.
struct Sales {
    memory_cube::Cube cube;
    memory_cube::Maker const make{ cube };

    explicit Sales(bool flatHierarchyNames) : cube("[Sales]", flatHierarchyNames) {}

    memory_cube::Hierarchy * hierarchy(
        memory_cube::Dimension const * dimension, char const * name, std::vector<char const *> const & levels)
    {
        memory_cube::Hierarchy * const hierarchy = cube.add_hierarchy(dimension, name);
        for (char const * const level : levels)
            cube.add_level(hierarchy, level);
        return hierarchy;
    }
    memory_cube::Dimension * const time = cube.add_dimension("Time");
    memory_cube::Hierarchy * const calendar = hierarchy(time, "Calendar", { "Year", "Quarter", "Month", "Day" });
    memory_cube::Hierarchy * const fiscal = hierarchy(time, "Fiscal", { "Fiscal Year", "Fiscal Half", "Fiscal Week" });
    memory_cube::Hierarchy * const stores = hierarchy(cube.add_dimension("Store"), "", { "(All)", "Country", "City", "Store Name" });
    memory_cube::Hierarchy * const products = hierarchy(
        cube.add_dimension("Product"), "", { "(All)", "Family", "Department", "Category", "Brand", "Product Name" });
    memory_cube::Calculation * const europe = cube.add_calculation(stores, "Europe");
    memory_cube::Calculation * const snacks = cube.add_calculation(products, "Snacks ]Salty[ and O'Brien's");

    RefPtr<MDXField> period(char const * path) const { return make.member(calendar->fUniqueName + KelpString(path)); }
    RefPtr<MDXField> const sales = make.member("[Measures].[Store Sales]");
    RefPtr<MDXField> const all = make.member("[Store].[All Stores]"), ireland = make.member("[Store].[Ireland]"),
                           cork = make.member("[Store].[Ireland].[Cork]"),
                           market = make.member("[Store].[Ireland].[Cork].[English Market]"),
                           dublin = make.member("[Store].[Ireland].[Dublin]"), japan = make.member("[Store].[Japan]"),
                           norway = make.member("[Store].[Norway]"), singapore = make.member("[Store].[Singapore]"),
                           usa = make.member("[Store].[USA]"), member = make.member("[Store].CURRENTMEMBER");
    RefPtr<MDXSet> const set = make.set(), countries = make.set("[Store].[Country].MEMBERS"), cities = make.set("[Store].[City].MEMBERS"),
                         families = make.set("[Product].[Family].MEMBERS"), opened = make.list({ ireland, cork, market, dublin, japan }),
                         shops = make.list({ market, make.member("[Store].[Japan].[大阪].[心斎橋 Store 8]") }),
                         mixed = make.list({ make.calculated(europe), japan, ireland }),
                         months = make.set(cube.level(calendar->fUniqueName + u".[Month]"));
    RefPtr<MDXTuple> const by_sales = make.tuple({ sales }), by_sales_of_2024 = make.tuple({ sales, period(".[2024]") }),
                           november = make.tuple({ period(".[2024].[Q4].[November]") });
    RefPtr<MDXValue> const value = make.value(0), y = make.value("[Measures].[Store Sales]"), x = make.value("[Measures].[Unit Sales]");
    Condition const sold = memory_cube::conditions::value(current()), cost = mdx("[Measures].[Store Cost]"),
                    units = mdx("[Measures].[Unit Sales]");
    RefPtr<MDXSelectQuery> const select = make.select(make.list({ sales }), countries);
    RefPtr<MDXCreateQuery> const create = make.create();
    RefPtr<MDXDropQuery> const drop = make.drop();
    KelpString text = "SELECT { [Measures].[Unit Sales] } ON COLUMNS FROM [Sales]";

    static void print(char const * title, MDXQuery const & query)
    {
        std::cout << "== " << title << " ==\n" << query.getText(false) << "\n";
    }
    // Sales by periods.
    void periods(char const * title, MDXSet * shown) const { print(title, *make.select(make.list({ sales }), hold(shown))); }
    void periods(char const * title, MDXField * period) const { periods(title, make.list({ hold(period) }).get()); }
    RefPtr<MDXSelectQuery> in_2025(RefPtr<MDXField> const & measure, MDXSet * rows) const
    {
        RefPtr query = make.select(make.list({ measure }), hold(rows));
        query->AddSlicerSpecification(period(".[2025]").get());
        return query;
    }
    // Sales in 2025, by these rows.
    void rows(char const * title, MDXSet * shown) const { print(title, *in_2025(sales, shown)); }
    void rows(char const * title, MDXField * row) const { rows(title, make.list({ hold(row) }).get()); }
    void cities_that(char const * title, Condition const & condition) const
    {
        rows(title, cities->TakeFilter(condition.get(), by_sales.get()));
    }
    // The value in 2025, by these rows.
    void values(char const * title, MDXValue * formula, RefPtr<MDXSet> const & rows) const
    {
        RefPtr const name = make.member("[Measures].[Value]");
        RefPtr const query = in_2025(name, rows.get());
        query->AddMemberFormula(name.get(), formula, -1, { "FORMAT_STRING" }, { "'0.####'" });
        print(title, *query);
    }
    void value_of_all(char const * title, MDXValue * formula) const { values(title, formula, make.list({ all })); }
    void values_of_countries(char const * title, MDXValue * formula) const { values(title, formula, countries); }
    void values_of_cities(char const * title, MDXValue * formula) const { values(title, formula, cities); }
};

// Each row has new objects.
#define ROW(...)                                                                                                                           \
    {                                                                                                                                      \
        struct Row : Sales {                                                                                                               \
            explicit Row(bool flat) : Sales(flat) { __VA_ARGS__; }                                                                         \
        } const row(flat);                                                                                                                 \
    }

void print_rows(bool flat)
{
#include "results_page.h"
}

}

int main(int count, char ** arguments)
{
    print_rows(count > 1 && std::string_view(arguments[1]) == "flat");
}
