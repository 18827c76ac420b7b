#include "allocations.h"
#include "fixture.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <set>
#include <stdexcept>
#include <type_traits>

// Runs the rows of docs/operations.md and of README.md's table, which are taken from the documents when this is built: as they
// are, with objects that say another text than they hold, and with each call of the host and each allocation failing in turn.

thread_local std::function<void()> gAsked;

namespace {

using namespace BRIM_o;
using namespace memory_cube::conditions;
using memory_cube::Condition;
namespace conditions = memory_cube::conditions;

// The fixture with the names and texts of the documents.
struct Documented : Fixture {
    bool const fGeneralStatements;
    KelpString text = "c";
    Condition const a = mdx("a"), b = mdx("b"), c = mdx("c"), p = conditions::value(mdx("p"));
    Condition greater = a > b;
    AskedNode tree{ greater };
    RefPtr<MDXSelectQuery> const select = statement<MDXSelectQuery>(MDXQuery::QT_SELECT);
    RefPtr<MDXCreateQuery> const create = statement<MDXCreateQuery>(MDXQuery::QT_CREATE);
    RefPtr<MDXDropQuery> const drop = statement<MDXDropQuery>(MDXQuery::QT_DROP);

    explicit Documented(Classes classes, Texts const & texts = { "s", "t", "m", "n", "x", "v", "w" }, bool dialectStatements = false)
        : Fixture(classes, texts), fGeneralStatements(classes == kGeneral && !dialectStatements)
    {
        dimension.fName = "Store";
        dimension.fUniqueName = "[Store]";
        h.fName = "Geo";
        h.fUniqueName = "[Store].[Geo]";
        country.fUniqueName = "[Store].[Geo].[Country]";
        member.fUniqueName = "[Store].[Geo].[Japan]";
        calculation.fUniqueName = "[Store].[Geo].[North]";
        child.fUniqueName = "[Store].[Geo].[South]";
        child.fParentUniqueName = member.fUniqueName;
        h.fCalculations = { { 1, &calculation } };
        select->AddAxisSpecification(0, set, {}, MDXSelectQuery::NES_ALL);
    }
    template <class Statement>
    RefPtr<Statement> statement(MDXQuery::QueryType type) const
    {
        if (fGeneralStatements)
            return RefPtr<Statement>(new General<Statement>("[Sales]"));
        return RefPtr(static_cast<Statement *>(generator->GenerateQuery(type, nullptr)));
    }
};

// What a row says, done with the objects that it names.
#define WITH_NAMES(...)                                                                                                                    \
    [](Documented & f) {                                                                                                                   \
        [[maybe_unused]] auto const [generator, dimension, hierarchy, level, member, calculation, nested] = std::tuple(                    \
            f.generator.get(), &f.dimension, &f.h, &f.country, &f.member, &f.calculation, &f.child);                                       \
        [[maybe_unused]] auto const [s, t, m, n, x, v, w, k, pair, none] = std::tuple(                                                     \
            f.set, f.other, f.field, f.second, f.value, f.weight, f.third, f.single, f.tuple, f.empty);                                    \
        [[maybe_unused]] auto const [select, create, drop] = std::tuple(f.select.get(), f.create.get(), f.drop.get());                     \
        [[maybe_unused]] auto const & [a, b, c, p] = std::tie(f.a, f.b, f.c, f.p);                                                         \
        [[maybe_unused]] Expression * const tree = &f.tree;                                                                                \
        [[maybe_unused]] KelpString & text = f.text;                                                                                       \
        return __VA_ARGS__;                                                                                                                \
    }

template <class Object>
constexpr bool kHasOperations = std::is_same_v<Object, MDXSet *> || std::is_same_v<Object, MDXField *> ||
                                std::is_same_v<Object, MDXValue *>;

bool makes_an_object(std::string_view row)
{
    return row.find("generator->") != row.npos;
}

// All texts, counts and statements of the fixture.
std::string state_of(Documented & f)
{
    std::string state = f.state_without(nullptr);
    for (MDXQuery const * const query : std::initializer_list<MDXQuery const *>{ f.select.get(), f.create.get(), f.drop.get() })
        state += error_of([&] { state += mdx_of(*query) + "; "; });
    EXPECT_EQ(doubled_quotes(mdx_of(*f.set)), f.set->getQuotedText().toUTF8());
    EXPECT_EQ(doubled_quotes(mdx_of(*f.value)), f.value->getQuotedText().toUTF8());
    return state;
}

// Has each call of a host object fail in turn, then each allocation. A row leaves all as it was, unless it goes by steps, and does
// what it should when it is tried again.
void survives_faults(char const * row, Classes classes, std::function<void(Documented &)> const & run)
{
    auto const has = [row](char const * part) { return std::string_view(row).find(part) != std::string_view::npos; };
    bool const strips = has("Hierarchize(false, hierarchy"); // what it has done then would be done twice
    bool const leaves = classes == kGeneral && has("TakeLeafNodes");
    bool const statistics = has("TakeCovariance") || has("TakeCorrelation") || has("LinReg");
    bool const bySteps = strips || leaves || statistics || has("TakeTopLevel") || has("Extract");
    if (has(")->") || (has("), ") && !has(" Condition("))) // several operations
        return;
    Documented expected(classes);
    run(expected);
    std::string const after = state_of(expected);
    for (bool const memory : { false, true }) {
        bool failed = kAllocationsFail || !memory;
        for (std::size_t nth = 1; failed; ++nth) {
            Documented f(classes);
            std::string const before = state_of(f);
            gFailAt = memory ? nth : 0;
            gAsked = [memory, left = nth]() mutable { !memory && --left == 0 ? throw std::bad_alloc() : void(); };
            failed = false;
            try {
                run(f);
            } catch (std::bad_alloc const &) {
                failed = true;
            }
            gFailAt = 0;
            gAsked = nullptr;
            EXPECT_TRUE(!failed || bySteps || before == state_of(f)) << row;
            if (failed && !strips)
                run(f);
            EXPECT_TRUE((failed && strips) || after == state_of(f)) << row;
        }
    }
}

// The fixture with general objects that say what they should and hold something else, but for the one that a row works on.
template <class Own>
struct Masked : Documented {
    template <class Object>
    static constexpr bool kIsOwn = std::is_same_v<Own, Object *>;

