#include "sales.h"

namespace {

void statements(Sales & u)
{
    RefPtr const pages = u.select(u.list({ u.sales() }), u.list({ u.ireland(), u.norway() }));
    pages->AddAxisSpecification(2, u.families(), {}, MDXSelectQuery::NES_ALL);
    u.print("SELECT: three axes", *pages);

    RefPtr const query = u.select();
    RefPtr const manager(u.generator().GenerateMemberProperty("[Store].[City]", "Manager"));
    query->AddAxisSpecification(0, u.list({ u.sales(), u.cost() }), {}, MDXSelectQuery::NES_ALL);
    query->AddAxisSpecification(1, u.cities(), { manager->getText() }, MDXSelectQuery::NES_NON_EMPTY);
    query->AddSlicerSpecification(u.period(".[2025]"));
    query->AddSlicerSpecification(u.member("[Product].[Food]"));
    query->AddCellProperty("VALUE");
    query->AddCellProperties({ "FORMATTED_VALUE" });
    u.print("SELECT: properties, a slicer of two members", *query);

    RefPtr const raw = u.select();
    KelpString text = "SELECT { [Measures].[Unit Sales] } ON COLUMNS FROM [Sales]";
    raw->setQuery(text);
    u.print("SELECT: setQuery", *raw);

    RefPtr const named = u.select(u.list({ u.sales() }), u.set("[Best]"));
    named->AddSetFormula("[Best]", u.cities()->TakeExtremity(MDXSet::Top, MDXSet::Count, "3", u.bySales()));
    named->AddSlicerSpecification(u.period(".[2025]"));
    u.print("SELECT: a named set sees the slicer", *named);

    u.periods("SELECT: a calculated member of the server", u.set()->TakeChildren(u.period(".[2025]"))->AddCalculations());
    RefPtr const perCustomer = u.select(u.list({ u.member("[Measures].[Profit per Customer]") }), u.countries());
    u.print("SELECT: a calculated measure of the server", *perCustomer);

    RefPtr const twice = u.select(u.list({ u.sales() }), u.families());
    twice->AddSlicerSpecification(u.ireland());
    twice->AddSlicerSpecification(u.japan());
    u.print("SELECT: a slicer of two members of one hierarchy", *twice);

    u.row("SELECT: a slicer of a hierarchy that is on an axis", u.period(".[2024]"));
    RefPtr const managers = u.select();
    managers->AddAxisSpecification(0, u.list({ u.sales() }), {}, MDXSelectQuery::NES_ALL);
    managers->AddAxisSpecification(1, u.list({ u.ireland(), u.cork() }), { manager->getText() }, MDXSelectQuery::NES_ALL);
    u.print("SELECT: a property above its level", *managers);

    for (std::int32_t const ratioOrder : { 0, 2 }) {
        MDXField * const margin = u.member("[Measures].[Cost Ratio]");
        MDXField * const europe = u.member("[Store].[Europe]");
        RefPtr const solved = u.select(u.list({ margin }), u.list({ u.ireland(), u.member("[Store].[Switzerland]"), europe }));
        solved->AddMemberFormula(
            margin, u.value("[Measures].[Store Cost] / [Measures].[Store Sales]"), ratioOrder, { "FORMAT_STRING" }, { "'0.00 %'" });
        solved->AddMemberFormula(europe, u.value("[Store].[Ireland] + [Store].[Switzerland]"), 1, {}, {});
        solved->AddSlicerSpecification(u.period(".[2025]"));
        u.print(ratioOrder == 0 ? "SELECT: a sum of ratios" : "SELECT: a ratio of sums", *solved);
    }
}

void kept_on_the_server(Sales & u)
{
    RefPtr const create = u.create();
    create->AddMemberFormula(u.member("[Store].[Islands]"), u.value("[Store].[Ireland] + [Store].[Japan]"), 1, {}, {});
    create->AddSetFormula("[Far]", u.list({ u.japan(), u.member("[Store].[USA]") }));
    u.print("CREATE", *create);

    u.rows("CREATE: a set and a member that were made", *u.set("[Far]") += *u.member("[Store].[Islands]"));

    RefPtr const member = u.drop();
    member->AddMemberToDrop("[Store].[Islands]");
    u.print("DROP: a member", *member);
    RefPtr const set = u.drop();
    set->AddSetToDrop("[Far]");
    u.print("DROP: a set", *set);

    RefPtr const raw = u.create();
    raw->AddRawMemberFormula("CREATE MEMBER [Sales].[Store].[Pair] AS ' [Store].[Ireland] + [Store].[Norway] '");
    u.print("CREATE: AddRawMemberFormula", *raw);
    u.row("CREATE: a member from a text", u.member("[Store].[Pair]"));
}

}

void uses_of_statements(Sales & u)
{
    statements(u);
    kept_on_the_server(u);
}
