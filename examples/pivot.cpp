// The statements that a pivot table needs most. docs/cookbook.md explains how each is written.
#include <odbomodule/memory_cube.h>

#include <iostream>

using namespace memory_cube;
using namespace memory_cube::conditions;

enum Direction : std::int32_t { DescendingInParent = 1, Descending = 3 };

struct Pivot {
    Cube cube{ "[Sales]" };
    Hierarchy * stores = cube.add_hierarchy(cube.add_dimension("Store"));
    Level * countries = cube.add_level(stores, "Country");
    Level * cities = cube.add_level(stores, "City");
    Maker make{ cube };
    RefPtr<MDXField> sales = make.member("[Measures].[Store Sales]");
    RefPtr<MDXField> cost = make.member("[Measures].[Store Cost]");
    RefPtr<MDXField> units = make.member("[Measures].[Unit Sales]");
    RefPtr<MDXField> year = make.member("[Time].[Calendar].[2025]");
    RefPtr<MDXField> ireland = make.member("[Store].[Ireland]");
    RefPtr<MDXField> japan = make.member("[Store].[Japan]");
    RefPtr<MDXTuple> by_sales = make.tuple({ sales });

    RefPtr<MDXSelectQuery> of_year(RefPtr<MDXSet> const & columns, RefPtr<MDXSet> const & rows = {})
    {
        auto const query = make.select(columns, rows, MDXSelectQuery::NES_NON_EMPTY);
        query->AddSlicerSpecification(year.get());
        return query;
    }
    RefPtr<MDXValue> sum(RefPtr<MDXSet> const & set)
    {
        auto const value = make.value(0);
        value->TakeSum(set.get());
        return value;
    }
    // A real host sends the text to its server and reads the result.
    void run(char const * title, RefPtr<MDXQuery> const & query)
    {
        std::cout << "== " << title << " ==\n";
        logged(make.generator(), *query, [&](KelpString const &) { std::cout << query->getText(true) << "\n"; });
    }

    RefPtr<MDXSet> opened_countries()
    {
        auto const rows = make.set(countries);
        rows->DrillDownOnSet(make.list({ ireland, japan }).get());
        return rows;
    }

    void rows()
    {
        run("Crosstab", of_year(make.list({ units, sales }), opened_countries()));

        auto const best = make.set();
        best->TakeChildren(make.current(stores).get());
        best->TakeExtremity(MDXSet::Top, MDXSet::Count, "1", by_sales.get());
        auto const best_of_each = make.set();
        best_of_each->generate(make.set(countries)->getText(), best->getText());
        run("The best city of each country", of_year(make.list({ sales }), best_of_each));

        auto const chosen = make.set(cities);
        Condition const large = value(sales) >= 2000 || value(units) >= 500;
        take_filter(chosen, large && !is_empty(cost) && !between(value(sales) - value(cost), 0, 6000));
        run("Large cities with a loss or a high profit", of_year(make.list({ units, sales, cost }), chosen));

        auto const both = make.member("[Store].[Both]");
        auto const ordered = opened_countries();
        *ordered += *both; // the table already shows [Both] when the user sorts it
        ordered->StripCalculations(stores, false);
        ordered->Order(DescendingInParent, by_sales.get());
        *ordered += *both;
        auto const totals = of_year(make.list({ sales }), ordered);
        add_formula(totals, both, sum(make.list({ ireland, japan })));
        run("Ordered, with the calculated member at the end", totals);
    }

    void formulas()
    {
        auto const before = make.member("[Measures].[Year Before]"), growth = make.member("[Measures].[Growth]");
        auto const compared = of_year(make.list({ sales, before, growth }), make.set(countries));
        add_formula(
            compared, before, make.value(value(make.tuple({ sales, make.member("[Time].[Calendar].[2024]") }))));
        auto const growth_of = (value(sales) - value(before)) / value(before);
        add_formula(compared, growth, make.value(growth_of), { { "FORMAT_STRING", "'0.0%'" } });
        run("Year over year", compared);

        auto const ranked = make.set(countries);
        take_filter(ranked, !is_empty(sales));
        auto const position = make.set("[Ranked]");
        position->TakeRank(make.current(stores).get());
        auto const parent = make.current(stores);
        parent->MoveToParent();
        auto const rank = make.member("[Measures].[Rank]"), share = make.member("[Measures].[Share]");
        auto const ranks = of_year(make.list({ sales, rank, share }), ranked);
        ranks->AddSetFormula("[Ranked]", make.set(ranked)->Order(Descending, by_sales.get()));
        add_formula(ranks, rank, make.value(position->getText()));
        auto const share_of = value(sales) / value(make.tuple({ sales, parent }));
        add_formula(ranks, share, make.value(share_of), { { "FORMAT_STRING", "'0.0%'" } });
        run("Rank, and share of the parent", ranks);

        auto const ticked = make.member("[Product].[Ticked]");
        auto const sliced = of_year(make.list({ sales }), make.set(countries));
        add_formula(
            sliced, ticked, sum(make.list({ make.member("[Product].[Drink]"), make.member("[Product].[Food]") })));
        sliced->AddSlicerSpecification(ticked.get());
        run("Two members in the slicer", sliced);
    }

    void server()
    {
        auto const large_cities = make.set(cities);
        take_filter(large_cities, value(make.tuple({ sales, year })) >= 10000);
        auto const create = make.create();
        create->AddSetFormula("[Large Cities]", large_cities.get());
        run("A named set on the server", create);
        run("A statement that uses the named set", of_year(make.list({ sales }), make.set("[Large Cities]")));
        auto const drop = make.drop();
        drop->AddSetToDrop("[Large Cities]");
        run("Dropping the named set", drop);

        auto const cell = of_year(make.list({ sales }));
        cell->AddSlicerSpecification(make.member("[Store].[Japan].[大阪]").get());
        KelpString facts = u"DRILLTHROUGH MAXROWS 100 " + cell->getText(false);
        cell->setQuery(facts);
        run("Drill-through", cell);

        RefPtr const manager(make.generator().GenerateMemberProperty(cities->getUniqueName(), "Manager"));
        auto const managed = of_year(make.list({ sales }));
        managed->AddAxisSpecification(
            1, make.set(cities).get(), { manager->getText() }, MDXSelectQuery::NES_NON_EMPTY);
        managed->AddCellProperties({ "VALUE", "FORMATTED_VALUE" });
        run("Properties of members and cells", managed);
    }
};

int main()
{
    try {
        Pivot pivot;
        pivot.rows();
        pivot.formulas();
        pivot.server();
    } catch (MDXError const & error) {
        std::cerr << error.getText() << "\n";
        return 1;
    }
}
