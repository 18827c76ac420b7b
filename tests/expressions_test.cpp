#include "fixture.h"

#include "host/core_log.h"

#include <stdexcept>

template <class Object>
static std::string text_of(Object const & object)
{
    return object.getText().toUTF8();
}

// What the dialect's classes replace; its factories show the constructors that they share.
TEST(Expressions, GeneralOnly)
{
    check(std::vector<FieldRow>{ { "parent of a nested calculation", CALL(f.field->TakeParentOfCalculation(&f.child)), "[Store].[Geo].[Japan]" } });
    check(std::vector<ValueRow>{ { "caption", CALL(f.value->TakeProperty(f.field.get(), "Caption")), "[F].Properties(\"Caption\")" } });
    Fixture f;
    memory_cube::Calculation const nested(nullptr, "[N]", "[Store].[Geo].[Japan]"); // its hierarchy is not asked for
    auto const made = [](auto const *... arguments) { return text_of(*Held<MDXField>(new General<MDXField>(arguments..., "x]y"))); };
    EXPECT_EQ("[Store].[Geo].[x]y]", made(&f.hierarchy));
    EXPECT_EQ("[Store].[Geo].[x]y]", made(&f.calculation));
    EXPECT_EQ("[Store].[Geo].[Japan].[x]y]", made(&nested));
    MDXMemberProperty const property(" [Store] ", "Size]");
    EXPECT_EQ(" [Store] .Size]", text_of(property));
    EXPECT_EQ("Size]", property.getPropertyUniqueName().toUTF8());
}

TEST(MDXField, Navigation)
{
    std::vector<FieldRow> const rows = {
        { "child", CALL(f.field->MoveToChild("x]'y")), "[F].[x]'y]" },
        { "root node", CALL(f.field->MoveToRootNode(&f.dimension, "x]y")), "[Store].[x]y]" },
        { "first child", CALL(f.field->MoveToFirstChild()), "[F].FIRSTCHILD " },
        { "parent", CALL(f.field->MoveToParent()), "[F].PARENT" },
        { "first sibling", CALL(f.field->MoveToFirstSibling()), "[F].LEVEL.MEMBERS( 0 )" },
        { "last sibling", CALL(f.field->MoveToLastSibling()), "[F].LEVEL.MEMBERS( COUNT( [F].LEVEL.MEMBERS ) - 1 ) " },
        { "root", CALL(f.field->MoveToRoot(nullptr)), "ANCESTOR( [F],[F].DIMENSION.LEVELS( 0 ) ) " },
        { "drill up", CALL(f.field->DrillUp(nullptr)), "{ [F].PARENT, [F] }.ITEM(0) " },
        { "current of a dimension", CALL(f.field->TakeCurrentMember(&f.dimension)), "[Store].CURRENTMEMBER " },
        { "current of a hierarchy", CALL(f.field->TakeCurrentMember(&f.hierarchy)), "[Store].[Geo].CURRENTMEMBER " },
        { "default", CALL(f.field->TakeDefaultMember(&f.hierarchy)), "[Store].[Geo].DEFAULTMEMBER " },
        { "lowest level", CALL(f.field->TakeAncestorAtLevel(nullptr, INT32_MIN)), " ANCESTOR( [F], [F].DIMENSION.LEVELS(-2147483648) ) " },
        { "parent of a top calculation", CALL(f.field->TakeParentOfCalculation(&f.calculation)), "[Store].[Geo]" },
        { "name of a calculation", CALL(f.field->TakeNameOfCalculation(&f.child)), "[Store].[Geo].[Japan].[South]" },
        { "loop left", CALL(f.field->LoopLeft()),
            " { [F].PREVMEMBER, ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ).ITEM( COUNT( ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 1 ), [F] }.ITEM(0) " },
        { "loop right", CALL(f.field->LoopRight()),
            " { [F].NEXTMEMBER, EXCEPT( ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ), [F].LEVEL.MEMBERS ), [F].LEVEL.MEMBERS( 0 ), [F] }.ITEM(0)" },
        { "new name, at the end of a chain", CALL(f.field->MoveToParent()->DrillUp(nullptr)->ReplaceName(" a'b] ")), " a'b] " },
    };
    check(rows);
    check(rows, true);
}

