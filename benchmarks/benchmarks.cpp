#include "ratio_table.h"

#include <odbomodule/text.h>
#include <odbomodule/host/string_converters.h>
#include <odbomodule/memory_cube.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <deque>
#include <functional>
#include <initializer_list>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#if defined(__linux__)
#include <malloc.h>
#include <pthread.h>
#include <sched.h>
#endif

using namespace mdx_text;

using benchmark::DoNotOptimize;
using memory_cube::Condition;

namespace {

// The floor of anything that makes a text: allocate it and copy its pieces.
std::u16string copy_of(std::initializer_list<std::u16string_view> pieces)
{
    std::size_t size = 0;
    for (std::u16string_view const piece : pieces)
        size += piece.size();
    std::u16string text;
    text.reserve(size);
    for (std::u16string_view const piece : pieces)
        text.append(piece);
    return text;
}

std::shared_ptr<MDXQueryGenerator> generator()
{
    static std::shared_ptr<MDXQueryGenerator> const one(createMSOLAP7QueryGenerator("[Sales]", false));
    return one;
}

void add_joins()
{
    struct Size {
        std::size_t bytes;
        double bar;
    };
    for (Size const size :
        { Size{ 32, 1.3 }, Size{ 256, 1.3 }, Size{ 4096, 1.6 }, Size{ 65536, 1.3 }, Size{ 1 << 20, 1.3 } }) {
        KelpString const a(KelpString::Base(size.bytes / 2 / 2, u'a'));
        KelpString const b(KelpString::Base(size.bytes / 2 / 2, u'b'));
        RatioTable::add(
            "join, " + std::to_string(size.bytes) + " bytes", size.bar,
            [=] {
                DoNotOptimize(mdx<u"CROSSJOIN( $1, $2 )">({ a, b }));
            },
            [=] {
                DoNotOptimize(copy_of({ u"CROSSJOIN( ", a, u", ", b, u" )" }));
            });
    }
}

void add_chains()
{
    struct Chain {
        int wraps;
        double bar;
    };
    for (Chain const chain : { Chain{ 100, 1.0 }, Chain{ 1000, 0.8 }, Chain{ 10000, 0.85 } }) {
        RatioTable::add(
            "wraps in a chain, " + std::to_string(chain.wraps), chain.bar,
            [=] {
                RefPtr<MDXSet> const set(generator()->GenerateSet(KelpString("s")));
                KelpString condition("c");
                for (int i = 0; i < chain.wraps; ++i)
                    set->TakeFilter(condition);
                DoNotOptimize(set.get());
            },
            [=] {
                std::u16string text = u"s";
                for (int i = 0; i < chain.wraps; ++i)
                    text = copy_of({ u"FILTER( ", text, u", ", u"c", u")" });
                DoNotOptimize(text);
            });
    }
    struct Count {
        std::int32_t generations;
        double bar;
    };
    for (Count const count : { Count{ 50, 1.3 }, Count{ 100, 1.5 } }) {
        KelpString const member("[Store].[Geo].[Japan]");
        RefPtr<MDXSet> const finished(generator()->GenerateSet());
        finished->TakeAncestorsOfMember(member, true, count.generations);
        KelpString const text = finished->getText();
        RatioTable::add(
            "all ancestors, count " + std::to_string(count.generations), count.bar,
            [=] {
                RefPtr<MDXSet> const set(generator()->GenerateSet());
                set->TakeAncestorsOfMember(member, true, count.generations);
                DoNotOptimize(set.get());
            },
            [=] { DoNotOptimize(copy_of({ text })); });
    }
}

void add_selects()
{
    for (int const axes : { 2, 8, 64 }) {
        std::u16string const characters(512, u'x'); // 1 KiB
        RefPtr<MDXSelectQuery> const query(
            static_cast<MDXSelectQuery *>(generator()->GenerateQuery(MDXQuery::QT_SELECT, nullptr)));
        for (int axis = 0; axis < axes; ++axis) {
            RefPtr<MDXSet> const set(generator()->GenerateSet(KelpString(characters)));
            query->AddAxisSpecification(axis, set.get(), {}, MDXSelectQuery::NES_NON_EMPTY);
        }
        KelpString const text = query->getText(false);
        RatioTable::add(
            "SELECT of " + std::to_string(axes) + " axes of 1 KiB",
            axes == 2   ? 3
            : axes == 8 ? 5
                        : 4.5,
            [=] { DoNotOptimize(query->getText(false)); }, [=] { DoNotOptimize(copy_of({ text })); });
    }
}

void add_objects()
{
    RefPtr<MDXSet> const set(generator()->GenerateSet());
    auto const mutex = std::make_shared<std::unique_ptr<std::mutex>>(std::make_unique<std::mutex>());
    RatioTable::add(
        "use and unuse", 1.7,
        [=] {
            set->use();
            set->unuse();
        },
        [=] {
            std::mutex & held = **mutex;
            held.lock();
            DoNotOptimize(held);
            held.unlock();
            held.lock();
            DoNotOptimize(held);
            held.unlock();
        });
    KelpString const text("{[Store].[Geo].[Japan]}");
    RatioTable::add(
        "make and end one set", 1.4, [=] { generator()->GenerateSet(text)->unuse(); },
        [=] {
            auto const object = std::make_unique<std::array<char, sizeof(MDXSet)>>();
            auto const lock = std::make_unique<std::mutex>();
            DoNotOptimize(object.get());
            DoNotOptimize(lock.get());
            DoNotOptimize(copy_of({ text }));
        });
}

Condition leaf()
{
    return memory_cube::conditions::mdx("[Measures].[Sales] > 10");
}

Condition balanced(int count)
{
    return count <= 1 ? leaf() : balanced(count / 2) && balanced(count - count / 2);
}

Condition left_deep(int levels)
{
    return levels == 0 ? leaf() : left_deep(levels - 1) && leaf();
}

Condition right_deep(int levels)
{
    return levels == 0 ? leaf() : leaf() && right_deep(levels - 1);
}

// The floor of a translation: a walk that appends to one text.
void walk(std::u16string & text, BRIM_o::Expression * node)
{
    if (node->getType() != BRIM_o::ET_AND) {
        text += node->getString();
        return;
    }
    walk(text, node->getChildren()[0]);
    text += u" AND ";
    walk(text, node->getChildren()[1]);
}

void add_condition(std::string const & name, double bar, Condition condition,
    std::function<void(BRIM_o::Expression *)> const & floor)
{
    RefPtr<MDXSet> const set(generator()->GenerateSet());
    auto const tree = std::make_shared<Condition>(std::move(condition));
    RatioTable::add(
        name, bar, [=] { set->Filter(tree.get(), nullptr); }, [=] { floor(tree.get()); });
}

void add_conditions()
{
    auto const one_text = [](BRIM_o::Expression * top) {
        std::u16string text;
        walk(text, top);
        DoNotOptimize(text);
    };
    add_condition("condition, balanced, 1,000 nodes", 3.0, balanced(500), one_text);
    add_condition("condition, left-deep, 1,000", 2.0, left_deep(1000), one_text);
    add_condition("condition, left-deep, 10,000", 2.0, left_deep(10000), one_text);
    auto const copies = [](BRIM_o::Expression * top) {
        std::vector<BRIM_o::Expression *> path;
        for (; top->getType() == BRIM_o::ET_AND; top = top->getChildren()[1])
            path.push_back(top);
        std::u16string text = top->getString();
        for (auto node = path.rbegin(); node != path.rend(); ++node)
            text = copy_of({ (*node)->getChildren()[0]->getString(), u" AND ", text });
        DoNotOptimize(text);
    };
    add_condition("condition, right-deep, 1,000", 0.85, right_deep(1000), copies);
    add_condition("condition, right-deep, 10,000", 0.85, right_deep(10000), copies);
}

void add_small_work()
{
    for (int const every : { 0, 100 }) {
        KelpString source(KelpString::Base(1 << 19, u'x'));
        for (std::size_t i = 0; every > 0 && i < source.size(); i += static_cast<std::size_t>(every))
            source[i] = u'\'';
        RatioTable::add(
            every == 0 ? "quoting 1 MiB, no quote" : "quoting 1 MiB, 1 % quotes", every == 0 ? 4.5 : 8,
            [=] {
                KelpString quoted;
                quote_member_name(quoted, source);
                DoNotOptimize(quoted);
            },
            [=] { DoNotOptimize(copy_of({ source })); });
    }
    RatioTable::add(
        "number to text", 0.5, [] { DoNotOptimize(mdx<u"$1">({ decimal(-123456789) })); },
        [] {
            char digits[32];
            std::snprintf(digits, sizeof digits, "%d", -123456789);
            std::u16string text(digits, digits + std::char_traits<char>::length(digits));
            DoNotOptimize(text);
        });
    RatioTable::add(
        "real to text", 0.6,
        [] {
            KelpString text;
            StringConverters::convertRealToString(1234.5678, text, 10, 16, false);
            DoNotOptimize(text);
        },
        [] {
            char digits[32];
            std::snprintf(digits, sizeof digits, "%.16g", 1234.5678);
            std::u16string text(digits, digits + std::char_traits<char>::length(digits));
            DoNotOptimize(text);
        });
}

// What a host has at hand for a report: names from its model, texts that it composed before.
struct ReportTexts {
    KelpString measures = "[Measures]";
    KelpString rateName = "Profit Rate";
    KelpString rate = "[Measures].[Profit] / [Measures].[Sales]";
    std::vector<KelpString> propertyNames{ "FORMAT_STRING" };
    std::vector<KelpString> propertyValues{ "'0.00%'" };
    std::vector<KelpString> none;
    KelpString columns = "{[Measures].[Sales],[Measures].[Profit Rate]}";
    KelpString stores = "AddCalculatedMembers([Store].[Geo].members)";
    KelpString condition = "[Measures].[Sales] > 1000";
    KelpString sales = "[Measures].[Sales]";
    KelpString years = "{[Time].[Calendar].[2025],[Time].[Calendar].[2026]}";
    KelpString japan = "[Store].[Geo].[Japan]";
    KelpString ten = "10";
    KelpString product = "[Product].[All Products].[Drink]";
    KelpString customer = "[Customers].[All Customers].[USA]";
};

// A report's statement: two axes, a calculated member, a slicer of two; about 550 characters.
KelpString report_statement(ReportTexts & t)
{
    MDXQueryGenerator & g = *generator();
    RefPtr<MDXSelectQuery> const query(
        static_cast<MDXSelectQuery *>(g.GenerateQuery(MDXQuery::QT_SELECT, nullptr)));

    RefPtr<MDXField> const profit(g.GenerateField(t.measures, t.rateName));
    RefPtr<MDXValue> const rate(g.GenerateValue(t.rate));
    query->AddMemberFormula(profit.get(), rate.get(), 10, t.propertyNames, t.propertyValues);

    RefPtr<MDXSet> const measures(g.GenerateSet(t.columns));
    query->AddAxisSpecification(0, measures.get(), t.none, MDXSelectQuery::NES_ALL);

    RefPtr<MDXSet> const rows(g.GenerateSet(t.stores));
    RefPtr<MDXField> const sales(g.GenerateField(t.sales));
    RefPtr<MDXTuple> const key(g.GenerateTuple());
    key->AddField(sales.get());
    RefPtr<MDXSet> const years(g.GenerateSet(t.years));
    rows->DrillDownOnSet(t.japan);
    rows->TakeFilter(t.condition);
    *rows *= *years;
    rows->TakeExtremity(MDXSet::Top, MDXSet::Count, t.ten, key.get());
    query->AddAxisSpecification(1, rows.get(), t.none, MDXSelectQuery::NES_NON_EMPTY);

    RefPtr<MDXField> const product(g.GenerateField(t.product));
    RefPtr<MDXField> const customer(g.GenerateField(t.customer));
    query->AddSlicerSpecification(product.get());
    query->AddSlicerSpecification(customer.get());
    return query->getText(false);
}

// The same, glued by hand.
std::u16string report_by_hand()
{
    using S = std::u16string;
    S const cube = u"[Sales]";
    S const profit = S(u"[Measures]") + u".[" + u"Profit Rate" + u"]";
    S const rate = u"[Measures].[Profit] / [Measures].[Sales]";
    S const formula = S(u"MEMBER ") + profit + u" AS ' " + rate + u" ' " + u", SOLVE_ORDER = " + u"10" + u", " +
                      u"FORMAT_STRING" + u" = " + u"'0.00%'" + u" ";
    S const columns = S(u"{[Measures].[Sales],[Measures].[Profit Rate]}") + u" ON " + u"COLUMNS ";
    S rows = u"AddCalculatedMembers([Store].[Geo].members)";
    rows = S(u"DRILLDOWNMEMBER( ") + rows + u", {" + u"[Store].[Geo].[Japan]" + u"} ) ";
    rows = S(u"FILTER( ") + rows + u", " + u"[Measures].[Sales] > 1000" + u")";
    rows = S(u"CROSSJOIN( ") + rows + u", " + u"{[Time].[Calendar].[2025],[Time].[Calendar].[2026]}" + u" )";
    rows = S(u"TOP") + u"COUNT( " + rows + u", " + u"10" + u", " + u"[Measures].[Sales]" + u" ) ";
    rows = S(u"NON EMPTY ") + rows + u" ON " + u"ROWS ";
    S const slicer = S(u"( ") + u"[Product].[All Products].[Drink]" + u", " + u"[Customers].[All Customers].[USA]" +
                     u" ) ";
    return S(u"WITH ") + formula + u"SELECT " + columns + u", " + rows + u"FROM " + cube + u" " + u"WHERE " +
           slicer + u" ";
}

#if defined(__linux__)

// Notes how far down the stack the translation has come when it reaches the innermost leaf.
struct Probe final : BRIM_o::Expression {
    std::vector<BRIM_o::Expression *> none;
    char * lowest = nullptr;

