#include "cube_reader.h"

#include <stdexcept>
#include <string>

using namespace memory_cube;

namespace {

constexpr std::size_t kLongestNames = 50'000'000; // of all unique names, in characters

struct Reader {
    Cube & cube;
    std::size_t total = 0; // the length of all unique names

    void read_hierarchy(Place const & place, Dimension * dimension);
    void read_members(Place const & place, Hierarchy * hierarchy, Member * parent);

    // A name is repeated in the unique names of all parts below it, so a small file could use up all memory.
    template <class Part>
    Part * limited(Part * part, Place const & place)
    {
        total += part->getUniqueName().size();
        if (total > kLongestNames)
            place.reject(
                "all unique names together get longer than " + std::to_string(kLongestNames) + " characters");
        return part;
    }
};

// Reads an object with a key for each member, whose value has the members below it, or a list of the lowest
// members.
void Reader::read_members(Place const & place, Hierarchy * hierarchy, Member * parent)
{
    auto const add = [&](KelpString const & name) {
        return limited(parent != nullptr ? cube.add_member(parent, name) : cube.add_member(hierarchy, name), place);
    };
    if (place.is_list()) {
        for (KelpString const & name : place.texts())
            add(name);
        return;
    }
    if (!place.is_object())
        place.reject_kind("an object or a list of names");
    for (auto const & [name, below] : place.entries())
        read_members(below, hierarchy, add(name));
}

void Reader::read_hierarchy(Place const & place, Dimension * dimension)
{
    place.expect_keys({ "name", "levels", "members", "calculations" });
    Hierarchy * const hierarchy = limited(
        cube.add_hierarchy(dimension, place.has("name") ? place.at("name").text() : ""), place);
    for (Place const & level : place.at("levels").items())
        limited(cube.add_level(hierarchy, level.text()), level);
    read_members(place.at("members"), hierarchy, nullptr);
    if (!place.has("calculations"))
        return;
    for (Place const & item : place.at("calculations").items()) {
        item.expect_keys({ "name", "parent" });
        Member * parent = nullptr;
        if (item.has("parent")) {
            item.at("parent").find(cube.members(), item.at("parent").text());
            parent = cube.member(item.at("parent").text());
        }
        limited(cube.add_calculation(hierarchy, item.at("name").text(), parent), item);
    }
}

}

Cube read_cube(Place const & place)
{
    place.expect_keys({ "name", "flatHierarchyNames", "dimensions" });
    Cube cube(place.at("name").text(), place.has("flatHierarchyNames") && place.at("flatHierarchyNames").flag());
    Reader reader{ cube };
    for (Place const & item : place.at("dimensions").items()) {
        item.expect_keys({ "name", "hierarchies" });
        try {
            Dimension * const dimension = cube.add_dimension(item.at("name").text());
            for (Place const & hierarchy : item.at("hierarchies").items())
                reader.read_hierarchy(hierarchy, dimension);
        } catch (std::invalid_argument const & error) {
            item.reject(error.what());
        }
    }
    return cube;
}
