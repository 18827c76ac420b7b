// report_from_json FILE [--steps]: reads a cube and reports from a JSON file such as examples/sales.json and prints
// each statement on one line and on several. With --steps it prints the text after every step too. A fault of the
// file is told with its place. docs/report_file.md describes the file.
#include "json_place.h"
#include <odbomodule/memory_cube.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <limits>
#include <new>
#include <sstream>
#include <stdexcept>

using namespace memory_cube;

namespace {

constexpr int kMaxDepth = 200;

// Makes the objects that the file describes, and notes the text after each step.
class Composer {
public:
    explicit Composer(Cube & cube) : fCube(cube), fMake(cube) {}

    Maker const & make() const { return fMake; }
    std::string take_steps()
    {
        std::string steps = fSteps.str();
        fSteps.str("");
        return steps;
    }

    Hierarchy * hierarchy(Place const & place) { return find(fCube.hierarchies(), &Cube::hierarchy, place); }
    Level * level(Place const & place) { return find(fCube.levels(), &Cube::level, place); }
    Calculation * calculation(Place const & place) { return find(fCube.calculations(), &Cube::calculation, place); }
    std::vector<BRIM_o::Calculation *> calculations(Place const & place)
    {
        std::vector<BRIM_o::Calculation *> calculations;
        for (Place const & item : place.items())
            calculations.push_back(calculation(item));
        return calculations;
    }

    RefPtr<MDXField> member(Place const & place);
    std::vector<RefPtr<MDXField>> members(Place const & place)
    {
        std::vector<RefPtr<MDXField>> members;
        for (Place const & item : place.items())
            members.push_back(member(item));
        return members;
    }
    RefPtr<MDXTuple> tuple(Place const & place)
    {
        return fMake.tuple(place.is_list() ? members(place) : std::vector{ member(place) });
    }
    std::vector<RefPtr<MDXTuple>> tuples(Place const & place)
    {
        std::vector<RefPtr<MDXTuple>> tuples;
        for (Place const & item : place.items())
            tuples.push_back(tuple(item));
        return tuples;
    }
    RefPtr<MDXSet> set(Place const & place);
    RefPtr<MDXValue> value(Place const & place);
    Condition condition(Place const & place);

private:
    template <class Part>
    Part * find(Cube::Parts<Part> const & parts, Part * (Cube::*lookup)(KelpString const &), Place const & place)
    {
        place.find(parts, place.text());
        return (fCube.*lookup)(place.text());
    }
    template <class Object, class Table>
    void take_steps(Object & object, Place const & place, Table const & table);

    Cube & fCube;
    Maker fMake;
    std::ostringstream fSteps;
};

// What a name in a list stands for: how many arguments it takes, and the function that reads them.
template <class Function>
struct Operation {
    std::size_t least;
    std::size_t most;
    Function run;
};
constexpr std::size_t kAnyCount = std::numeric_limits<std::size_t>::max();

// A list [name, argument...]: the arguments, which are read by their numbers.
class Arguments {
public:
    Arguments(Composer & composer, Place const & place) : fComposer(composer), fPlace(place), fItems(place.items())
    {
        if (fItems.empty())
            place.reject("a list that begins with a name is expected");
    }

    Place const & name() const { return fItems[0]; }
    std::size_t count() const { return fItems.size() - 1; }
    bool has(std::size_t i) const { return i < count(); }
    Place const & operator[](std::size_t i) const { return fItems.at(i + 1); }

    // The function that stands in a table of operations under the name.
    template <class Table>
    auto find_in(Table const & table) const
    {
        auto const & [least, most, run] = name().find_in(table);
        if (count() < least || count() > most)
            reject_count(least, most);
        return run;
    }

