#include "cube_reader.h"

#include <stdexcept>

using namespace memory_cube;

namespace {

// An object with a key for each member, whose value has the members below it, or a list of the lowest members.
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