    std::vector<BRIM_o::Expression *> const & getChildren() override { return none; }
    BRIM_o::ExpressionType getType() override
    {
        char here = 0;
        lowest = &here;
        DoNotOptimize(lowest);
        return BRIM_o::ET_UNDEFINED;
    }
    VARIANT const * getValue() override { return nullptr; }
    char16_t const * getString() override { return u""; }
};

struct Node final : BRIM_o::Expression {
    BRIM_o::ExpressionType fType;
    std::vector<BRIM_o::Expression *> fOperands;

    Node(BRIM_o::ExpressionType type, std::vector<BRIM_o::Expression *> operands)
        : fType(type), fOperands(std::move(operands))
    {}
    std::vector<BRIM_o::Expression *> const & getChildren() override { return fOperands; }
    BRIM_o::ExpressionType getType() override { return fType; }
    VARIANT const * getValue() override { return nullptr; }
    char16_t const * getString() override { return u""; }
};

// A tree of `levels` levels, in which each node is operand number `place` of the node above it.
struct DeepTree {
    char const * name;
    BRIM_o::ExpressionType type;
    std::size_t place;
    int levels = 4000;
    std::size_t stack = 1; // of the thread that translates the tree, in MiB
    double perLevel = 0;
};

void print_stack_use(DeepTree tree)
{
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, tree.stack << 20);
    pthread_t thread;
    auto const body = [](void * context) -> void * {
        DeepTree & deep = *static_cast<DeepTree *>(context);
        Probe probe;
        std::deque<Node> nodes;
        BRIM_o::Expression * top = &probe;
        for (int i = 0; i < deep.levels; ++i) {
            BRIM_o::Expression * const leaf = &nodes.emplace_back(
                BRIM_o::ET_UNDEFINED, std::vector<BRIM_o::Expression *>());
            std::vector<BRIM_o::Expression *> operands(3, leaf);
            operands[deep.place] = top;
            top = &nodes.emplace_back(deep.type, operands);
        }
        RefPtr<MDXSet> const set(generator()->GenerateSet());
        char here = 0;
        char * const start = &here;
        set->Filter(top, nullptr);
        deep.perLevel = static_cast<double>(start - probe.lowest) / deep.levels;
        return nullptr;
    };
    if (pthread_create(&thread, &attributes, body, &tree) != 0)
        std::abort();
    pthread_join(thread, nullptr);
    std::printf("%s, operand %zu: %.0f bytes a level, %d levels within %zu MiB\n", tree.name, tree.place + 1,
        tree.perLevel, tree.levels, tree.stack);
}