    KelpString text(std::size_t i) const { return (*this)[i].text(); }
    std::int32_t number(std::size_t i) const { return (*this)[i].number(); }
    std::int32_t number_or(std::size_t i, std::int32_t other) const { return has(i) ? number(i) : other; }
    bool flag(std::size_t i) const { return has(i) && (*this)[i].flag(); } // false if it is left out
    Hierarchy * hierarchy(std::size_t i) const { return fComposer.hierarchy((*this)[i]); }
    Level * level(std::size_t i) const { return fComposer.level((*this)[i]); }
    RefPtr<MDXField> member(std::size_t i) const { return fComposer.member((*this)[i]); }
    RefPtr<MDXTuple> tuple(std::size_t i) const { return fComposer.tuple((*this)[i]); }
    RefPtr<MDXTuple> any_tuple(std::size_t i) const { return has(i) ? tuple(i) : RefPtr<MDXTuple>(); }
    // A condition that asks for the current tuple may not be given null.
    RefPtr<MDXTuple> tuple_or_empty(std::size_t i) const { return has(i) ? tuple(i) : fComposer.make().tuple({}); }
    RefPtr<MDXSet> set(std::size_t i) const
    {
        if ((*this)[i].is_object())
            (*this)[i].expect_keys({ "from", "steps" });
        return fComposer.set((*this)[i]);
    }
    RefPtr<MDXValue> value(std::size_t i) const { return fComposer.value((*this)[i]); }
    RefPtr<MDXValue> any_value(std::size_t i) const { return has(i) ? value(i) : RefPtr<MDXValue>(); }
    Condition condition(std::size_t i) const { return fComposer.condition((*this)[i]); }
    std::vector<BRIM_o::Calculation *> calculations(std::size_t i) const
    {
        return has(i) ? fComposer.calculations((*this)[i]) : std::vector<BRIM_o::Calculation *>();
    }
    std::vector<Condition> conditions() const
    {
        std::vector<Condition> all;
        for (std::size_t i = 0; i < count(); ++i)
            all.push_back(condition(i));
        return all;
    }

private:
    [[noreturn]] void reject_count(std::size_t least, std::size_t most) const
    {
        std::string counts = std::to_string(least);
        if (most == kAnyCount)
            counts += " or more";
        else if (most != least)
            counts += (most == least + 1 ? " or " : " to ") + std::to_string(most);
        fPlace.reject(name().utf8() + " takes " + counts + (most == 1 ? " argument" : " arguments") + ", found " +
                      std::to_string(count()));
    }

