#pragma once
#include "examples/memory_cube.h"

#include <deque>
#include <map>
#include <string>
#include <string_view>

// The cube "[Sales]" of a retailer, as a host would hold it. Names are looked up as UTF-8; a hierarchy goes by its
// own name, or by its dimension's if it has none. An unknown name throws std::out_of_range.
class RetailCube {
public:
    // `flatHierarchyNames` is what the generator is given too: unique names are spelled to match it,
    // [Time.Calendar] or [Time].[Calendar].
    explicit RetailCube(bool flatHierarchyNames = true);
    RetailCube(RetailCube const &) = delete;
    RetailCube & operator=(RetailCube const &) = delete;

    KelpString const & name() const { return fName; }

    memory_cube::Dimension * dimension(std::string_view name);
    memory_cube::Hierarchy * hierarchy(std::string_view name);
    memory_cube::Level * level(std::string_view hierarchy, std::string_view name);
    // `path` holds the names from the top down, as in "All Stores|Switzerland|Zürich".
    memory_cube::Member * member(std::string_view hierarchy, std::string_view path);
    memory_cube::Calculation * calculation(std::string_view hierarchy, std::string_view name);

private:
    // The key of what belongs to a hierarchy: the hierarchy, then the name or path.
    template <class Object>
    using ByName = std::map<std::string, Object *, std::less<>>;

    void add_hierarchy(char const * dimension, char const * name, char const * levels, bool flat);
    void add_member(std::string_view hierarchy, std::string_view path);
    void add_calculation(std::string_view hierarchy, std::string_view name, std::string_view parent);

    KelpString fName;
    std::deque<memory_cube::Dimension> fDimensions;
    std::deque<memory_cube::Hierarchy> fHierarchies;
    std::deque<memory_cube::Level> fLevels;
    std::deque<memory_cube::Member> fMembers;
    std::deque<memory_cube::Calculation> fCalculations;
    ByName<memory_cube::Dimension> fDimensionOf;
    ByName<memory_cube::Hierarchy> fHierarchyOf;
    ByName<memory_cube::Level> fLevelOf;
    ByName<memory_cube::Member> fMemberOf;
    ByName<memory_cube::Calculation> fCalculationOf;
};
