#include "fixture.h"

#include "host/core_log.h"

#include <stdexcept>

namespace {

constexpr std::int32_t kLowest = INT32_MIN;
constexpr std::int32_t kHighest = INT32_MAX;

// The text of a general object that the constructor makes of these arguments.
template <class Object, class... Arguments>
std::string made(Arguments const &... arguments)
{
    Held<General<Object>> const object(new General<Object>(arguments...));
    EXPECT_EQ(1, count_of(*object));
    return object->getText().toUTF8();
}

template <class Object>
std::string text_of(Object const & object)
{
    return object.getText().toUTF8();
}

// A field that tells when it ends.
struct Watched final : MDXField {
    Watched(KelpString const & text, std::string & ended) : MDXField(text), fEnded(ended) {}
    ~Watched() override { fEnded += text_of(*this); }

    std::string & fEnded;
};

int gAssignments;

}

TEST(MDXField, Construction)
{
    Fixture f;
    memory_cube::Calculation const nested(
        nullptr, "[N]", "[Store].[Geo].[Japan]"); // its hierarchy is not asked for
    EXPECT_EQ(" any 'text' ", made<MDXField>(" any 'text' "));
    EXPECT_EQ("", made<MDXField>(""));
    EXPECT_EQ("[F]", made<MDXField>(f.field.get()));
    EXPECT_EQ("A.[B]", made<MDXField>("A", "B"));
    EXPECT_EQ("A.[x]y]", made<MDXField>("A", "x]y"));
    EXPECT_EQ(".[]", made<MDXField>("", ""));
    EXPECT_EQ("[Store].[Geo].[Japan]", made<MDXField>(&f.member));
    EXPECT_EQ("[Store].[Geo].[City].[[x] ]", made<MDXField>(&f.city, "[x] "));
    EXPECT_EQ("[Store].[Geo].[x]y]", made<MDXField>(&f.hierarchy, "x]y"));
    EXPECT_EQ("[Store].DEFAULTMEMBER", made<MDXField>(&f.dimension));
    EXPECT_EQ("[Store].[Geo].DEFAULTMEMBER", made<MDXField>(&f.hierarchy));
    EXPECT_EQ("[Store].[Geo].[x]y]", made<MDXField>(&f.calculation, "x]y"));
    EXPECT_EQ("[Store].[Geo].[Japan].[x]y]", made<MDXField>(&nested, "x]y"));
}

TEST(MDXField, KeepsNothingOfWhatItIsMadeFrom)
{
    auto member = std::make_unique<memory_cube::Member>("[M]");
    Held<General<MDXField>> const first(new General<MDXField>(member.get()));
    member.reset();
    Held<General<MDXField>> const second(new General<MDXField>(first.get()));
    first->MoveToParent();
    EXPECT_EQ("[M].PARENT", text_of(*first));
    EXPECT_EQ("[M]", text_of(*second));
    EXPECT_EQ(1, count_of(*first));
}

