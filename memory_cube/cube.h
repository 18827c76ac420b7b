#pragma once
#include <odbomodule/expressions/member_names.h>
#include <odbomodule/host/cube_model.h>
#include <odbomodule/host/kelp_string.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

// -Weffc++ objects to structs that hold pointers and declare no copy functions. These pointers own nothing.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Weffc++"
#endif

namespace memory_cube {

/// [name], with each "]" in the name doubled.
inline KelpString bracketed(KelpString const & name)
{
    KelpString doubled;
    double_sqaure_brackets(doubled, name);
    return u"[" + doubled + u"]";
}

/// 'text', with each single quote in the text doubled.
inline KelpString quoted(KelpString const & text)
{
    KelpString doubled;
    quote_member_name(doubled, text);
    return u"'" + doubled + u"'";
}

/// The parts of a cube are plain structs. A host may derive from them to add what it knows about a part. `fName` is
/// the name as MDX writes it between brackets: without the brackets, but with each "]" doubled.
struct Dimension : BRIM_o::Dimension {
    KelpString fName;
    KelpString fUniqueName;

    Dimension(KelpString const & name, KelpString const & uniqueName) : fName(name), fUniqueName(uniqueName) {}
    virtual ~Dimension() = default;
    KelpString const & getName() const override { return fName; }
    KelpString const & getUniqueName() const override { return fUniqueName; }
};

struct Level : BRIM_o::Level {
    KelpString fUniqueName;

    explicit Level(KelpString const & uniqueName) : fUniqueName(uniqueName) {}
    virtual ~Level() = default;
    KelpString const & getUniqueName() const override { return fUniqueName; }
};

struct Member : BRIM_o::Member {
    KelpString fUniqueName;

    explicit Member(KelpString const & uniqueName) : fUniqueName(uniqueName) {}
    virtual ~Member() = default;
    KelpString const & getUniqueName() const override { return fUniqueName; }
};

/// A calculated member. Only Maker::calculated reads `fName`.
struct Calculation : BRIM_o::Calculation {
    BRIM_o::Hierarchy const * fHierarchy;
    KelpString fUniqueName;
    KelpString fParentUniqueName; // empty directly under the hierarchy
    KelpString fName;

    Calculation(BRIM_o::Hierarchy const * hierarchy, KelpString const & uniqueName, KelpString const & parent = {},
        KelpString const & name = {})
        : fHierarchy(hierarchy), fUniqueName(uniqueName), fParentUniqueName(parent), fName(name)
    {}
    virtual ~Calculation() = default;
    BRIM_o::Hierarchy const * getHierarchy() const override { return fHierarchy; }
    KelpString getUniqueName() const override { return fUniqueName; }
    KelpString getParentUniqueName() const override { return fParentUniqueName; }
};

struct Hierarchy : BRIM_o::Hierarchy {
    Dimension const * fDimension;
    KelpString fName; // empty if the hierarchy has the name of its dimension
    KelpString fUniqueName;
    std::vector<Level *> fLevels;                                               // from the top down
    std::vector<std::pair<BRIM_o::CalculationId, Calculation *>> fCalculations; // in the order of the text

    Hierarchy(Dimension const * dimension, KelpString const & name, KelpString const & uniqueName)
        : fDimension(dimension), fName(name), fUniqueName(uniqueName)
    {}
    virtual ~Hierarchy() = default;
    KelpString const & getName() const override { return fName; }
    KelpString const & getUniqueName() const override { return fUniqueName; }
    BRIM_o::Level * getLevel(std::int32_t index) const override
    {
        auto const i = static_cast<std::size_t>(index); // a negative index becomes too large
        return i < fLevels.size() ? fLevels[i] : nullptr;
    }
    std::int32_t getLevelCount() override { return static_cast<std::int32_t>(fLevels.size()); }
    void getCalculationIds(std::vector<BRIM_o::CalculationId> & ids) const override
    {
        for (auto const & [id, calculation] : fCalculations)
            ids.push_back(id);
    }
    bool getCalculation(BRIM_o::CalculationId wanted, BRIM_o::Calculation *& found) const override
    {
        for (auto const & [id, calculation] : fCalculations) {
            if (id == wanted) {
                found = calculation;
                return true;
            }
        }
        return false;
    }
    void getCalculations(std::map<BRIM_o::CalculationId, BRIM_o::Calculation *> & all) override
    {
        for (auto const & [id, calculation] : fCalculations)
            all[id] = calculation;
    }
    BRIM_o::Dimension const * getDimension() const override { return fDimension; }
};

/// Owns the parts of a cube. The add_... functions take plain names and make the unique names: they add the
/// brackets and double each "]" of a name. They throw std::invalid_argument if the cube already has that part. A
/// part keeps its address until the cube ends. Parts are found by their unique names; an unknown name throws
/// std::out_of_range.
class Cube {
public:
    template <class Part>
    using Parts = std::map<KelpString, Part>; // by unique name