#endif

}

int main(int argc, char ** argv)
{
#if defined(__linux__)
    // Otherwise malloc calls the system for long texts, and timings of the same code vary by a factor of three.
    mallopt(M_MMAP_THRESHOLD, 1 << 30);
    mallopt(M_TRIM_THRESHOLD, 1 << 30);
    cpu_set_t processor;
    CPU_ZERO(&processor);
    CPU_SET(0, &processor);
    sched_setaffinity(0, sizeof processor, &processor);
#endif
    auto const texts = std::make_shared<ReportTexts>();
    std::string const statement = report_statement(*texts).toUTF8();
    if (report_statement(*texts) != KelpString(report_by_hand())) {
        std::printf(
            "the statements differ:\n%s\n%s\n", statement.c_str(), KelpString(report_by_hand()).toUTF8().c_str());
        return 1;
    }

    add_joins();
    add_chains();
    add_selects();
    add_objects();
    add_conditions();
    add_small_work();
    RatioTable::add(
        "a report's statement, " + std::to_string(statement.size()) + " characters", 1.7,
        [texts] { DoNotOptimize(report_statement(*texts)); }, [] { DoNotOptimize(report_by_hand()); });

    std::vector<char *> arguments(argv, argv + argc);
    std::string options[] = { "--benchmark_enable_random_interleaving=true", "--benchmark_repetitions=5",
        "--benchmark_min_time=0.02" };
    for (std::string & option : options)
        arguments.insert(arguments.begin() + 1, option.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    RatioTable table;
    benchmark::RunSpecifiedBenchmarks(&table);

#if defined(__linux__)
    // The text of a range doubles with each level of its first operand.
    for (DeepTree const & tree : std::initializer_list<DeepTree>{ { "AND", BRIM_o::ET_AND, 0 },
             { "AND", BRIM_o::ET_AND, 1 }, { "NOT", BRIM_o::ET_NOT, 0 }, { "ADD", BRIM_o::ET_ADD, 0 },
             { "ADD", BRIM_o::ET_ADD, 1 }, { "BETWEEN", BRIM_o::ET_BETWEEN, 0, 16 },
             { "BETWEEN", BRIM_o::ET_BETWEEN, 1 }, { "BETWEEN", BRIM_o::ET_BETWEEN, 2 },
             { "TUPLE", BRIM_o::ET_TUPLE, 0 }, { "TUPLE", BRIM_o::ET_TUPLE, 2 }, { "FILTER", BRIM_o::ET_FILTER, 0 },
             { "FILTER", BRIM_o::ET_FILTER, 2 }, { "AND", BRIM_o::ET_AND, 0, 30000, 8 },
             { "AND", BRIM_o::ET_AND, 1, 30000, 8 }, { "FILTER", BRIM_o::ET_FILTER, 2, 30000, 8 } })
        print_stack_use(tree);
#endif
    return 0;
}