    explicit Masked(bool dialectStatements = false)
        : Documented(kGeneral,
              { kIsOwn<MDXSet> ? "s" : "held", "held", kIsOwn<MDXField> ? "m" : "held", "held", kIsOwn<MDXValue> ? "x" : "held", "held",
                  "held" },
              dialectStatements)
    {
        says(set, kIsOwn<MDXSet> ? "said" : "s");
        says(other, "t");
        says(field, kIsOwn<MDXField> ? "said" : "m");
        says(second, "n");
        says(value, kIsOwn<MDXValue> ? "said" : "x");
        says(weight, "v");
        says(third, "w");
        if (!kIsOwn<MDXTuple>) {
            says(tuple, "( m, n ) ");
            says(single, "m");
            single->AddField(second);
            tuple->AddField(second);
        }
    }
    template <class Base>
    static void says(Base * object, char const * text)
    {
        static_cast<HostText<Base> *>(object)->fSays = text;
    }
};

// Does what a row says, and gives back what it has made.
template <class Result>
std::function<void(Documented &)> done(char const * row, std::function<Result(Documented &)> const & call)
{
    return [=](Documented & f) {
        auto const result = call(f);
        if constexpr (std::is_pointer_v<Result>)
            makes_an_object(row) ? result->unuse() : 0;
    };
}

// What a call gives as text: its own, or that of the object that it returns.
template <class Result>
std::string text_of(char const * row, Result result)
{
    if constexpr (std::is_same_v<Result, KelpString>)
        return result.toUTF8();
    else
        return makes_an_object(row) ? text_of_new(result) : mdx_of(*result);
}

// An operation, with the text that the dialect gives, and the general one where it differs.
template <class Result>
void expect_documented(char const * row, std::function<Result(Documented &)> const & call, char const * want, char const * generalWant)
{
    for (Classes const classes : { kDialect, kGeneral }) {
        Documented f(classes);
        std::string const text = classes == kGeneral && generalWant != nullptr ? generalWant : want;
        if constexpr (kHasOperations<Result>) {
            if (!makes_an_object(row))
                expect_operation<std::remove_pointer_t<Result>>(f, { row, [&](Fixture &) { return call(f); }, text });
        } else {
            EXPECT_EQ(text, text_of(row, call(f))) << row;
        }
        survives_faults(row, classes, done(row, call));
    }
    if (makes_an_object(row)) {
        Masked<void> f;
        EXPECT_EQ(want, text_of(row, call(f))) << row;
    } else {
        Masked<Result> f;
        EXPECT_EQ(generalWant != nullptr ? generalWant : want, text_of(row, call(f))) << row;
    }
}

template <class Call>
void operation(char const * row, Call const & call, char const * want, char const * generalWant = nullptr)
{
    expect_documented<std::invoke_result_t<Call, Documented &>>(row, call, want, generalWant);
}

// A value that is a text, which is kept.
Condition text_value(char16_t const * text, ExpressionType kind = ET_VALUE)
{
    static std::vector<std::shared_ptr<OLECHAR>> texts;
    VARIANT value{};
    value.vt = VT_BSTR;
    value.bstrVal = texts.emplace_back(SysAllocString(ole_characters(text)), SysFreeString).get();
    return Condition(value, kind);
}

// What is refused leaves all as it was; a row of several calls does so from the second on.
template <class Call>
void refusal(char const * row, Call const & call, MDXErrorCode code, std::string const & message)
{
    for (Classes const classes : { kDialect, kGeneral }) {
        Documented f(classes);
        std::string const before = state_of(f);
        std::uint32_t raised = 0;
        try {
            call(f);
        } catch (BRIM_o::AnyError const & error) {
            raised = error.code();
            std::u16string const told = format_text("%s %d %d: %s", error.module(), +error.level(), +error.status(), error.getText());
            EXPECT_EQ("ODBOMODULE 1 2: " + message, KelpString(told).toUTF8()) << row;
        }
        EXPECT_EQ(code, raised) << row;
        EXPECT_TRUE(std::string_view(row).find("), ") != std::string_view::npos || before == state_of(f)) << row;
    }
}

void refused_condition(
    char const * row, std::function<Condition(Documented &)> const & call, MDXErrorCode code, std::string const & message)
{
    refusal(
        row, [&](Documented & f) { f.set->TakeFilter(call(f).get(), f.single); }, code, message);
}

// What depends on the way that the generator spells hierarchies.
void spelling(char const * row, std::function<MDXField *(Documented &)> const & call, char const * uniqueNames, char const * flatNames)
{
    for (Classes const classes : { kDialect, kFlatDialect }) {
        Documented f(classes);
        EXPECT_EQ(classes == kDialect ? uniqueNames : flatNames, text_of(row, call(f))) << row;
        survives_faults(row, classes, done(row, call));
    }
}

// What is added to a statement, and its text then.
template <class Call>
void statement(
    char const * row, Call const & add, std::string const & want, std::string const & onSeveralLines, char const * generalWant = nullptr)
{
    auto const expect = [&](Documented & f, bool general) {
        add(f);
        std::string_view const words = std::string_view(row).substr(std::string_view(row).find(' ') + 1);
        MDXQuery const & query = words.starts_with("create") ? static_cast<MDXQuery const &>(*f.create)
                                 : words.starts_with("drop") ? static_cast<MDXQuery const &>(*f.drop)
                                                             : *f.select;
        bool const differs = general && generalWant != nullptr;
        EXPECT_EQ(differs ? generalWant : want, query.getText(false).toUTF8()) << row;
        EXPECT_TRUE(differs || onSeveralLines == query.getText(true).toUTF8()) << row;
    };
    for (Classes const classes : { kDialect, kGeneral }) {
        Documented f(classes);
        expect(f, classes == kGeneral);
        survives_faults(row, classes, add);
        if (std::string_view(row).find("v->") == std::string_view::npos) {
            Masked<void> masked(classes == kDialect);
            expect(masked, classes == kGeneral);
        }
    }
}

// A set whose server writes one node. What it writes for others is not taken. Every node comes by both hooks, once, with the tuple
// and without a text.
struct Writing final : MDXSet {
    Expression const * const fNode;
    MDXTuple const * const fTuple;
    std::set<Expression const *> fVisited;

