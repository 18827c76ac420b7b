#include "composer.h"

#include "steps.h"

#include <map>

using namespace memory_cube;

namespace {

// In characters. The limits are checked after each step, and before a step that can multiply the length of a text
// by more than about 20.
constexpr int kLongestText = 1'000'000;
constexpr int kLongestTotal = 50'000'000;

template <class Part>
Part * find(
    Cube & cube, Cube::Parts<Part> const & parts, Part * (Cube::*lookup)(KelpString const &), Place const & place)
{
    place.find(parts, place.text());
    return (cube.*lookup)(place.text());
}

}

Hierarchy * Composer::hierarchy(Place const & place)
{
    return find(fCube, fCube.hierarchies(), &Cube::hierarchy, place);
}

Level * Composer::level(Place const & place)
{
    return find(fCube, fCube.levels(), &Cube::level, place);
}

Calculation * Composer::calculation(Place const & place)
{
    return find(fCube, fCube.calculations(), &Cube::calculation, place);
}

std::vector<BRIM_o::Calculation *> Composer::calculations(Place const & place)
{
    std::vector<BRIM_o::Calculation *> calculations;
    for (Place const & item : place.items())
        calculations.push_back(calculation(item));
    return calculations;
}

std::vector<RefPtr<MDXField>> Composer::members(Place const & place)
{
    std::vector<RefPtr<MDXField>> members;
    for (Place const & item : place.items())
        members.push_back(member(item));
    return members;
}

RefPtr<MDXTuple> Composer::tuple(Place const & place)
{
    RefPtr<MDXTuple> const tuple = fMake.tuple(place.is_list() ? members(place) : std::vector{ member(place) });
    if (tuple->FieldCount() > 1) // a single member is a name from the file, or was checked after its last step
        expect_room(static_cast<double>(tuple->getText().size()), place);
    return tuple;
}

std::vector<RefPtr<MDXTuple>> Composer::tuples(Place const & place)
{
    std::vector<RefPtr<MDXTuple>> tuples;
    for (Place const & item : place.items())
        tuples.push_back(tuple(item));
    return tuples;
}

void Composer::expect_room(double length, Place const & place)
{
    if (length > kLongestText)
        place.reject("the text gets longer than " + std::to_string(kLongestText) + " characters");
    fTotal += length;
    if (fTotal > kLongestTotal)
        place.reject("all texts together get longer than " + std::to_string(kLongestTotal) + " characters");
}

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
        }
        KelpString const text = object.getText();
        expect_room(static_cast<double>(text.size()), step);
        if (fRecordSteps)
            fRecorded += step.name() + " " + arguments.name().utf8() + ":\n    " + text.toUTF8() + "\n";
    }
}

// A member's unique name, or { "from": member, "steps": [...] }.
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

// MDX, a list of members, or { "from": { kind: ... }, "steps": [...] }. Without "from" the set starts empty. An
// axis is such an object with more entries.
RefPtr<MDXSet> Composer::set(Place const & place)
{
    if (place.is_text())
        return fMake.set(place.text());
    if (place.is_list()) {
        RefPtr<MDXSet> const list = fMake.list(members(place));
        expect_room(static_cast<double>(list->getText().size()), place);
        return list;
    }
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
        expect_room(static_cast<double>(set->getText().size()), from);
    }
    take_steps(*set, place, kSetSteps);
    return set;
}

// A whole number, MDX, or { "from": ..., "steps": [...] }.
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

// A number, true or false, a member, or [kind, operand...].
Condition Composer::condition(Place const & place)
{
    if (place.is_flag())
        return place.flag();
    if (place.is_whole_number())
        return place.whole_number();
    if (place.is_number())
        return place.real();
    if (!place.is_list())
        return member(place);
    Arguments const operands(*this, place);
    return operands.find_in(kConditions)(operands);
}
