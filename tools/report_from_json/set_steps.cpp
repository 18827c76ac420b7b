#include "steps.h"

#include <cstdint>
#include <string>

namespace {

std::map<std::string, std::int32_t> const kDirections = { { "ascending", 0 }, { "descending", 1 },
    { "ascending in all", 2 }, { "descending in all", 3 } };
std::map<std::string, MDXSet::ExtremityType> const kExtremes = { { "Top", MDXSet::Top },
    { "Bottom", MDXSet::Bottom } };
std::map<std::string, MDXSet::ExtremityMeasure> const kMeasures = { { "Sum", MDXSet::Sum },
    { "Count", MDXSet::Count }, { "Percent", MDXSet::Percent } };

// About the length of the text of a condition. The kinds that test for a range write their first operand twice.
double length_of(BRIM_o::Expression & node, double currentTuple, double currentSet)
{
    BRIM_o::ExpressionType const type = node.getType();
    if (type == BRIM_o::ET_CURRENT)
        return currentTuple;
    if (type == BRIM_o::ET_CURRENTSET)
        return currentSet;
    double length = 1 + static_cast<double>(std::char_traits<char16_t>::length(node.getString()));
    bool writesTwice = type == BRIM_o::ET_BETWEEN || type == BRIM_o::ET_OUTSIDE;
    for (BRIM_o::Expression * const operand : node.getChildren()) {
        length += (writesTwice ? 2 : 1) * length_of(*operand, currentTuple, currentSet);
        writesTwice = false; // only the first operand
    }
    return length;
}

void take_filter(MDXSet & set, Arguments const & arguments)
{
    memory_cube::Condition const condition = arguments.condition(0);
    RefPtr const tuple = arguments.tuple_or_null(1);
    BRIM_o::Expression & tree = *condition.get(tuple); // throws if the condition needs a tuple and none is given
    double const tupleLength = tuple ? static_cast<double>(tuple->getText().size()) : 0;
    double const length = length_of(tree, tupleLength, static_cast<double>(set.getText().size()));
    arguments.composer().expect_room(length, arguments[0]);
    set.TakeFilter(&tree, tuple.get());
}

}

using A = Arguments const;