    Composer & fComposer;
    Place fPlace;
    std::vector<Place> fItems;
};
using A = Arguments const;

std::map<std::string, std::int32_t> const kDirections = { { "ascending", 0 }, { "descending", 1 },
    { "ascending in all", 2 }, { "descending in all", 3 } };
std::map<std::string, MDXSet::ExtremityType> const kExtremes = { { "Top", MDXSet::Top },
    { "Bottom", MDXSet::Bottom } };
std::map<std::string, MDXSet::ExtremityMeasure> const kMeasures = { { "Sum", MDXSet::Sum },
    { "Count", MDXSet::Count }, { "Percent", MDXSet::Percent } };

// Two operands or more.
template <class Combine>
Condition chain(Arguments const & operands, Combine const & combine)
{
    Condition all = combine(operands.condition(0), operands.condition(1));
    for (std::size_t i = 2; i < operands.count(); ++i)
        all = combine(all, operands.condition(i));
    return all;
}

// The steps, each with the least and the most arguments that it takes. A new one is one line.
template <class Object>
using Steps = std::map<std::string, Operation<void (*)(Object &, Arguments const &)>>;

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
        s.TakeAncestorsOfMember(a.member(0)->getText(), a.flag(2), a.number(1)); } } },
    { "TakeAncestorsOfSet", { 3, 5, [](MDXSet & s, A & a) {
        s.TakeAncestorsOfSet(a.set(0)->getText(), a.hierarchy(1), a.flag(3), a.number(2), a.number_or(4, 0)); } } },
    { "TakeBaseLevel", { 2, 2, [](MDXSet & s, A & a) { s.TakeBaseLevel(a.hierarchy(0), a.number(1)); } } },
    { "TakeChildren", { 1, 1, [](MDXSet & s, A & a) { s.TakeChildren(a.member(0).get()); } } },
    { "TakeChildrenOfSet", { 2, 5, [](MDXSet & s, A & a) {
        s.TakeChildren(a.set(0).get(), a.hierarchy(1), a.flag(2), a.number_or(3, -1),
            a.has(4) ? a.text(4) : KelpString()); } } },
    { "TakeDescendants", { 1, 2, [](MDXSet & s, A & a) { s.TakeDescendants(a.member(0).get(), a.flag(1)); } } },
    { "TakeExtremity", { 3, 4, [](MDXSet & s, A & a) {
        s.TakeExtremity(a[0].find_in(kExtremes), a[1].find_in(kMeasures), a[2].number_or_text(),
            a.any_tuple(3).get()); } } },
    { "TakeFilter", { 1, 2, [](MDXSet & s, A & a) {
        s.TakeFilter(a.condition(0).get(), a.tuple_or_empty(1).get()); } } },
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
Steps<MDXField> const kMemberSteps = {
    { "DrillUp", { 0, 0, [](MDXField & m, A &) { m.DrillUp(nullptr); } } },
    { "LoopLeft", { 0, 0, [](MDXField & m, A &) { m.LoopLeft(); } } },
    { "LoopRight", { 0, 0, [](MDXField & m, A &) { m.LoopRight(); } } },
    { "MoveToChild", { 1, 1, [](MDXField & m, A & a) { m.MoveToChild(a.text(0)); } } },
    { "MoveToFirstChild", { 0, 0, [](MDXField & m, A &) { m.MoveToFirstChild(); } } },
    { "MoveToFirstSibling", { 0, 0, [](MDXField & m, A &) { m.MoveToFirstSibling(); } } },
    { "MoveToLastSibling", { 0, 0, [](MDXField & m, A &) { m.MoveToLastSibling(); } } },
    { "MoveToParent", { 0, 0, [](MDXField & m, A &) { m.MoveToParent(); } } },
    { "TakeAncestorAtLevel", { 1, 1, [](MDXField & m, A & a) { m.TakeAncestorAtLevel(nullptr, a.number(0)); } } },
    { "TakeCurrentMember", { 1, 1, [](MDXField & m, A & a) { m.TakeCurrentMember(a.hierarchy(0)); } } },
    { "TakeDefaultMember", { 1, 1, [](MDXField & m, A & a) { m.TakeDefaultMember(a.hierarchy(0)); } } },
};
Steps<MDXValue> const kValueSteps = {
    { "Add", { 1, 1, [](MDXValue & v, A & a) { v.Add(a.number(0)); } } },
    { "ReverseSign", { 0, 0, [](MDXValue & v, A &) { v.ReverseSign(); } } },
    { "TakeAverage", { 1, 1, [](MDXValue & v, A & a) { v.TakeAverage(a.set(0).get()); } } },
    { "TakeCaption", { 1, 1, [](MDXValue & v, A & a) { v.TakeCaption(a.member(0).get()); } } },
    { "TakeCorrelation", { 2, 3, [](MDXValue & v, A & a) {
        v.TakeCorrelation(a.set(0).get(), a.value(1).get(), a.any_value(2).get()); } } },
    { "TakeCount", { 1, 1, [](MDXValue & v, A & a) { v.TakeCount(a.set(0).get()); } } },
    { "TakeCovariance", { 2, 4, [](MDXValue & v, A & a) {
        v.TakeCovariance(a.set(0).get(), a.value(1).get(), a.any_value(2).get(), a.flag(3)); } } },
    { "TakeDescription", { 1, 1, [](MDXValue & v, A & a) { v.TakeDescription(a.member(0).get()); } } },
    { "TakeEquality", { 1, 1, [](MDXValue & v, A & a) { v.TakeEquality(a.text(0)); } } },
    { "TakeLinRegIntercept", { 2, 3, [](MDXValue & v, A & a) {
        v.TakeLinRegIntercept(a.set(0).get(), a.value(1).get(), a.any_value(2).get()); } } },
    { "TakeLinRegPoint", { 3, 4, [](MDXValue & v, A & a) {
        v.TakeLinRegPoint(a.value(0).get(), a.set(1).get(), a.value(2).get(), a.any_value(3).get()); } } },
    { "TakeLinRegR2", { 2, 3, [](MDXValue & v, A & a) {
        v.TakeLinRegR2(a.set(0).get(), a.value(1).get(), a.any_value(2).get()); } } },
    { "TakeLinRegSlope", { 2, 3, [](MDXValue & v, A & a) {
        v.TakeLinRegSlope(a.set(0).get(), a.value(1).get(), a.any_value(2).get()); } } },
    { "TakeLinRegVariance", { 2, 3, [](MDXValue & v, A & a) {
        v.TakeLinRegVariance(a.set(0).get(), a.value(1).get(), a.any_value(2).get()); } } },
    { "TakeMax", { 1, 1, [](MDXValue & v, A & a) { v.TakeMax(a.set(0).get()); } } },
    { "TakeMin", { 1, 1, [](MDXValue & v, A & a) { v.TakeMin(a.set(0).get()); } } },
    { "TakeName", { 1, 1, [](MDXValue & v, A & a) { v.TakeName(a.member(0).get()); } } },
    { "TakeProperty", { 2, 2, [](MDXValue & v, A & a) { v.TakeProperty(a.member(0).get(), a.text(1)); } } },
    { "TakeSum", { 1, 1, [](MDXValue & v, A & a) { v.TakeSum(a.set(0).get()); } } },
    { "TakeUniqueName", { 1, 1, [](MDXValue & v, A & a) { v.TakeUniqueName(a.member(0).get()); } } },
};
std::map<std::string, Operation<Condition (*)(Arguments const &)>> const kConditions = {
    { "!=", { 2, 2, [](A & a) { return a.condition(0) != a.condition(1); } } },
    { "*", { 2, 2, [](A & a) { return a.condition(0) * a.condition(1); } } },
    { "+", { 2, 2, [](A & a) { return a.condition(0) + a.condition(1); } } },
    { "-", { 1, 2, [](A & a) { return a.has(1) ? a.condition(0) - a.condition(1) : -a.condition(0); } } },
    { "/", { 2, 2, [](A & a) { return a.condition(0) / a.condition(1); } } },
    { "<", { 2, 2, [](A & a) { return a.condition(0) < a.condition(1); } } },
    { "<=", { 2, 2, [](A & a) { return a.condition(0) <= a.condition(1); } } },
    { "=", { 2, 2, [](A & a) { return a.condition(0) == a.condition(1); } } },
    { ">", { 2, 2, [](A & a) { return a.condition(0) > a.condition(1); } } },
    { ">=", { 2, 2, [](A & a) { return a.condition(0) >= a.condition(1); } } },
    { "and", { 2, kAnyCount, [](A & a) { return chain(a, [](Condition x, Condition y) { return x && y; }); } } },
    { "between", { 3, 3, [](A & a) { return between(a.condition(0), a.condition(1), a.condition(2)); } } },
    { "current", { 0, 0, [](A &) { return current(); } } },
    { "current set", { 0, 0, [](A &) { return current_set(); } } },
    { "is null", { 1, 1, [](A & a) { return is_null(a.condition(0)); } } },
    { "mdx", { 1, 1, [](A & a) { return mdx(a.text(0)); } } },
    { "not", { 1, 1, [](A & a) { return !a.condition(0); } } },
    { "or", { 2, kAnyCount, [](A & a) { return chain(a, [](Condition x, Condition y) { return x || y; }); } } },
    { "outside", { 3, 3, [](A & a) { return outside(a.condition(0), a.condition(1), a.condition(2)); } } },
    { "set", { 1, 1, [](A & a) { return Condition(a.set(0)); } } },
    { "text", { 1, 1, [](A & a) { return text(a.text(0)); } } },
    { "tuple", { 1, kAnyCount, [](A & a) { return tuple(a.conditions()); } } },
    { "value", { 1, 1, [](A & a) { return value(a.condition(0)); } } },
};
// clang-format on