    Writing(Expression const * node, MDXTuple const * tuple) : MDXSet(KelpString("s")), fNode(node), fTuple(tuple) {}
    void translate_condition(KelpString & text, Expression * expression, MDXTuple const * tuple) override
    {
        EXPECT_TRUE(fVisited.insert(expression).second);
        EXPECT_EQ(fTuple, tuple);
        EXPECT_TRUE(text.empty());
        MDXSet::translate_condition(text, expression, tuple);
    }
    bool server_translate(KelpString & text, Expression * expression, MDXTuple const * tuple) override
    {
        EXPECT_EQ(1u, fVisited.count(expression));
        EXPECT_EQ(fTuple, tuple);
        EXPECT_TRUE(text.empty());
        text = "the server's";
        return expression == fNode;
    }
};

std::set<std::int32_t> gKinds; // that were documented

// A node of a condition, its number, the least operands that it needs, and whether the server is asked about it, which then
// keeps the operands from being looked at.
void condition(char const * row, std::function<Condition(Documented &)> const & call, std::string const & want, std::string const & number,
    std::string const & operands, std::string const & asked)
{
    for (Classes const classes : { kDialect, kGeneral }) {
        Documented f(classes);
        Condition tree = call(f);
        AskedNode node(tree);
        auto const filter = [&node](Documented & each) { return each.set->Filter(&node, each.single); };
        expect_operation<MDXSet>(f, { row, [&](Fixture &) { return filter(f); }, want });
        Masked<MDXSet *> masked;
        EXPECT_EQ(want, mdx_of(*filter(masked))) << row;
        survives_faults(row, classes, filter);
        EXPECT_EQ(number, std::to_string(tree.getType())) << row;
        gKinds.insert(tree.getType());

        std::size_t const count = tree.getChildren().size();
        std::size_t const needed = operands == "none" ? 0 : operands == "all" ? 1 : static_cast<std::size_t>(operands[0] - '0');
        ASSERT_GE(count, needed) << row;
        if (needed > 0) {
            Condition few(tree.getType(), std::vector<Condition>(needed - 1, f.a));
            f.set->SetExpression("s");
            EXPECT_THROW(f.set->Filter(few.get(), f.single), std::out_of_range) << row;
            EXPECT_EQ("s", mdx_of(*f.set)) << row;
        }

        Condition test(ET_TUPLE_IS_NULL, { tree });
        bool const isTuple = tree.getType() == ET_TUPLE || tree.getType() == ET_CURRENT;
        EXPECT_EQ(isTuple ? "" : raises(MDX_ERR_BAD_EXPRESSION), error_of([&] { f.set->Filter(test.get(), f.single); })) << row;

        RefPtr<Writing>(new Writing(nullptr, f.single))->Filter(tree.get(), f.single);
        if (asked == "yes")
            tree = Condition(tree.getType(), std::vector<Condition>(count, Condition(ExpressionType{ 300 })));
        RefPtr<Writing> const set(new Writing(tree.get(), f.single));
        set->Filter(tree.get(), f.single);
        EXPECT_EQ(asked == "yes" ? "the server's" : want, mdx_of(*set)) << row;
    }
}

// A condition as a host writes it.
void written(char const * row, std::function<Condition(Documented &)> const & call, char const * want)
{
    Documented f(kDialect);
    Condition tree = call(f);
    Condition const copy(tree);
    tree = copy; // has operands of its own
    EXPECT_EQ(want, mdx_of(*f.set->Filter(tree.get(), f.single))) << row;
}

}

TEST(Operations, AreAsDocumented)
{
#include "documented_rows.h"
    // A number that is not documented is no kind.
    for (std::int32_t number = -1; number < 300; ++number) {
        if (gKinds.count(number) == 1)
            continue;
        Documented f(kDialect);
        Condition unknown(ExpressionType{ number }, { f.a, f.b });
        EXPECT_EQ(raises(MDX_ERR_BAD_EXPRESSION), error_of([&] { f.set->Filter(unknown.get(), f.single); })) << number;
    }
    EXPECT_EQ(40u, gKinds.size());
}