TEST(MDXField, Delimit)
{
    char const * const rows[][2] = { { "a'b", "[a'b]" }, { "  a b ", "[a b]" }, { "\tabc", "[\tabc]" }, { "[a", "[[a]" }, { "abc]", "abc]" }, { "]", "]" },
        { " [a].[b] ", " [a].[b] " } };
    Fixture f;
    for (auto const & [before, after] : rows) {
        Held<MDXField> const field = f.makeField(before);
        for (int i = 0; i < 2; ++i) {
            field->Delimit();
            EXPECT_EQ(after, text_of(*field));
        }
    }
    f.field->ReplaceName("a'b")->getQuotedText();
    f.field->Delimit();
    EXPECT_EQ("[a''b]", f.field->getQuotedText().toUTF8());
    for (char const * const blank : { "", "   " }) {
        f.field->ReplaceName(blank);
        EXPECT_THROW(f.field->Delimit(), std::out_of_range);
        EXPECT_EQ(blank, text_of(*f.field));
    }
}

TEST(MemberNames, DoubledCharacters)
{
    char const * const rows[][3] = { { "", "", "" }, { "a[b", "a[b", "a[b" }, { "''", "''''", "''" }, { "]'x']", "]''x'']", "]]'x']]" } };
    for (auto const & [text, quoted, bracketed] : rows) {
        KelpString quotes("stale");
        quote_member_name(quotes, text);
        EXPECT_EQ(quoted, quotes.toUTF8());
        KelpString brackets(text); // source and result may be one
        double_sqaure_brackets(brackets, brackets);
        EXPECT_EQ(bracketed, brackets.toUTF8());
    }
}

TEST(MDXValue, Functions)
{
    std::vector<ValueRow> const rows = {
        { "count", CALL(f.value->TakeCount(f.set.get())), "COUNT( {A} )" },
        { "unique name", CALL(f.value->TakeUniqueName(f.field.get())), "[F].UNIQUENAME " },
        { "name", CALL(f.value->TakeName(f.field.get())), "[F].NAME " },
        { "caption", CALL(f.value->TakeCaption(f.field.get())), "[F].CAPTION " },
        { "description", CALL(f.value->TakeDescription(f.field.get())), "[F].DESCRIPTION " },
        { "sum", CALL(f.value->TakeSum(f.set.get())), "SUM( {A} )" },
        { "minimum", CALL(f.value->TakeMin(f.set.get())), "MIN( {A} )" },
        { "maximum", CALL(f.value->TakeMax(f.set.get())), "MAX( {A} )" },
        { "average", CALL(f.value->TakeAverage(f.set.get())), "AVG( {A} )" },
        { "add", CALL(f.value->Add(INT32_MIN)), "-2147483648 + V" },
        { "reverse sign", CALL(f.value->ReverseSign()), "- ( V ) " },
        { "property", CALL(f.value->TakeProperty(f.field.get(), "Size '\"")), "[F].Properties(\"Size '\"\")" },
        { "equal to a text", CALL(f.value->TakeEquality("'x'")), "V = 'x'" },
        { "equal to a number, twice", CALL(f.value->TakeEquality(INT32_MAX)->TakeEquality(INT32_MIN)), "V = 2147483647 = -2147483648" },
        { "covariance", CALL(f.value->TakeCovariance(&*f.set, &*f.weight, &*f.makeValue("X"), false)), "COVARIANCE({A}, W, X ) " },
        { "unbiased", CALL(f.value->TakeCovariance(&*f.set, &*f.weight, nullptr, true)), "COVARIANCEN({A}, W ) " },
        { "variance", CALL(f.value->TakeLinRegVariance(&*f.set, &*f.weight, nullptr)), "LINREGVARIANCE({A}, W ) " },
        { "r2", CALL(f.value->TakeLinRegR2(&*f.set, &*f.weight, &*f.makeValue("X"))), "LINREGR2({A}, W, X ) " },
        { "slope", CALL(f.value->TakeLinRegSlope(&*f.set, &*f.weight, nullptr)), "LINREGSLOPE({A}, W ) " },
        { "intercept", CALL(f.value->TakeLinRegIntercept(&*f.set, &*f.weight, &*f.weight)), "LINREGINTERCEPT({A}, W, W ) " },
        { "correlation", CALL(f.value->TakeCorrelation(&*f.set, &*f.weight, nullptr)), "CORRELATION({A}, W ) " },
        { "point", CALL(f.value->TakeLinRegPoint(&*f.makeValue("P"), &*f.set, &*f.weight, nullptr)), "LINREGPOINT(P, {A}, W ) " },
        // A value that is its own argument reads what has been built so far.
        { "own first argument", CALL(f.value->TakeCovariance(&*f.set, &*f.value, &*f.weight, true)), "COVARIANCEN({A}, COVARIANCEN({A}, , W ) " },
        { "own last argument", CALL(f.value->TakeCorrelation(&*f.set, &*f.weight, &*f.value)), "CORRELATION({A}, W, CORRELATION({A}, W,  ) " },
        { "own point", CALL(f.value->TakeLinRegPoint(&*f.value, &*f.set, &*f.weight, &*f.value)), "LINREGPOINT(LINREGPOINT(, {A}, W, LINREGPOINT(LINREGPOINT(, {A}, W,  ) " },
    };
    check(rows);
    check(rows, true);
}