template <class Object, class Table>
void Composer::take_steps(Object & object, Place const & place, Table const & table)
{
    if (!place.has("steps"))
        return;
    for (Place const & step : place.at("steps").items()) {
        Arguments const arguments(*this, step);
        try {
            arguments.find_in(table)(object, arguments);
        } catch (MDXError const & error) {
            step.reject(error.getText().toUTF8());
        } catch (std::length_error const &) {
            step.reject("the text grows too long");
        } catch (std::bad_alloc const &) {
            step.reject("the text grows too long");
        }
        fSteps << step.name() << " " << arguments.name().utf8() << ":\n    " << object.getText() << "\n";
    }
}

// A member's unique name, or { "from": name, "steps": [...] }.
RefPtr<MDXField> Composer::member(Place const & place)
{
    if (place.is_object()) {
        place.expect_keys({ "from", "steps" });
        RefPtr<MDXField> const member = this->member(place.at("from"));
        take_steps(*member, place, kMemberSteps);
        return member;
    }
    if (!place.is_text())
        place.reject_kind("a member's name or an object");
    KelpString const name = place.text();
    if (fCube.calculations().count(name) != 0)
        return fMake.calculated(fCube.calculation(name));
    if (fCube.members().count(name) == 0)
        place.reject_name(name, fCube.calculations(), fCube.members());
    return fMake.member(fCube.member(name));
}