TEST(MDXField, Navigation)
{
    std::vector<FieldRow> const rows = {
        { "child", [](Fixture & f) { return f.field->MoveToChild("x]'y"); }, "[F].[x]'y]" },
        { "root node", [](Fixture & f) { return f.field->MoveToRootNode(&f.dimension, "x]y"); }, "[Store].[x]y]" },
        { "first child", [](Fixture & f) { return f.field->MoveToFirstChild(); }, "[F].FIRSTCHILD " },
        { "parent", [](Fixture & f) { return f.field->MoveToParent(); }, "[F].PARENT" },
        { "first sibling", [](Fixture & f) { return f.field->MoveToFirstSibling(); }, "[F].LEVEL.MEMBERS( 0 )" },
        { "last sibling", [](Fixture & f) { return f.field->MoveToLastSibling(); },
            "[F].LEVEL.MEMBERS( COUNT( [F].LEVEL.MEMBERS ) - 1 ) " },
        { "root", [](Fixture & f) { return f.field->MoveToRoot(nullptr); },
            "ANCESTOR( [F],[F].DIMENSION.LEVELS( 0 ) ) " },
        { "drill up", [](Fixture & f) { return f.field->DrillUp(nullptr); }, "{ [F].PARENT, [F] }.ITEM(0) " },
        { "current of a dimension", [](Fixture & f) { return f.field->TakeCurrentMember(&f.dimension); },
            "[Store].CURRENTMEMBER " },
        { "current of a hierarchy", [](Fixture & f) { return f.field->TakeCurrentMember(&f.hierarchy); },
            "[Store].[Geo].CURRENTMEMBER " },
        { "default", [](Fixture & f) { return f.field->TakeDefaultMember(&f.hierarchy); },
            "[Store].[Geo].DEFAULTMEMBER " },
        { "ancestor at the lowest", [](Fixture & f) { return f.field->TakeAncestorAtLevel(nullptr, kLowest); },
            " ANCESTOR( [F], [F].DIMENSION.LEVELS(-2147483648) ) " },
        { "ancestor at the highest", [](Fixture & f) { return f.field->TakeAncestorAtLevel(nullptr, kHighest); },
            " ANCESTOR( [F], [F].DIMENSION.LEVELS(2147483647) ) " },
        { "parent of a top calculation",
            [](Fixture & f) { return f.field->TakeParentOfCalculation(&f.calculation); }, "[Store].[Geo]" },
        { "name of a calculation", [](Fixture & f) { return f.field->TakeNameOfCalculation(&f.child); },
            "[Store].[Geo].[Japan].[South]" },
        { "loop left", [](Fixture & f) { return f.field->LoopLeft(); },
            " { [F].PREVMEMBER, ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ).ITEM( COUNT( ADDCALCULATEDMEMBERS( "
            "[F].LEVEL.MEMBERS ) ) - 1 ), [F] }.ITEM(0) " },
        { "loop right", [](Fixture & f) { return f.field->LoopRight(); },
            " { [F].NEXTMEMBER, EXCEPT( ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ), [F].LEVEL.MEMBERS ), "
            "[F].LEVEL.MEMBERS( 0 ), [F] }.ITEM(0)" },
        { "new name", [](Fixture & f) { return f.field->ReplaceName(" a'b] "); }, " a'b] " },
        { "chain", [](Fixture & f) { return f.field->MoveToFirstChild()->MoveToParent()->DrillUp(nullptr); },
            "{ [F].FIRSTCHILD .PARENT.PARENT, [F].FIRSTCHILD .PARENT }.ITEM(0) " },
    };
    check(rows);
    check(rows, true);
    std::vector<FieldRow> const general = {
        { "parent of a nested calculation", [](Fixture & f) { return f.field->TakeParentOfCalculation(&f.child); },
            "[Store].[Geo].[Japan]" },
    };
    check(general);
}

TEST(MDXField, Delimit)
{
    std::pair<char const *, char const *> const rows[] = { { "a'b", "[a'b]" }, { "  a b ", "[a b]" },
        { "\tabc", "[\tabc]" }, { "[a", "[[a]" }, { "abc]", "abc]" }, { "]", "]" }, { " [a].[b] ", " [a].[b] " } };
    Fixture f;
    for (auto const & [before, after] : rows) {
        Held<MDXField> const field = f.makeField(before);
        field->getQuotedText();
        for (int i = 0; i < 2; ++i) {
            field->Delimit();
            EXPECT_EQ(after, text_of(*field));
        }
        KelpString doubled;
        quote_member_name(doubled, after);
        EXPECT_EQ(doubled, field->getQuotedText());
    }
    for (char const * const blank : { "", "   " }) {
        Held<MDXField> const field = f.makeField(blank);
        EXPECT_THROW(field->Delimit(), std::out_of_range);
        EXPECT_EQ(blank, text_of(*field));
    }
}

TEST(MemberNames, DoubledCharacters)
{
    char const * const rows[][3] = { { "", "", "" }, { "a[b", "a[b", "a[b" }, { "''", "''''", "''" },
        { "]'x']", "]''x'']", "]]'x']]" } };
    for (auto const & [text, quoted, bracketed] : rows) {
        KelpString quotes("stale");
        KelpString brackets("stale");
        quote_member_name(quotes, text);
        double_sqaure_brackets(brackets, text);
        EXPECT_EQ(quoted, quotes.toUTF8());
        EXPECT_EQ(bracketed, brackets.toUTF8());
        quotes = brackets = text; // source and result may be one
        quote_member_name(quotes, quotes);
        double_sqaure_brackets(brackets, brackets);
        EXPECT_EQ(quoted, quotes.toUTF8());
        EXPECT_EQ(bracketed, brackets.toUTF8());
    }
}