TEST(MDXTuple, Text)
{
    Fixture f;
    KelpString written;
    expect_error(Raises{ MDX_ERR_EMPTY_TUPLE }, [&] { f.empty->writeText(written); });
    expect_error(Raises{ MDX_ERR_EMPTY_TUPLE }, [&] { f.empty->getQuotedText(); });
    Held<MDXField> const quoted = f.makeField(" 'Q' ");
    EXPECT_EQ(f.empty.get(), f.empty->AddField(quoted.get()));
    EXPECT_EQ(" 'Q' ", text_of(*f.empty));
    EXPECT_EQ(" ''Q'' ", f.empty->getQuotedText().toUTF8());
    f.empty->AddField(f.second.get())->AddField(quoted.get());
    EXPECT_EQ("(  ''Q'' , [G],  ''Q''  ) ", f.empty->getQuotedText().toUTF8());
    EXPECT_EQ(3, f.empty->FieldCount());
    quoted->ReplaceName("N")->MoveToParent();
    f.empty->writeText(written);
    EXPECT_EQ("( N.PARENT, [G], N.PARENT ) ", written.toUTF8());
    EXPECT_EQ("( N.PARENT, [G], N.PARENT ) ", f.empty->getQuotedText().toUTF8());
}

TEST(MDXTuple, HoldsItsFields)
{
    Fixture f;
    Held<MDXField> const a = f.makeField("a");
    Held<MDXField> const b = f.makeField("b");
    Held<General<MDXTuple>> first(new General<MDXTuple>);
    first->AddField(a.get())->AddField(b.get())->AddField(a.get());
    Held<General<MDXTuple>> second(new General<MDXTuple>(*first));
    EXPECT_EQ(1, count_of(*second));
    EXPECT_EQ(5, count_of(*a));
    first.reset();
    EXPECT_EQ("( a, b, a ) ", text_of(*second));
    EXPECT_EQ(3, count_of(*a));
    MDXTuple::unuseVector({ second.release() });
    EXPECT_EQ(1, count_of(*a) * count_of(*b));
}

// Assignment is reported, then copies what the class adds, and leaves the count.
TEST(Expressions, Assignment)
{
    static int assignments;
    assignments = 0;
    auto const before = support_dll::setAssertionHandler([](char const * expression, char const *) {
        EXPECT_STREQ("! \"support::RefCount::operator=\"", expression);
        ++assignments;
    });
    Fixture f;
    std::int32_t const count = count_of(*f.field);
    f.field->getQuotedText();
    *f.field = *f.makeField("'n'");
    EXPECT_EQ("''n''", f.field->getQuotedText().toUTF8());
    *f.value = *f.weight;
    EXPECT_EQ("W", text_of(*f.value));
    MDXMemberProperty property("a", "b");
    property = MDXMemberProperty("c", "d");
    EXPECT_EQ("c.d", text_of(property));
    EXPECT_EQ(count, count_of(*f.field));
    *f.empty = *f.tuple;
    EXPECT_EQ(count + 1, count_of(*f.field));
    *f.single = *f.empty;
    EXPECT_EQ("( 'n', [G] ) ", text_of(*f.single));
    EXPECT_EQ(count + 1, count_of(*f.field)); // one more for the new list, one less for the old
    EXPECT_EQ(5, assignments);
    *f.set = *f.other; // sets alone may be assigned
    EXPECT_EQ("{B}", text_of(*f.set));
    EXPECT_EQ(5, assignments);
    support_dll::setAssertionHandler(before);
}