// clang-format off
Steps<MDXSet> const kSetSteps = {
    { "*=", { 1, 1, [](MDXSet & s, A & a) { s *= *a.set(0); } } },
    { "+=", { 1, 1, [](MDXSet & s, A & a) { s += *a.set(0); } } },
    { "-=", { 1, 1, [](MDXSet & s, A & a) { s -= *a.set(0); } } },
    { "AddCalculations", { 0, 0, [](MDXSet & s, A &) { s.AddCalculations(); } } },
    { "AddField", { 1, 1, [](MDXSet & s, A & a) { s.AddField(*a.member(0), true); } } },
    { "Delimit", { 0, 0, [](MDXSet & s, A &) { s.Delimit(); } } },
    { "DrillDownOnSet", { 1, 1, [](MDXSet & s, A & a) { s.DrillDownOnSet(a.set(0).get()); } } },
    { "DrillUpOnSet", { 1, 1, [](MDXSet & s, A & a) { s.DrillUpOnSet(a.set(0).get()); } } },
    { "Empty", { 0, 0, [](MDXSet & s, A &) { s.Empty(); } } },
    { "Extract", { 2, 2, [](MDXSet & s, A & a) { s.Extract(a.set(0)->getText(), a.hierarchy(1)); } } },
    { "Hierarchize", { 0, 2, [](MDXSet & s, A & a) {
        s.Hierarchize(false, a.has(0) ? a.hierarchy(0) : nullptr, a.has(0), a.calculations(1)); } } },
    { "Intersect", { 1, 1, [](MDXSet & s, A & a) { s.Intersect(a.set(0).get()); } } },
    { "Invert", { 1, 1, [](MDXSet & s, A & a) { s.Invert(a.hierarchy(0)); } } },
    { "Order", { 2, 2, [](MDXSet & s, A & a) { s.Order(a[0].find_in(kDirections), a.tuple(1).get()); } } },
    { "OrderByValue", { 2, 2, [](MDXSet & s, A & a) { s.Order(a[0].find_in(kDirections), a.value(1).get()); } } },
    { "SetExpression", { 1, 1, [](MDXSet & s, A & a) { s.SetExpression(a.text(0)); } } },
    { "SpecifyDistinct", { 0, 0, [](MDXSet & s, A &) { s.SpecifyDistinct(); } } },
    { "StripCalculations", { 1, 2, [](MDXSet & s, A & a) { s.StripCalculations(a.hierarchy(0), a.flag(1)); } } },
    { "TakeAllMembers", { 1, 1, [](MDXSet & s, A & a) { s.TakeAllMembers(a.hierarchy(0)); } } },
    { "TakeAncestorsOfMember", { 2, 3, [](MDXSet & s, A & a) {
        KelpString const member = a.member(0)->getText();
        s.TakeAncestorsOfMember(member, a.flag(2), a.levels(1, member, a.flag(2))); } } },
    { "TakeAncestorsOfSet", { 3, 5, [](MDXSet & s, A & a) {
        KelpString const & repeated = a.hierarchy(1)->getUniqueName();
        s.TakeAncestorsOfSet(a.set(0)->getText(), a.hierarchy(1), a.flag(3), a.levels(2, repeated, a.flag(3)),
            a.has(4) ? a.levels(4, repeated, a.flag(3)) : 0); } } },
    { "TakeBaseLevel", { 2, 2, [](MDXSet & s, A & a) { s.TakeBaseLevel(a.hierarchy(0), a.number(1)); } } },
    { "TakeChildren", { 1, 1, [](MDXSet & s, A & a) { s.TakeChildren(a.member(0).get()); } } },
    { "TakeChildrenOfSet", { 2, 5, [](MDXSet & s, A & a) {
        s.TakeChildren(a.set(0).get(), a.hierarchy(1), a.flag(2), a.number_or(3, -1),
            a.has(4) ? a.text(4) : KelpString()); } } },
    { "TakeDescendants", { 1, 2, [](MDXSet & s, A & a) { s.TakeDescendants(a.member(0).get(), a.flag(1)); } } },
    { "TakeExtremity", { 3, 4, [](MDXSet & s, A & a) {
        s.TakeExtremity(a[0].find_in(kExtremes), a[1].find_in(kMeasures), a[2].number_or_text(),
            a.tuple_or_null(3).get()); } } },
    { "TakeFilter", { 1, 2, take_filter } },
    { "TakeLeafNodes", { 1, 1, [](MDXSet & s, A & a) { s.TakeLeafNodes(a.hierarchy(0)); } } },
    { "TakeName", { 1, 1, [](MDXSet & s, A & a) { s.TakeName(a.set(0).get()); } } },
    { "TakeRank", { 1, 1, [](MDXSet & s, A & a) { s.TakeRank(a.member(0).get()); } } },
    { "TakeSiblings", { 1, 1, [](MDXSet & s, A & a) { s.TakeSiblings(a.member(0).get(), nullptr); } } },
    { "TakeSubset", { 2, 2, [](MDXSet & s, A & a) { s.TakeSubset(a.number(0), a.number(1)); } } },
    { "TakeSubsetAround", { 3, 3, [](MDXSet & s, A & a) {
        s.TakeSubset(a.tuple(0).get(), a.number(1), a.number(2)); } } },
    { "TakeSubsetBetween", { 2, 2, [](MDXSet & s, A & a) { s.TakeSubset(a.tuple(0).get(), a.tuple(1).get()); } } },
    { "TakeTail", { 0, 0, [](MDXSet & s, A &) { s.TakeTail(); } } },
    { "TakeTopLevel", { 1, 1, [](MDXSet & s, A & a) { s.TakeTopLevel(a.hierarchy(0)); } } },
    { "TakeWholeLevel", { 1, 1, [](MDXSet & s, A & a) { s.TakeWholeLevel(a.level(0)); } } },
    { "ToggleDrillStateOnSet", { 1, 2, [](MDXSet & s, A & a) {
        s.ToggleDrillStateOnSet(a.set(0).get(), a.flag(1)); } } },
    { "generate", { 2, 2, [](MDXSet & s, A & a) { s.generate(a.set(0)->getText(), a.set(1)->getText()); } } },
    { "nonEmptyCrossjoin", { 1, 1, [](MDXSet & s, A & a) { s.nonEmptyCrossjoin(a.set(0).get()); } } },
};
// clang-format on
