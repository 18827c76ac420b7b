#include "statements.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace {

// Adds the calculated members and named sets of a SELECT or CREATE.
template <class Query>
void add_formulas(Composer & composer, Place const & place, Query & query)
{
    if (place.has("members")) {
        for (Place const & item : place.at("members").items()) {
            item.expect_keys({ "name", "value", "solveOrder", "properties" });
            std::vector<KelpString> names, values;
            if (item.has("properties")) {
                for (auto const & [name, value] : item.at("properties").entries()) {
                    names.push_back(name);
                    values.push_back(value.text());
                }
            }
            std::int32_t const solveOrder = item.has("solveOrder") ? item.at("solveOrder").number() : -1;
            query.AddMemberFormula(composer.make().calculated(composer.calculation(item.at("name"))).get(),
                composer.value(item.at("value")).get(), solveOrder, names, values);
        }
    }
    if (place.has("sets")) {
        for (Place const & item : place.at("sets").items()) {
            item.expect_keys({ "name", "from", "steps" });
            query.AddSetFormula(item.at("name").text(), composer.set(item).get());
        }
    }
}

RefPtr<MDXQuery> select(Composer & composer, Place const & place)
{
    place.expect_keys({ "title", "statement", "members", "sets", "axes", "slicer", "cellProperties" });
    RefPtr const query = composer.make().select();
    add_formulas(composer, place, *query);
    std::int32_t number = 0;
    for (Place const & axis : place.at("axes").items()) {
        axis.expect_keys({ "from", "steps", "nonEmpty", "properties" });
        bool const nonEmpty = axis.has("nonEmpty") && axis.at("nonEmpty").flag();
        query->AddAxisSpecification(number++, composer.set(axis).get(),
            axis.has("properties") ? axis.at("properties").texts() : std::vector<KelpString>(),
            nonEmpty ? MDXSelectQuery::NES_NON_EMPTY : MDXSelectQuery::NES_ALL);
    }
    if (place.has("slicer")) {
        for (RefPtr<MDXField> const & member : composer.members(place.at("slicer")))
            query->AddSlicerSpecification(member.get());
    }
    if (place.has("cellProperties"))
        query->AddCellProperties(place.at("cellProperties").texts());
    return query;
}

RefPtr<MDXQuery> create(Composer & composer, Place const & place)
{
    place.expect_keys({ "title", "statement", "members", "sets" });
    RefPtr const query = composer.make().create();
    add_formulas(composer, place, *query);
    return query;
}

RefPtr<MDXQuery> drop(Composer & composer, Place const & place)
{
    place.expect_keys({ "title", "statement", "members", "sets" });
    RefPtr const query = composer.make().drop();
    if (place.has("members")) {
        for (RefPtr<MDXField> const & member : composer.members(place.at("members")))
            query->AddMemberToDrop(member->getText());
    }
    if (place.has("sets")) {
        for (KelpString const & name : place.at("sets").texts())
            query->AddSetToDrop(name);
    }
    return query;
}

std::map<std::string, RefPtr<MDXQuery> (*)(Composer &, Place const &)> const kStatements = { { "create", create },
    { "drop", drop }, { "select", select } };

}

RefPtr<MDXQuery> make_statement(Composer & composer, Place const & report)
{
    return report.at("statement").find_in(kStatements)(composer, report);
}
