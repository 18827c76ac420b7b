// Composes and prints the statements of a small sales report. Each function below shows one kind of statement.
#include "retail_cube.h"
#include <odbomodule/memory_cube.h>

#include <iostream>
#include <memory>
#include <vector>
#if defined(_WIN32)
#include <cstdio>
#include <fcntl.h>
#include <io.h>
#endif

using memory_cube::Condition;

namespace {

enum Direction : std::int32_t { Ascending = 0, Descending = 1 };
std::vector<KelpString> const kNone;

// What all statements share: the host's cube and a maker for it.
struct Report {
    memory_cube::Cube cube = retail_cube();
    memory_cube::Maker make{ cube };

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

// Writes the statement to the query log if this machine's settings ask for one. A host sends the statement to its
// server between timeQuery and logQuery.
void log_query(Report & report, MDXQuery const & query)
{
    MDXQueryLog * const log = report.make.generator().GetMDXQueryLog();
    if (log == nullptr) {
        std::cout << "The query log is off.\n\n";
        return;
    }
    MDXQueryLog::MDXQueryTimer * timer = nullptr;
    log->timeQuery(&timer);
    std::unique_ptr<MDXQueryLog::MDXQueryTimer> running(timer); // deletes the timer if the statement throws
    log->logQuery(&query, running.get());
    running.release(); // the log has deleted it
    std::cout << "The statement was written to the query log.\n\n";
}

void members_on_the_server(Report & report)
{
    RefPtr const create = report.make.create();
    RefPtr const flagships = report.sum(
        report.make.list({ report.member("[Store].[All Stores].[Ireland].[Dublin].[O'Brien's Corner]"),
            report.member("[Store].[All Stores].[Japan].[東京].[銀座 Store 7]") }));
    create->AddMemberFormula(
        report.calculated("[Store].[Flagship Stores]").get(), flagships.get(), 1, kNone, kNone);
    RefPtr const rest = report.sum(report.make.list(
        { report.member("[Store].[All Stores].[Brazil]"), report.member("[Store].[All Stores].[Japan]") }));
    create->AddMemberFormula(report.calculated("[Store].[Rest of the World]").get(), rest.get(), 1, kNone, kNone);
    print("Calculated members on the server", *create);
}

// The stores in the order of the cube, with two countries drilled down. Stores with low sales are filtered out, and
// a calculated member follows the others.
RefPtr<MDXSet> opened_stores(Report & report)
{
    memory_cube::Hierarchy * const stores = report.cube.hierarchy("[Store]");
    RefPtr rows = report.make.set(stores);
    RefPtr const opened = report.make.list(
        { report.member("[Store].[All Stores].[Ireland]"), report.member("[Store].[All Stores].[Switzerland]") });
    rows->DrillDownOnSet(opened.get());

    Condition enough = value(memory_cube::current()) >= 1000 && !is_null(memory_cube::current());
    rows->TakeFilter(enough.get(), report.make.tuple({ report.member("[Measures].[Store Sales]") }).get());

    rows->Hierarchize(false, stores, true, { report.cube.calculation("[Store].[Europe]") });
    return rows;
}

void filtered_report(Report & report)
{
    RefPtr const query = report.make.select();
    RefPtr const profit = report.calculated("[Measures].[Profit]");
    RefPtr margin = report.make.value("[Measures].[Store Sales] - [Measures].[Store Cost]");
    query->AddMemberFormula(profit.get(), margin.get(), 2, { "FORMAT_STRING" }, { "'#,##0.00'" });

    RefPtr const countries = report.sum(report.make.list(
        { report.member("[Store].[All Stores].[Ireland]"), report.member("[Store].[All Stores].[Switzerland]") }));
    query->AddMemberFormula(report.calculated("[Store].[Europe]").get(), countries.get(), 1, kNone, kNone);

    RefPtr const measures = report.make.list(
        { report.member("[Measures].[Unit Sales]"), report.member("[Measures].[Store Sales]"), profit });
    query->AddAxisSpecification(0, measures.get(), kNone, MDXSelectQuery::NES_ALL);
    query->AddAxisSpecification(
        1, opened_stores(report).get(), { "[Store].[City].[Manager]" }, MDXSelectQuery::NES_NON_EMPTY);
    query->AddSlicerSpecification(report.member("[Time.Calendar].[2025].[Q1]").get());
    query->AddSlicerSpecification(report.member("[Product].[All Products].[Food].[Snacks ]]Salty[]").get());
    query->AddCellProperties({ "VALUE", "FORMATTED_VALUE" });
    print("Stores with sales of 1000 or more, two countries drilled down", *query);
    log_query(report, *query);
}

void ordered_cities(Report & report)
{
    RefPtr cities = report.make.set(report.cube.level("[Store].[City]"));
    RefPtr const key = report.make.tuple(
        { report.member("[Measures].[Store Sales]"), report.member("[Time.Calendar].[2025]") });
    cities->Order(Descending, key.get());

    RefPtr const query = report.make.select();
    query->AddAxisSpecification(
        0, report.make.list({ report.member("[Measures].[Store Sales]") }).get(), kNone, MDXSelectQuery::NES_ALL);
    query->AddAxisSpecification(1, cities.get(), kNone, MDXSelectQuery::NES_NON_EMPTY);
    print("Cities by the sales of a year", *query);
}

void best_products(Report & report)
{
    RefPtr products = report.make.set();
    products->TakeLeafNodes(report.cube.hierarchy("[Product]"));
    products->TakeExtremity(
        MDXSet::Top, MDXSet::Count, "10", report.make.tuple({ report.member("[Measures].[Unit Sales]") }).get());

    RefPtr const query = report.make.select();
    query->AddAxisSpecification(0, products.get(), kNone, MDXSelectQuery::NES_ALL);
    query->AddSlicerSpecification(report.member("[Measures].[Unit Sales]").get());
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

    RefPtr const query = report.make.select();
    query->AddAxisSpecification(0, columns.get(), kNone, MDXSelectQuery::NES_ALL);
    query->AddAxisSpecification(1, rows.get(), kNone, MDXSelectQuery::NES_ALL);
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

    RefPtr const query = report.make.select();
    query->AddAxisSpecification(0, months.get(), kNone, MDXSelectQuery::NES_ALL);
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

    RefPtr const query = report.make.select();
    RefPtr rows = report.make.set("[Flagship Places]");
    query->AddAxisSpecification(0, rows.get(), kNone, MDXSelectQuery::NES_ALL);
    print("A statement that uses the named set", *query);

    RefPtr const drop = report.make.drop();
    drop->AddSetToDrop("[Flagship Places]");
    print("Dropping the named set", *drop);
}

void end_of_the_members(Report & report)
{
    RefPtr const drop = report.make.drop();
    for (char const * name : { "[Store].[Flagship Stores]", "[Store].[Rest of the World]" })
        drop->AddMemberToDrop(report.calculated(name)->getText());
    print("Dropping the calculated members", *drop);
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
    end_of_the_members(report);
    refused_direction(report);
}
