#pragma once
#include <odbomodule/memory_cube.h>

#include <iostream>
#include <vector>

// The cube [Sales], with functions that make expressions on it and print statements. Expressions live as long as the
// cube, so that calls can be chained.
class Sales {
public:
    explicit Sales(bool flatHierarchyNames) : cube("[Sales]", flatHierarchyNames), fMake(cube) {}

    memory_cube::Cube cube;
    memory_cube::Dimension * const time = cube.add_dimension("Time");
    memory_cube::Hierarchy * const calendar = hierarchy(time, "Calendar", { "Year", "Quarter", "Month", "Day" });
    memory_cube::Hierarchy * const fiscal = hierarchy(time, "Fiscal", { "Fiscal Year", "Fiscal Half", "Fiscal Week" });
    memory_cube::Hierarchy * const stores = hierarchy(cube.add_dimension("Store"), "", { "(All)", "Country", "City", "Store Name" });
    memory_cube::Hierarchy * const products = hierarchy(
        cube.add_dimension("Product"), "", { "(All)", "Family", "Department", "Category", "Brand", "Product Name" });
    memory_cube::Calculation * const europe = cube.add_calculation(stores, "Europe");
    memory_cube::Calculation * const snacks = cube.add_calculation(products, "Snacks ]Salty[ and O'Brien's");

    MDXQueryGenerator & generator() { return fMake.generator(); }
    template <class... Arguments>
    MDXSet * set(Arguments const &... arguments)
    {
        return fSets.emplace_back(fMake.set(arguments...)).get();
    }
    MDXSet * list(std::vector<MDXField *> const & members) { return set(members); }
    template <class... Arguments>
    MDXField * member(Arguments const &... arguments)
    {
        return fMembers.emplace_back(fMake.member(arguments...)).get();
    }
    template <class Argument>
    MDXValue * value(Argument const & argument)
    {
        return fValues.emplace_back(fMake.value(argument)).get();
    }
    MDXTuple * tuple(std::vector<MDXField *> const & members)
    {
        MDXTuple * const tuple = fTuples.emplace_back(generator().GenerateTuple()).get();
        for (MDXField * const member : members)
            tuple->AddField(member);
        return tuple;
    }

    MDXField * sales() { return member("[Measures].[Store Sales]"); }
    MDXField * cost() { return member("[Measures].[Store Cost]"); }
    MDXTuple * bySales() { return tuple({ sales() }); }
    MDXField * ireland() { return member("[Store].[Ireland]"); }
    MDXField * cork() { return member("[Store].[Ireland].[Cork]"); }
    MDXField * dublin() { return member("[Store].[Ireland].[Dublin]"); }
    MDXField * market() { return member("[Store].[Ireland].[Cork].[English Market]"); }
    MDXField * japan() { return member("[Store].[Japan]"); }
    MDXField * norway() { return member("[Store].[Norway]"); }
    MDXField * period(char const * path) { return member(calendar->fUniqueName + KelpString(path)); }
    MDXSet * countries() { return set("[Store].[Country].MEMBERS"); }
    MDXSet * cities() { return set("[Store].[City].MEMBERS"); }
    MDXSet * families() { return set("[Product].[Family].MEMBERS"); }

    static void print(char const * title, MDXQuery const & query)
    {
        std::cout << "== " << title << " ==\n" << query.getText(false) << "\n";
    }
    RefPtr<MDXCreateQuery> create() const { return fMake.create(); }
    RefPtr<MDXDropQuery> drop() const { return fMake.drop(); }
    RefPtr<MDXSelectQuery> select() const { return fMake.select(); }
    RefPtr<MDXSelectQuery> select(MDXSet * columns, MDXSet * rows) const
    {
        RefPtr const query = select();
        query->AddAxisSpecification(0, columns, {}, MDXSelectQuery::NES_ALL);
        query->AddAxisSpecification(1, rows, {}, MDXSelectQuery::NES_ALL);
        return query;
    }
    // The sales of 2025 by rows.
    void rows(char const * title, MDXSet * set)
    {
        RefPtr const query = select(list({ sales() }), set);
        query->AddSlicerSpecification(period(".[2025]"));
        print(title, *query);
    }
    void row(char const * title, MDXField * member) { rows(title, list({ member })); }
    // The same with [Store].[Europe].
    void rows_with_europe(char const * title, MDXSet * set)
    {
        RefPtr const query = select(list({ sales() }), set);
        query->AddMemberFormula(member("[Store].[Europe]"), value("SUM( { [Store].[Ireland], [Store].[Switzerland] } )"), 1, {}, {});
        query->AddSlicerSpecification(period(".[2025]"));
        print(title, *query);
    }
    // The sales by periods.
    void periods(char const * title, MDXSet * set) { print(title, *select(list({ sales() }), set)); }
    // A value as a measure of 2025, by rows.
    void values(char const * title, MDXValue * value, MDXSet * set)
    {
        MDXField * const name = member("[Measures].[Value]");
        RefPtr const query = select(list({ name }), set);
        query->AddMemberFormula(name, value, -1, { "FORMAT_STRING" }, { "'0.####'" });
        query->AddSlicerSpecification(period(".[2025]"));
        print(title, *query);
    }
    void value_of_all(char const * title, MDXValue * value) { values(title, value, set("{ [Store].[All Stores] }")); }

private:
    memory_cube::Hierarchy * hierarchy(
        memory_cube::Dimension const * dimension, char const * name, std::vector<char const *> const & levels)
    {
        memory_cube::Hierarchy * const hierarchy = cube.add_hierarchy(dimension, name);
        for (char const * const level : levels)
            cube.add_level(hierarchy, level);
        return hierarchy;
    }

    memory_cube::Maker fMake;
    std::vector<RefPtr<MDXSet>> fSets;
    std::vector<RefPtr<MDXField>> fMembers;
    std::vector<RefPtr<MDXValue>> fValues;
    std::vector<RefPtr<MDXTuple>> fTuples;
};

// Print statements, one or more for each operation of the library, except those in NOT_NAMED of check.py.
void uses_of_sets(Sales & u);
void uses_of_conditions(Sales & u);
void uses_of_members_and_values(Sales & u);
void uses_of_statements(Sales & u);
