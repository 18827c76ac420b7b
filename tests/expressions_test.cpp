#include "allocations.h"
#include "fixture.h"

#include <stdexcept>

// What docs/operations.md and docs/general_classes.md do not show of members, values, tuples and properties.

// The generator makes only dialect objects, whose constructors write other texts.
TEST(Expressions, HaveGeneralConstructors)
{
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

TEST(MDXField, CannotDelimitABlankText)
{
    for (char const * const blank : { "", "   " }) {
        RefPtr const field(new General<MDXField>(KelpString(blank)));
        EXPECT_THROW(field->Delimit(), std::out_of_range);
        EXPECT_EQ(blank, mdx_of(*field));
    }
}

TEST(MemberNames, DoubleOneCharacter)
{
    KelpString text("stale");
    quote_member_name(text, "'a]''");
    EXPECT_EQ("''a]''''", text.toUTF8());
    double_sqaure_brackets(text, text); // source and result may be one
    EXPECT_EQ("''a]]''''", text.toUTF8());
}

TEST(MDXValue, InsertsItsUnfinishedTextIfItIsItsOwnArgument)
{
    Fixture f;
    EXPECT_EQ("LINREGPOINT(LINREGPOINT(, {A}, W, LINREGPOINT(LINREGPOINT(, {A}, W,  ) ",
        mdx_of(*f.value->TakeLinRegPoint(f.value, f.set, f.weight, f.value)));
}

TEST(MDXTuple, WritesAndHoldsItsFields)
{
    Fixture f;
    RefPtr<MDXField> const quoted(f.makeField(" 'Q' "));
    EXPECT_EQ(f.empty, f.empty->AddField(quoted.get()));
    EXPECT_EQ(" 'Q' ", mdx_of(*f.empty));
    EXPECT_EQ(" ''Q'' ", f.empty->getQuotedText().toUTF8());
    static_cast<HostText<MDXField> &>(*quoted).fSays = "said";
    EXPECT_EQ("said", f.empty->getQuotedText().toUTF8());
    static_cast<HostText<MDXField> &>(*quoted).fSays = nullptr;
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

    EXPECT_EQ(kAllocationsFail, fails_at_allocation(1, [&] { f.single->AddField(f.second); }));
    EXPECT_EQ(kAllocationsFail ? 1 : 2, f.single->FieldCount());
    EXPECT_EQ(kAllocationsFail ? 3 : 4, count_of(*f.second));
}

TEST(Expressions, KeepTheirCountWhenAssignedAndReportTheAssignment)
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
    f.other->SetExpression("{it's}");
    RefPtr<MDXSet> const copy(new HostText<MDXSet>(static_cast<HostText<MDXSet> const &>(*f.other)));
    f.set->getQuotedText();
    *f.set = *f.other; // sets do not report it
    f.other->Empty();
    for (MDXSet * const set : { copy.get(), f.set })
        EXPECT_EQ("{it's} {it''s} 1", mdx_of(*set) + " " + set->getQuotedText().toUTF8() + " " + std::to_string(count_of(*set)));
    EXPECT_EQ(Strings{}, assertions.take());
}

TEST(Expressions, AreAssignedAsAWholeOrNotAtAll)
{
    Assertions assertions;
    KelpString const text = "'a text that is longer than its own room'";
    for (std::size_t nth = 1; nth <= 4; ++nth) {
        RefPtr const set(new General<MDXSet>(KelpString("{A}"))), other(new General<MDXSet>(text));
        EXPECT_NE(other->getQuotedText(), set->getQuotedText());
        fails_at_allocation(nth, [&] { *set = *other; });
        EXPECT_EQ(doubled_quotes(mdx_of(*set)), set->getQuotedText().toUTF8());
        MDXMemberProperty property("a", "b");
        fails_at_allocation(nth, [&] { property = MDXMemberProperty(text, text); });
        EXPECT_EQ(mdx_of(property) == "a.b", property.getPropertyUniqueName() == u"b");
    }
}