// MDX as it is, a list of members, or { "from": { kind: ... }, "steps": [...] }, which starts from the empty set if
// there is no "from". An axis is such an object too.
RefPtr<MDXSet> Composer::set(Place const & place)
{
    if (place.is_text())
        return fMake.set(place.text());
    if (place.is_list())
        return fMake.list(members(place));
    if (!place.is_object())
        place.reject_kind("MDX, a list of members or an object");
    RefPtr<MDXSet> set = fMake.set();
    if (place.has("from")) {
        Place const from = place.at("from");
        std::map<std::string, RefPtr<MDXSet> (*)(Composer &, Place const &)> const kinds = {
            { "hierarchy", [](Composer & c, Place const & p) { return c.make().set(c.hierarchy(p)); } },
            { "level", [](Composer & c, Place const & p) { return c.make().set(c.level(p)); } },
            { "members", [](Composer & c, Place const & p) { return c.make().list(c.members(p)); } },
            { "tuples", [](Composer & c, Place const & p) { return c.make().list(c.tuples(p)); } },
            { "mdx", [](Composer & c, Place const & p) { return c.make().set(p.text()); } },
        };
        if (from.entries().size() != 1)
            from.reject("expected an object with one entry");
        for (auto const & [kind, what] : from.entries())
            set = from.find(kinds, kind.toUTF8())(*this, what);
    }
    take_steps(*set, place, kSetSteps);
    return set;
}

// A whole number, MDX as it is, or { "from": ..., "steps": [...] }.
RefPtr<MDXValue> Composer::value(Place const & place)
{
    if (place.is_text())
        return fMake.value(place.text());
    if (place.is_number())
        return fMake.value(place.number());
    if (!place.is_object())
        place.reject_kind("a whole number, MDX or an object");
    place.expect_keys({ "from", "steps" });
    RefPtr<MDXValue> const value = place.has("from") ? this->value(place.at("from")) : fMake.value(0);
    take_steps(*value, place, kValueSteps);
    return value;
}

// A number, true or false, a member's name, or [kind, operand...].
Condition Composer::condition(Place const & place)
{
    if (place.is_flag())
        return place.flag();
    if (place.is_number())
        return place.real();
    if (!place.is_list())
        return member(place);
    Arguments const operands(*this, place);
    return operands.find_in(kConditions)(operands);
}

// An object of members and those below them, or a list of those at the bottom.
void read_members(Cube & cube, Place const & place, Hierarchy * hierarchy, Member * parent)
{
    auto const add = [&](KelpString const & name) {
        return parent != nullptr ? cube.add_member(parent, name) : cube.add_member(hierarchy, name);
    };
    if (place.is_list()) {
        for (KelpString const & name : place.texts())
            add(name);
        return;
    }
    if (!place.is_object())
        place.reject_kind("an object or a list of names");
    for (auto const & [name, below] : place.entries())
        read_members(cube, below, hierarchy, add(name));
}

