// Composes and prints the statements of a small sales report. Most functions below show one part of it.
#include "retail_cube.h"
#include <odbomodule/memory_cube.h>

#include <iostream>
#if defined(_WIN32)
#include <cstdio>
#include <fcntl.h>
#include <io.h>
#endif

using namespace memory_cube;
using namespace memory_cube::conditions;

namespace {

// The first two sort within each parent, the others across the whole set.
enum Direction : std::int32_t { AscendingInParent, DescendingInParent, Ascending, Descending };

// What all statements share: the host's cube and a maker for it.
struct Report {
    Cube cube = retail_cube();
    Maker make{ cube };

    // Both take unique names.
    RefPtr<MDXField> member(char const * name) { return make.member(cube.member(name)); }
    RefPtr<MDXField> calculated(char const * name) { return make.calculated(cube.calculation(name)); }
    RefPtr<MDXValue> sum(RefPtr<MDXSet> const & set)
    {
        RefPtr value = make.value(0);
        value->TakeSum(set.get());
        return value;
    }
};

void print(char const * heading, MDXQuery const & query)
{
    std::cout << "== " << heading << " ==\n" << query.getText(false) << "\n";
    KelpString const lines = query.getText(true);
    if (lines != query.getText(false))
        std::cout << (lines.front() == u'\n' ? "" : "\n") << lines << "\n";
    std::cout << "\n";
}

// A host sends the text of the statement to its server here. `logged` also writes the statement to the query log if
// this machine's settings ask for one.
void send(Report & report, MDXQuery const & query)
{
    logged(report.make.generator(), query, [](KelpString const &) {});
    std::cout << (report.make.generator().GetMDXQueryLog() == nullptr
                      ? "The query log is off.\n\n"
                      : "The statement was written to the query log.\n\n");
}

void members_on_the_server(Report & report)
{
    RefPtr const create = report.make.create();
    RefPtr const flagships = report.sum(
        report.make.list({ report.member("[Store].[All Stores].[Ireland].[Dublin].[O'Brien's Corner]"),
            report.member("[Store].[All Stores].[Japan].[東京].[銀座 Store 7]") }));
    add_formula(create, report.calculated("[Store].[Flagship Stores]"), flagships, {}, 1);
    RefPtr const rest = report.sum(report.make.list(
        { report.member("[Store].[All Stores].[Brazil]"), report.member("[Store].[All Stores].[Japan]") }));
    add_formula(create, report.calculated("[Store].[Rest of the World]"), rest, {}, 1);
    print("Calculated members on the server", *create);
}

// The countries, with two of them drilled down to their cities, and a calculated member after them. Members with
// low sales are filtered out. The filter comes last, so that it also applies to the calculated member.
RefPtr<MDXSet> opened_stores(Report & report)
{
    Hierarchy * const stores = report.cube.hierarchy("[Store]");
    RefPtr rows = report.make.set(report.cube.level("[Store].[Country]"));
    RefPtr const opened = report.make.list(
        { report.member("[Store].[All Stores].[Ireland]"), report.member("[Store].[All Stores].[Switzerland]") });
    rows->DrillDownOnSet(opened.get());

    rows->Hierarchize(false, stores, true, { report.cube.calculation("[Store].[Europe]") });

    take_filter(rows, value(report.member("[Measures].[Store Sales]")) >= 1000);
    return rows;
}

void filtered_report(Report & report)
{
    RefPtr const query = report.make.select();
    RefPtr const sales = report.member("[Measures].[Store Sales]");
    RefPtr const cost = report.member("[Measures].[Store Cost]");
    RefPtr const profit = report.calculated("[Measures].[Profit]");
    add_formula(
        query, profit, report.make.value(value(sales) - value(cost)), { { "FORMAT_STRING", "'#,##0.00'" } }, 2);

    RefPtr const countries = report.sum(report.make.list(
        { report.member("[Store].[All Stores].[Ireland]"), report.member("[Store].[All Stores].[Switzerland]") }));
    add_formula(query, report.calculated("[Store].[Europe]"), countries, {}, 1);

    RefPtr const measures = report.make.list({ report.member("[Measures].[Unit Sales]"), sales, profit });
    query->AddAxisSpecification(0, measures.get(), {}, MDXSelectQuery::NES_ALL);
    query->AddAxisSpecification(
        1, opened_stores(report).get(), { "[Store].[City].[Manager]" }, MDXSelectQuery::NES_NON_EMPTY);
    query->AddSlicerSpecification(report.member("[Time.Calendar].[2025].[Q1]").get());
    query->AddSlicerSpecification(report.member("[Product].[All Products].[Food].[Snacks ]]Salty[]").get());
    query->AddCellProperties({ "VALUE", "FORMATTED_VALUE" });
    print("Stores with sales of 1000 or more, two countries drilled down", *query);
    send(report, *query);
}

void ordered_cities(Report & report)
{
    RefPtr cities = report.make.set(report.cube.level("[Store].[City]"));
    cities->Order(Descending, report.make.tuple({ report.member("[Measures].[Store Sales]") }).get());

    RefPtr const query = report.make.select(report.make.list({ report.member("[Measures].[Store Sales]") }));
    query->AddAxisSpecification(1, cities.get(), {}, MDXSelectQuery::NES_NON_EMPTY);
    query->AddSlicerSpecification(report.member("[Time.Calendar].[2025]").get());
    print("Cities by the sales of a year", *query);
}

void best_products(Report & report)
{
    RefPtr products = report.make.set();
    products->TakeLeafNodes(report.cube.hierarchy("[Product]"));
    products->TakeExtremity(
        MDXSet::Top, MDXSet::Count, "10", report.make.tuple({ report.member("[Measures].[Unit Sales]") }).get());

    RefPtr const query = report.make.select(products);
    query->AddSlicerSpecification(report.member("[Measures].[Unit Sales]").get());
    query->AddSlicerSpecification(report.member("[Time.Calendar].[2025]").get());
    print("The ten best-selling products", *query);
}

void stores_by_quarter(Report & report)
{
    RefPtr const columns = report.make.list(
        { report.member("[Time.Calendar].[2025].[Q1]"), report.member("[Time.Calendar].[2025].[Q2]") });
    *columns *= *report.make.list(
        { report.member("[Measures].[Unit Sales]"), report.member("[Measures].[Customer Count]") });
    RefPtr const rows = report.make.list({ report.member("[Store].[All Stores].[Brazil].[São Paulo]"),
        report.member("[Store].[All Stores].[Japan].[東京]"),
        report.member("[Store].[All Stores].[Ireland].[Dublin].[O'Brien's Corner]") });
    *rows += *report.member("[Store].[All Stores].[Switzerland].[Zürich]");

    RefPtr const query = report.make.select(columns, rows);
    print("Two quarters side by side, for selected places", *query);
}

void around_a_month(Report & report)
{
    RefPtr const quarter = report.member("[Time.Calendar].[2025].[Q1].[January]");
    quarter->MoveToParent();
    RefPtr months = report.make.set();
    months->TakeChildren(quarter.get());
    RefPtr const previous = report.member("[Time.Calendar].[2025].[Q1]");
    previous->LoopLeft();
    *months += *previous;

    RefPtr const query = report.make.select(months);
    print("The months of a quarter, and the quarter before it", *query);
}

void named_set(Report & report)
{
    RefPtr const create = report.make.create();
    RefPtr const places = report.make.list(
        { report.member("[Store].[All Stores].[Ireland].[Dublin].[O'Brien's Corner]"),
            report.member("[Store].[All Stores].[Switzerland].[Zürich]") });
    create->AddSetFormula("[Flagship Places]", places.get());
    print("A named set on the server", *create);

    RefPtr const query = report.make.select(report.make.set("[Flagship Places]"));
    print("A statement that uses the named set", *query);

    RefPtr const drop = report.make.drop();
    drop->AddSetToDrop("[Flagship Places]");
    print("Dropping the named set", *drop);
}

void drop_members(Report & report)
{
    // One statement for each: a DROP joins several names with blanks, but some servers want commas.
    for (std::string const name : { "[Store].[Flagship Stores]", "[Store].[Rest of the World]" }) {
        RefPtr const drop = report.make.drop();
        drop->AddMemberToDrop(report.calculated(name.c_str())->getText());
        print(("Dropping " + name).c_str(), *drop);
    }
}

void refused_direction(Report & report)
{
    std::cout << "== An unknown direction ==\n";
    RefPtr cities = report.make.set(report.cube.level("[Store].[City]"));
    try {
        cities->Order(4, report.make.tuple({ report.member("[Measures].[Store Sales]") }).get());
    } catch (MDXError const & error) {
        std::cout << error.module() << " 0x" << std::hex << error.code() << std::dec << ": " << error.getText()
                  << "\nThe set is unchanged: " << cities->getText() << "\n";
    }
}

}

int main()
{
#if defined(_WIN32)
    _setmode(_fileno(stdout), _O_BINARY); // the same bytes on every system
#endif
    Report report;
    members_on_the_server(report);
    filtered_report(report);
    ordered_cities(report);
    best_products(report);
    stores_by_quarter(report);
    around_a_month(report);
    named_set(report);
    drop_members(report);
    refused_direction(report);
}