    /// `name` is the cube's name in MDX, with its brackets. With `flatHierarchyNames` the unique name of a
    /// hierarchy is [Time.Fiscal], otherwise [Time].[Fiscal]. The generator has to be made with the same flag.
    explicit Cube(KelpString const & name, bool flatHierarchyNames = false) : fName(name), fFlat(flatHierarchyNames)
    {}
    Cube(Cube &&) = default; // parts keep their addresses
    Cube & operator=(Cube &&) = default;

    Dimension * add_dimension(KelpString const & name)
    {
        KelpString const inner = doubled(name);
        KelpString const uniqueName = u"[" + inner + u"]";
        return insert(fDimensions, uniqueName, inner, uniqueName);
    }
    /// Without a name the hierarchy has the name of its dimension.
    Hierarchy * add_hierarchy(Dimension const * dimension, KelpString const & name = {})
    {
        KelpString const inner = doubled(name);
        if (inner.empty())
            return insert(fHierarchies, dimension->fUniqueName, dimension, inner, dimension->fUniqueName);
        KelpString const uniqueName = fFlat ? KelpString(u"[" + dimension->fName + u"." + inner + u"]")
                                            : below(dimension->fUniqueName, name);
        return insert(fHierarchies, uniqueName, dimension, inner, uniqueName);
    }
    /// Adds the next level down.
    Level * add_level(Hierarchy * hierarchy, KelpString const & name)
    {
        KelpString const uniqueName = below(hierarchy->fUniqueName, name);
        Level * const level = insert(fLevels, uniqueName, uniqueName);
        hierarchy->fLevels.push_back(level);
        return level;
    }
    /// Adds a member of the top level.
    Member * add_member(Hierarchy const * hierarchy, KelpString const & name)
    {
        KelpString const uniqueName = below(hierarchy->fUniqueName, name);
        return insert(fMembers, uniqueName, uniqueName);
    }
    /// Adds a child of another member.
    Member * add_member(Member const * parent, KelpString const & name)
    {
        KelpString const uniqueName = below(parent->fUniqueName, name);
        return insert(fMembers, uniqueName, uniqueName);
    }
    /// Adds a calculated member. Its unique name is the hierarchy's and its own name, even if it has a parent.
    Calculation * add_calculation(Hierarchy * hierarchy, KelpString const & name, Member const * parent = nullptr)
    {
        KelpString const uniqueName = below(hierarchy->fUniqueName, name);
        Calculation * const calculation = insert(fCalculations, uniqueName, hierarchy, uniqueName,
            parent != nullptr ? parent->fUniqueName : KelpString(), doubled(name));
        hierarchy->fCalculations.emplace_back(
            static_cast<BRIM_o::CalculationId>(hierarchy->fCalculations.size() + 1), calculation);
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
    static KelpString below(KelpString const & owner, KelpString const & name)
    {
        return owner + u"." + bracketed(name);
    }
    template <class Part, class... Arguments>
    static Part * insert(Parts<Part> & parts, KelpString const & uniqueName, Arguments const &... arguments)
    {
        auto const [place, isNew] = parts.try_emplace(uniqueName, arguments...);
        if (!isNew)
            throw std::invalid_argument("The cube has " + uniqueName.toUTF8() + " already");
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
    Parts<Dimension> fDimensions;
    Parts<Hierarchy> fHierarchies;
    Parts<Level> fLevels;
    Parts<Member> fMembers;
    Parts<Calculation> fCalculations;
};

}

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
