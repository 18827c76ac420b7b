#pragma once
#include "cube_parts.h"

#include <odbomodule/host/kelp_string.h>

#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace memory_cube {

/// A unique name from the server's metadata, such as [Property].[City].&[42]. It is used unchanged.
struct UniqueName {
    KelpString fText;

    explicit UniqueName(KelpString const & text) : fText(text) {}
};

/// Owns the parts of a cube. A part is added by its plain name, from which the cube makes the unique name: it adds
/// the brackets and doubles each "]". To use a unique name from the server's metadata, pass it as a UniqueName: as
/// the last argument for a dimension or hierarchy, in place of the plain name for a level, and as the only argument
/// for a member. Parts are found by their unique names; an unknown name throws std::out_of_range.
///
/// If the cube already has the part, add_... throws std::invalid_argument. If an add_... function throws, the cube
/// is unchanged. A part keeps its address until the cube is destroyed or assigned to; a move takes the parts along.
class Cube {
public:
    template <class Part>
    using Parts = std::map<KelpString, Part>; // by unique name

    /// `name` is the cube's name in MDX, with its brackets. With `flatHierarchyNames` the unique name of a
    /// hierarchy is [Time.Fiscal], otherwise [Time].[Fiscal]. The generator has to be made with the same flag.
    explicit Cube(KelpString const & name, bool flatHierarchyNames = false) : fName(name), fFlat(flatHierarchyNames)
    {}
    Cube(Cube &&) = default; // parts keep their addresses
    Cube & operator=(Cube && other)
    {
        Cube taken(std::move(other)); // `other` may be this cube
        fName.swap(taken.fName);
        std::swap(fFlat, taken.fFlat);
        fDimensions.swap(taken.fDimensions);
        fHierarchies.swap(taken.fHierarchies);
        fLevels.swap(taken.fLevels);
        fMembers.swap(taken.fMembers);
        fCalculations.swap(taken.fCalculations);
        std::swap(fLastCalculationId, taken.fLastCalculationId);
        return *this;
    }

    Dimension * add_dimension(KelpString const & name) { return add_dimension(name, UniqueName(bracketed(name))); }
    Dimension * add_dimension(KelpString const & name, UniqueName const & uniqueName)
    {
        return insert(fDimensions, uniqueName, doubled(name), uniqueName.fText);
    }

    /// Without a name the hierarchy has the name of its dimension.
    Hierarchy * add_hierarchy(Dimension const * dimension, KelpString const & name = {})
    {
        if (name.empty())
            return add_hierarchy(dimension, name, UniqueName(dimension->fUniqueName));
        return add_hierarchy(dimension, name,
            fFlat ? UniqueName(u"[" + dimension->fName + u"." + doubled(name) + u"]")
                  : below(dimension->fUniqueName, name));
    }
    Hierarchy * add_hierarchy(Dimension const * dimension, KelpString const & name, UniqueName const & uniqueName)
    {
        return insert(fHierarchies, uniqueName, dimension, doubled(name), uniqueName.fText);
    }

    /// Adds the next level down.
    Level * add_level(Hierarchy * hierarchy, KelpString const & name)
    {
        return add_level(hierarchy, below(hierarchy->fUniqueName, name));
    }
    Level * add_level(Hierarchy * hierarchy, UniqueName const & uniqueName)
    {
        make_room(hierarchy->fLevels);
        return hierarchy->fLevels.emplace_back(insert(fLevels, uniqueName, uniqueName.fText));
    }

    /// Adds a member of the top level.
    Member * add_member(Hierarchy const * hierarchy, KelpString const & name)
    {
        return add_member(below(hierarchy->fUniqueName, name));
    }
    /// Adds a child of another member.
    Member * add_member(Member const * parent, KelpString const & name)
    {
        return add_member(below(parent->fUniqueName, name));
    }
    Member * add_member(UniqueName const & uniqueName) { return insert(fMembers, uniqueName, uniqueName.fText); }

    /// Adds a calculated member. Its unique name is hierarchy.[name], even if it has a parent. No two calculated
    /// members that a cube made have the same id.
    Calculation * add_calculation(Hierarchy * hierarchy, KelpString const & name, Member const * parent = nullptr)
    {
        UniqueName const uniqueName = below(hierarchy->fUniqueName, name);
        make_room(hierarchy->fCalculations);
        Calculation * const calculation = insert(fCalculations, uniqueName, hierarchy, uniqueName.fText,
            parent != nullptr ? parent->fUniqueName : KelpString(), doubled(name));
        hierarchy->fCalculations.emplace_back(++fLastCalculationId, calculation);
        return calculation;
    }

    KelpString const & name() const { return fName; }
    bool flat_hierarchy_names() const { return fFlat; }

    Dimension * dimension(KelpString const & uniqueName) { return find(fDimensions, "dimension", uniqueName); }
    Hierarchy * hierarchy(KelpString const & uniqueName) { return find(fHierarchies, "hierarchy", uniqueName); }
    Level * level(KelpString const & uniqueName) { return find(fLevels, "level", uniqueName); }
    Member * member(KelpString const & uniqueName) { return find(fMembers, "member", uniqueName); }
    Calculation * calculation(KelpString const & uniqueName)
    {
        return find(fCalculations, "calculated member", uniqueName);
    }

    Parts<Dimension> const & dimensions() const { return fDimensions; }
    Parts<Hierarchy> const & hierarchies() const { return fHierarchies; }
    Parts<Level> const & levels() const { return fLevels; }
    Parts<Member> const & members() const { return fMembers; }
    Parts<Calculation> const & calculations() const { return fCalculations; }

private:
    static KelpString doubled(KelpString const & name)
    {
        KelpString text;
        double_sqaure_brackets(text, name);
        return text;
    }
    static UniqueName below(KelpString const & owner, KelpString const & name)
    {
        return UniqueName(owner + u"." + bracketed(name));
    }
    // Allocates now, so that the next emplace_back cannot throw.
    template <class Element>
    static void make_room(std::vector<Element> & elements)
    {
        elements.emplace_back();
        elements.pop_back();
    }
    template <class Part, class... Arguments>
    static Part * insert(Parts<Part> & parts, UniqueName const & uniqueName, Arguments const &... arguments)
    {
        auto const [place, isNew] = parts.try_emplace(uniqueName.fText, arguments...);
        if (!isNew)
            throw std::invalid_argument("The cube already has " + uniqueName.fText.toUTF8());
        return &place->second;
    }
    template <class Part>
    static Part * find(Parts<Part> & parts, char const * kind, KelpString const & uniqueName)
    {
        auto const found = parts.find(uniqueName);
        if (found == parts.end())
            throw std::out_of_range("The cube has no " + std::string(kind) + " " + uniqueName.toUTF8());
        return &found->second;
    }

    KelpString fName;
    bool fFlat;
    Parts<Dimension> fDimensions{};
    Parts<Hierarchy> fHierarchies{};
    Parts<Level> fLevels{};
    Parts<Member> fMembers{};
    Parts<Calculation> fCalculations{};
    BRIM_o::CalculationId fLastCalculationId = 0;
};

}