void read_hierarchy(Cube & cube, Place const & place, Dimension * dimension)
{
    place.expect_keys({ "name", "levels", "members", "calculations" });
    Hierarchy * const hierarchy = cube.add_hierarchy(dimension, place.has("name") ? place.at("name").text() : "");
    for (KelpString const & level : place.at("levels").texts())
        cube.add_level(hierarchy, level);
    read_members(cube, place.at("members"), hierarchy, nullptr);
    if (!place.has("calculations"))
        return;
    for (Place const & item : place.at("calculations").items()) {
        item.expect_keys({ "name", "parent" });
        Member * parent = nullptr;
        if (item.has("parent")) {
            item.at("parent").find(cube.members(), item.at("parent").text());
            parent = cube.member(item.at("parent").text());
        }
        cube.add_calculation(hierarchy, item.at("name").text(), parent);
    }
}

Cube read_cube(Place const & place)
{
    place.expect_keys({ "name", "flatHierarchyNames", "dimensions" });
    Cube cube(place.at("name").text(), place.has("flatHierarchyNames") && place.at("flatHierarchyNames").flag());
    for (Place const & item : place.at("dimensions").items()) {
        item.expect_keys({ "name", "hierarchies" });
        try {
            Dimension * const dimension = cube.add_dimension(item.at("name").text());
            for (Place const & hierarchy : item.at("hierarchies").items())
                read_hierarchy(cube, hierarchy, dimension);
        } catch (std::invalid_argument const & error) {
            item.reject(error.what());
        }
    }
    return cube;
}

// The formulas of a SELECT or CREATE.
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
    return hold<MDXQuery>(query.get());
}

RefPtr<MDXQuery> create(Composer & composer, Place const & place)
{
    place.expect_keys({ "title", "statement", "members", "sets" });
    RefPtr const query = composer.make().create();
    add_formulas(composer, place, *query);
    return hold<MDXQuery>(query.get());
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
    return hold<MDXQuery>(query.get());
}

std::map<std::string, RefPtr<MDXQuery> (*)(Composer &, Place const &)> const kStatements = { { "create", create },
    { "drop", drop }, { "select", select } };

// Everything that the file asks for, as it is to be printed.
std::string compose(Place const & file, bool steps)
{
    file.expect_keys({ "cube", "reports" });
    Cube cube = read_cube(file.at("cube"));
    Composer composer(cube);
    std::ostringstream out;
    for (Place const & report : file.at("reports").items()) {
        try {
            RefPtr const query = report.at("statement").find_in(kStatements)(composer, report);
            KelpString const line = query->getText(false);
            KelpString const lines = query->getText(true);
            out << "== " << report.at("title").utf8() << " ==\n"
                << (steps ? composer.take_steps() + "\n" : "") << line << "\n";
            if (lines != line)
                out << (lines.front() == u'\n' ? "" : "\n") << lines << "\n";
            out << "\n";
        } catch (MDXError const & error) {
            report.reject(error.getText().toUTF8());
        }
    }
    return out.str();
}

// Called for each value that is parsed. What is nested is read by recursion.
bool limit_depth(int depth, Place::Json::parse_event_t, Place::Json &)
{
    if (depth > kMaxDepth)
        throw Fault("lists and objects are nested more than " + std::to_string(kMaxDepth) + " levels deep");
    return true;
}

}

int main(int argc, char ** argv)
{
    bool const steps = argc == 3 && std::string(argv[2]) == "--steps";
    if (argc != 2 && !steps) {
        std::cerr << "usage: report_from_json FILE [--steps]\n";
        return 2;
    }
    try {
        std::ifstream file(argv[1]);
        file.peek(); // fails for a folder, which can be opened
        if (!file)
            throw Fault("the file cannot be read");
        Place::Json const json = Place::Json::parse(file, limit_depth);
        std::cout << compose(Place(json), steps);
    } catch (Place::Json::exception const & error) {
        std::string const what = error.what();
        std::cerr << argv[1] << ": " << what.substr(what.find("] ") + 2) << "\n"; // after the number of the error
        return 1;
    } catch (std::exception const & error) { // mostly a Fault
        std::cerr << argv[1] << ": " << error.what() << "\n";
        return 1;
    }
}
