#include "sales.h"

using memory_cube::Condition;
namespace mc = memory_cube::conditions;
using namespace BRIM_o; // the kinds of nodes

void uses_of_conditions(Sales & u)
{
    auto const keeps = [&](char const * title, Condition condition) {
        u.rows(title, u.cities()->TakeFilter(condition.get(), u.bySales()));
    };
    RefPtr const salesField = hold(u.sales());
    RefPtr const costField = hold(u.cost());
    Condition const sales = mc::value(mc::current());
    Condition const cost = mc::value(costField);
    Condition const units = mc::mdx("[Measures].[Unit Sales]");
    keeps("condition: between", mc::between(sales, 1000, 10000));
    keeps("condition: outside", mc::outside(sales, 1000, 10000));
    keeps("condition: = NULL, which holds for nothing here", mc::is_null(mc::current()));
    keeps("condition: NOT( = NULL ), which holds for all here", !mc::is_null(mc::current()));
    keeps("condition: not empty", !mc::is_empty(salesField));
    keeps("condition: an empty tuple", mc::is_empty(RefPtr(hold(u.tuple({ u.cost(), u.period(".[2024]") })))));
    keeps("condition: equal", units == 604);
    keeps("condition: not equal", units != 604);
    keeps("condition: not less, which keeps an empty cell here", !(sales < 2000));
    keeps("condition: less or equal", units <= 604);
    keeps("condition: greater or equal", units >= 604);
    keeps("condition: not", !(sales < 1000 || sales > 10000));
    keeps("condition: minus", -sales < -10000);
    keeps("condition: arithmetic", (sales - cost) / sales > 0.4);
    keeps("condition: sums and products", sales + cost * 2 > 35000);
    keeps("condition: ET_INTDIVIDE", Condition(ET_INTDIVIDE, { sales, 1000 }) > 9);
    keeps("condition: true", Condition(true));
    keeps("condition: false", Condition(false));
    keeps("condition: groups",
        Condition(ET_AND, { Condition(ET_GROUP_190, { sales < 1000 || sales > 10000 }), Condition(ET_GROUP_206, { cost < 10000 }) }));

    Condition const set = mc::current_set();
    Condition except(ET_EXCEPT, { set, Condition(ET_TOPCOUNT, { set, 8, sales }) });
    u.rows("Filter: except", u.cities()->Filter(except.get(), u.bySales()));
    Condition many = sales > 10000;
    u.values("Filter: a condition as a value",
        u.value(KelpString("IIF( ") + u.set()->Filter(many.get(), u.bySales())->getText() + u", 1, 0 )"), u.countries());
}
