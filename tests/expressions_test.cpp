#include "tests/fixture.h"

#include <stdexcept>

// What the dialect's classes replace; its factories show the constructors that they share.
TEST(Expressions, GeneralOnly)
{
    expect_operations<MDXField, kGeneral>({ { CALL(f.field->TakeParentOfCalculation(&f.child)), "[H].[Japan]" } });
    expect_operations<MDXValue, kGeneral>({ { CALL(f.value->TakeProperty(f.field, "Caption")), "[F].Properties(\"Caption\")" } });
    Fixture f;
    memory_cube::Calculation const nested(nullptr, "[N]", "[H].[Japan]"); // its hierarchy is not asked for
    EXPECT_EQ("[H].[x]y]", text_of_new(new General<MDXField>(&f.h, "x]y")));
    EXPECT_EQ("[H].[x]y]", text_of_new(new General<MDXField>(&f.calculation, "x]y")));
    EXPECT_EQ("[H].[Japan].[x]y]", text_of_new(new General<MDXField>(&nested, "x]y")));
    EXPECT_EQ("{[H].allmembers}", text_of_new(new General<MDXSet>(&f.h)));
    MDXMemberProperty const property(" [D] ", "Size]");
    EXPECT_EQ(" [D] .Size]", mdx_of(property));
    EXPECT_EQ("Size]", property.getPropertyUniqueName().toUTF8());
}

TEST(MDXField, Operations)
{
    expect_operations<MDXField, kBoth>({
        { CALL(f.field->MoveToChild("x]'y")), "[F].[x]'y]" },
        { CALL(f.field->MoveToRootNode(&f.dimension, "x]y")), "[Dim].[x]y]" },
        { CALL(f.field->MoveToFirstChild()), "[F].FIRSTCHILD " },
        { CALL(f.field->MoveToParent()), "[F].PARENT" },
        { CALL(f.field->MoveToFirstSibling()), "[F].LEVEL.MEMBERS( 0 )" },
        { CALL(f.field->MoveToLastSibling()), "[F].LEVEL.MEMBERS( COUNT( [F].LEVEL.MEMBERS ) - 1 ) " },
        { CALL(f.field->MoveToRoot(nullptr)), "ANCESTOR( [F],[F].DIMENSION.LEVELS( 0 ) ) " },
        { CALL(f.field->DrillUp(nullptr)), "{ [F].PARENT, [F] }.ITEM(0) " },
        { CALL(f.field->TakeCurrentMember(&f.dimension)), "[Dim].CURRENTMEMBER " },
        { CALL(f.field->TakeCurrentMember(&f.h)), "[H].CURRENTMEMBER " },
        { CALL(f.field->TakeDefaultMember(&f.h)), "[H].DEFAULTMEMBER " },
        { CALL(f.field->TakeAncestorAtLevel(nullptr, INT32_MIN)), " ANCESTOR( [F], [F].DIMENSION.LEVELS(-2147483648) ) " },
        { CALL(f.field->TakeParentOfCalculation(&f.calculation)), "[H]" },
        { CALL(f.field->TakeNameOfCalculation(&f.child)), "[H].[Japan].[South]" },
        { CALL(f.field->LoopLeft()),
            " { [F].PREVMEMBER, ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ).ITEM( COUNT( ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 1 ), [F] }.ITEM(0) " },
        { CALL(f.field->LoopRight()),
            " { [F].NEXTMEMBER, EXCEPT( ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ), [F].LEVEL.MEMBERS ), [F].LEVEL.MEMBERS( 0 ), [F] }.ITEM(0)" },
        { CALL(f.field->ReplaceName(" a'b] ")), " a'b] " },
        { CALL(f.field->ReplaceName("a'b")->getQuotedText(), f.field->Delimit(), f.field->Delimit(), f.field), "[a'b]" },
        { CALL(f.field->ReplaceName("  a b ")->Delimit(), f.field), "[a b]" },
        { CALL(f.field->ReplaceName("\tabc")->Delimit(), f.field), "[\tabc]" },
        { CALL(f.field->ReplaceName("[a")->Delimit(), f.field), "[[a]" },
        { CALL(f.field->ReplaceName("]")->Delimit(), f.field), "]" },
        { CALL(f.field->ReplaceName(" [a].[b] ")->Delimit(), f.field), " [a].[b] " },
    });
    Fixture f;
    f.field->ReplaceName("   ");
    EXPECT_THROW(f.field->Delimit(), std::out_of_range);
    EXPECT_EQ("   ", mdx_of(*f.field));
}

TEST(MemberNames, DoubledCharacters)
{
    KelpString text("stale");
    quote_member_name(text, "'a]''");
    EXPECT_EQ("''a]''''", text.toUTF8());
    double_sqaure_brackets(text, text); // source and result may be one
    EXPECT_EQ("''a]]''''", text.toUTF8());
}