TEST(MDXValue, Functions)
{
    std::vector<ValueRow> const rows = {
        { "count", [](Fixture & f) { return f.value->TakeCount(f.set.get()); }, "COUNT( {A} )" },
        { "unique name", [](Fixture & f) { return f.value->TakeUniqueName(f.field.get()); }, "[F].UNIQUENAME " },
        { "name", [](Fixture & f) { return f.value->TakeName(f.field.get()); }, "[F].NAME " },
        { "caption", [](Fixture & f) { return f.value->TakeCaption(f.field.get()); }, "[F].CAPTION " },
        { "description", [](Fixture & f) { return f.value->TakeDescription(f.field.get()); }, "[F].DESCRIPTION " },
        { "sum", [](Fixture & f) { return f.value->TakeSum(f.set.get()); }, "SUM( {A} )" },
        { "minimum", [](Fixture & f) { return f.value->TakeMin(f.set.get()); }, "MIN( {A} )" },
        { "maximum", [](Fixture & f) { return f.value->TakeMax(f.set.get()); }, "MAX( {A} )" },
        { "average", [](Fixture & f) { return f.value->TakeAverage(f.set.get()); }, "AVG( {A} )" },
        { "add", [](Fixture & f) { return f.value->Add(2); }, "2 + V" },
        { "add the lowest", [](Fixture & f) { return f.value->Add(kLowest); }, "-2147483648 + V" },
        { "reverse sign", [](Fixture & f) { return f.value->ReverseSign(); }, "- ( V ) " },
        { "property", [](Fixture & f) { return f.value->TakeProperty(f.field.get(), "Size '\""); },
            "[F].Properties(\"Size '\"\")" },
        { "equal to a text", [](Fixture & f) { return f.value->TakeEquality("'x'"); }, "V = 'x'" },
        { "equal to the lowest", [](Fixture & f) { return f.value->TakeEquality(kLowest); }, "V = -2147483648" },
        { "equal to the highest, twice",
            [](Fixture & f) { return f.value->TakeEquality(kHighest)->TakeEquality(-1); }, "V = 2147483647 = -1" },
    };
    check(rows);
    check(rows, true);
    std::vector<ValueRow> const general = {
        { "caption", [](Fixture & f) { return f.value->TakeProperty(f.field.get(), "Caption"); },
            "[F].Properties(\"Caption\")" },
    };
    check(general);
    EXPECT_EQ("-5", made<MDXValue>(-5));
    EXPECT_EQ("-2147483648", made<MDXValue>(kLowest));
    EXPECT_EQ("  '1'", made<MDXValue>("  '1'"));
}

TEST(MDXValue, Statistics)
{
    std::vector<ValueRow> const rows = {
        { "covariance",
            [](Fixture & f) { return f.value->TakeCovariance(&*f.set, &*f.weight, &*f.makeValue("X"), false); },
            "COVARIANCE({A}, W, X ) " },
        { "unbiased", [](Fixture & f) { return f.value->TakeCovariance(&*f.set, &*f.weight, nullptr, true); },
            "COVARIANCEN({A}, W ) " },
        { "variance", [](Fixture & f) { return f.value->TakeLinRegVariance(&*f.set, &*f.weight, nullptr); },
            "LINREGVARIANCE({A}, W ) " },
        { "r2", [](Fixture & f) { return f.value->TakeLinRegR2(&*f.set, &*f.weight, &*f.makeValue("X")); },
            "LINREGR2({A}, W, X ) " },
        { "slope", [](Fixture & f) { return f.value->TakeLinRegSlope(&*f.set, &*f.weight, nullptr); },
            "LINREGSLOPE({A}, W ) " },
        { "intercept", [](Fixture & f) { return f.value->TakeLinRegIntercept(&*f.set, &*f.weight, &*f.weight); },
            "LINREGINTERCEPT({A}, W, W ) " },
        { "correlation", [](Fixture & f) { return f.value->TakeCorrelation(&*f.set, &*f.weight, nullptr); },
            "CORRELATION({A}, W ) " },
        { "point",
            [](Fixture & f) { return f.value->TakeLinRegPoint(&*f.makeValue("P"), &*f.set, &*f.weight, nullptr); },
            "LINREGPOINT(P, {A}, W ) " },
        // A value that is its own argument reads what has been built so far.
        { "own first argument",
            [](Fixture & f) { return f.value->TakeCovariance(&*f.set, &*f.value, &*f.weight, true); },
            "COVARIANCEN({A}, COVARIANCEN({A}, , W ) " },
        { "own last argument", [](Fixture & f) { return f.value->TakeCorrelation(&*f.set, &*f.weight, &*f.value); },
            "CORRELATION({A}, W, CORRELATION({A}, W,  ) " },
        { "own point",
            [](Fixture & f) { return f.value->TakeLinRegPoint(&*f.value, &*f.set, &*f.weight, &*f.value); },
            "LINREGPOINT(LINREGPOINT(, {A}, W, LINREGPOINT(LINREGPOINT(, {A}, W,  ) " },
    };
    check(rows);
    check(rows, true);
}

TEST(MDXTuple, Text)
{
    Fixture f;
    for (bool const dialect : { false, true }) {
        Held<MDXTuple> const tuple(dialect ? f.generator->GenerateTuple() : new General<MDXTuple>);
        KelpString written;
        Raises const error{ MDX_ERR_EMPTY_TUPLE };
        expect_error(error, [&] { tuple->getText(); });
        expect_error(error, [&] { tuple->getQuotedText(); });
        expect_error(error, [&] { tuple->writeText(written); });
        EXPECT_EQ(0, tuple->FieldCount());

        Held<MDXField> const quoted = f.makeField(" 'Q' ");
        EXPECT_EQ(tuple.get(), tuple->AddField(quoted.get()));
        EXPECT_EQ(" 'Q' ", text_of(*tuple));
        EXPECT_EQ(" ''Q'' ", tuple->getQuotedText().toUTF8());
        tuple->AddField(f.second.get())->AddField(quoted.get());
        EXPECT_EQ("(  'Q' , [G],  'Q'  ) ", text_of(*tuple));
        EXPECT_EQ("(  ''Q'' , [G],  ''Q''  ) ", tuple->getQuotedText().toUTF8());
        EXPECT_EQ(3, tuple->FieldCount());
        EXPECT_EQ(3, count_of(*quoted));

        quoted->ReplaceName("N")->MoveToParent();
        tuple->writeText(written);
        EXPECT_EQ("( N.PARENT, [G], N.PARENT ) ", written.toUTF8());
        EXPECT_EQ("( N.PARENT, [G], N.PARENT ) ", tuple->getQuotedText().toUTF8());
    }
}

TEST(MDXTuple, HoldsItsFields)
{
    std::string ended;
    auto * const a = new Watched("a", ended);
    auto * const b = new Watched("b", ended);
    Held<General<MDXTuple>> first(new General<MDXTuple>);
    first->AddField(a)->AddField(b)->AddField(a);
    EXPECT_EQ(3, count_of(*a));
    Held<General<MDXTuple>> second(new General<MDXTuple>(*first));
    EXPECT_EQ(1, count_of(*second));
    EXPECT_EQ(5, count_of(*a));
    EXPECT_EQ(3, count_of(*b));
    MDXField::unuseVector({ a, b });
    first.reset();
    EXPECT_EQ("", ended);
    EXPECT_EQ("( a, b, a ) ", text_of(*second));
    second->use();
    MDXTuple::unuseVector({ second.get() });
    EXPECT_EQ(1, count_of(*second));
    second.reset();
    EXPECT_EQ("ba", ended); // a stands in the last place too
}

TEST(MDXMemberProperty, Text)
{
    struct Named final : MDXMemberProperty {
        using MDXMemberProperty::MDXMemberProperty;
        KelpString getText() const override { return "own"; }
    };
    struct Bracketed final : MDXMemberProperty {
        using MDXMemberProperty::MDXMemberProperty;
        KelpString getPropertyUniqueName() const override { return "[own]"; }
    };
    KelpString written;
    MDXMemberProperty const property(" [Store] ", "Size]");
    EXPECT_EQ(" [Store] .Size]", text_of(property));
    EXPECT_EQ("Size]", property.getPropertyUniqueName().toUTF8());
    Named("a", "b").writeText(written);
    EXPECT_EQ("own", written.toUTF8());
    EXPECT_EQ("a.b", text_of(Bracketed("a", "b")));
}

// Assignment is reported, then copies what the class adds, and leaves the count.
TEST(Expressions, Assignment)
{
    gAssignments = 0;
    auto const before = support_dll::setAssertionHandler([](char const * expression, char const *) {
        EXPECT_STREQ("! \"support::RefCount::operator=\"", expression);
        ++gAssignments;
    });
    Fixture f;
    std::int32_t const count = count_of(*f.field);
    f.field->getQuotedText();
    *f.field = *f.makeField("'n'");
    EXPECT_EQ("'n'", text_of(*f.field));
    EXPECT_EQ("''n''", f.field->getQuotedText().toUTF8());
    EXPECT_EQ(count, count_of(*f.field));
    EXPECT_EQ(1, gAssignments);
    *f.value = *f.weight;
    EXPECT_EQ("W", text_of(*f.value));
    MDXMemberProperty property("a", "b");
    property = MDXMemberProperty("c", "d");
    EXPECT_EQ("c.d", text_of(property));
    *f.empty = *f.tuple;
    EXPECT_EQ("( 'n', [G] ) ", text_of(*f.empty));
    EXPECT_EQ(count + 1, count_of(*f.field));
    *f.single = *f.empty;
    EXPECT_EQ("( 'n', [G] ) ", text_of(*f.single));
    EXPECT_EQ(count + 1, count_of(*f.field)); // one more for the new list, one less for the old
    EXPECT_EQ(5, gAssignments);
    *f.set = *f.other; // sets alone may be assigned
    EXPECT_EQ("{B}", text_of(*f.set));
    EXPECT_EQ(5, gAssignments);
    support_dll::setAssertionHandler(before);
}