TEST(MDXValue, Operations)
{
    expect_operations<MDXValue, kBoth>({
        { CALL(f.value->TakeCount(f.set)), "COUNT( {A} )" },
        { CALL(f.value->TakeUniqueName(f.field)), "[F].UNIQUENAME " },
        { CALL(f.value->TakeName(f.field)), "[F].NAME " },
        { CALL(f.value->TakeCaption(f.field)), "[F].CAPTION " },
        { CALL(f.value->TakeDescription(f.field)), "[F].DESCRIPTION " },
        { CALL(f.value->TakeSum(f.set)), "SUM( {A} )" },
        { CALL(f.value->TakeMin(f.set)), "MIN( {A} )" },
        { CALL(f.value->TakeMax(f.set)), "MAX( {A} )" },
        { CALL(f.value->TakeAverage(f.set)), "AVG( {A} )" },
        { CALL(f.value->Add(INT32_MIN)), "-2147483648 + V" },
        { CALL(f.value->ReverseSign()), "- ( V ) " },
        { CALL(f.value->TakeProperty(f.field, "Size '\"")), "[F].Properties(\"Size '\"\")" },
        { CALL(f.value->TakeEquality("'x'")), "V = 'x'" },
        { CALL(f.value->TakeEquality(INT32_MAX)->TakeEquality(INT32_MIN)), "V = 2147483647 = -2147483648" },
        { CALL(f.value->TakeCovariance(f.set, f.weight, f.third, false)), "COVARIANCE({A}, W, X ) " },
        { CALL(f.value->TakeCovariance(f.set, f.weight, nullptr, true)), "COVARIANCEN({A}, W ) " },
        { CALL(f.value->TakeLinRegVariance(f.set, f.weight, f.third)), "LINREGVARIANCE({A}, W, X ) " },
        { CALL(f.value->TakeLinRegR2(f.set, f.weight, f.third)), "LINREGR2({A}, W, X ) " },
        { CALL(f.value->TakeLinRegSlope(f.set, f.weight, f.third)), "LINREGSLOPE({A}, W, X ) " },
        { CALL(f.value->TakeLinRegIntercept(f.set, f.weight, f.third)), "LINREGINTERCEPT({A}, W, X ) " },
        { CALL(f.value->TakeCorrelation(f.set, f.weight, nullptr)), "CORRELATION({A}, W ) " },
        { CALL(f.value->TakeLinRegPoint(f.third, f.set, f.weight, nullptr)), "LINREGPOINT(X, {A}, W ) " },
        // A value that is its own argument reads what has been built so far.
        { CALL(f.value->TakeCorrelation(f.set, f.value, f.value)),
            "CORRELATION({A}, CORRELATION({A}, , CORRELATION({A}, CORRELATION({A}, ,  ) " },
        { CALL(f.value->TakeLinRegPoint(f.value, f.set, f.weight, f.value)),
            "LINREGPOINT(LINREGPOINT(, {A}, W, LINREGPOINT(LINREGPOINT(, {A}, W,  ) " },
    });
}

TEST(MDXTuple, WritesAndHoldsItsFields)
{
    Fixture f;
    EXPECT_EQ(raises(MDX_ERR_EMPTY_TUPLE), error_of([&] { mdx_of(*f.empty); }));
    EXPECT_EQ(raises(MDX_ERR_EMPTY_TUPLE), error_of([&] { f.empty->getQuotedText(); }));
    RefPtr<MDXField> const quoted(f.makeField(" 'Q' "));
    EXPECT_EQ(f.empty, f.empty->AddField(quoted.get()));
    EXPECT_EQ(" 'Q' ", mdx_of(*f.empty));
    EXPECT_EQ(" ''Q'' ", f.empty->getQuotedText().toUTF8());
    f.empty->AddField(f.second)->AddField(quoted.get());
    EXPECT_EQ("(  ''Q'' , [G],  ''Q''  ) ", f.empty->getQuotedText().toUTF8());
    quoted->ReplaceName("N")->MoveToParent();
    EXPECT_EQ("( N.PARENT, [G], N.PARENT ) ", mdx_of(*f.empty));
    EXPECT_EQ("( N.PARENT, [G], N.PARENT ) ", f.empty->getQuotedText().toUTF8());
    EXPECT_EQ(3, f.empty->FieldCount());

    auto * const copied = new General<MDXTuple>;
    copied->AddField(quoted.get())->AddField(f.second);
    auto * const copy = new General<MDXTuple>(*copied);
    EXPECT_EQ(1, count_of(*copy));
    EXPECT_EQ(5, count_of(*quoted));
    copied->unuse();
    EXPECT_EQ("( N.PARENT, [G] ) ", mdx_of(*copy));
    MDXTuple::unuseVector({ copy });
    EXPECT_EQ(3, count_of(*quoted));
}

// Assignment is reported, then copies what the class adds, and leaves the count.
TEST(Expressions, Assignment)
{
    Assertions assertions;
    Fixture f;
    std::int32_t const count = count_of(*f.field);
    f.field->getQuotedText();
    *f.field = *RefPtr<MDXField>(f.makeField("'n'"));
    EXPECT_EQ("''n''", f.field->getQuotedText().toUTF8());
    *f.value = *f.weight;
    EXPECT_EQ("W", mdx_of(*f.value));
    MDXMemberProperty property("a", "b");
    property = MDXMemberProperty("c", "d");
    EXPECT_EQ("c.d", mdx_of(property));
    *f.empty = *f.tuple;
    EXPECT_EQ(count + 1, count_of(*f.field));
    *f.single = *f.empty;
    EXPECT_EQ("( 'n', [G] ) ", mdx_of(*f.single));
    EXPECT_EQ(count + 1, count_of(*f.field)); // one more for the new list, one less for the old
    EXPECT_EQ(Strings(5, "! \"support::RefCount::operator=\" in .\\source\\refcount"), assertions.take());
    *f.set = *f.other; // sets alone may be assigned
    EXPECT_EQ("{B}", mdx_of(*f.set));
    EXPECT_EQ(Strings{}, assertions.take());
}
