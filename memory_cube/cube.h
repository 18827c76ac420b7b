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

// -Weffc++ warns of pointers that are copied and of an && of one's own; both are meant here.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Weffc++"
#endif

namespace memory_cube {

// A name in brackets, each "]" in it doubled; a text constant in single quotes, each of those in it doubled.
inline KelpString bracketed(KelpString const & name)
{
    KelpString doubled;
    double_sqaure_brackets(doubled, name);
    return u"[" + doubled + u"]";
}
inline KelpString quoted(KelpString const & text)
{
    KelpString doubled;
    quote_member_name(doubled, text);
    return u"'" + doubled + u"'";
}

// The parts of a cube, as plain structs. A short name is kept as it stands between brackets.
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

// The name is for Maker::calculated alone.
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
    KelpString fName; // empty if it has the name of its dimension
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
        auto const i = static_cast<std::size_t>(index); // a negative one is too large
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

// Owns the parts of a cube. The add_... functions take plain names and make the unique ones: brackets, and each "]"
// of a name doubled. A part stays where it is as long as the cube lives, and is found by its unique name. A part that is
// there already throws std::invalid_argument, an unknown name std::out_of_range.
class Cube {
public:
    template <class Part>
    using Parts = std::map<KelpString, Part>; // by unique name

    // `name` is the cube's in MDX. `flatHierarchyNames` is what the generator is made with too: it tells the unique
    // names [Time.Fiscal] from [Time].[Fiscal].
    explicit Cube(KelpString const & name, bool flatHierarchyNames = false) : fName(name), fFlat(flatHierarchyNames)
    {}
    Cube(Cube &&) = default; // a part stays where it is
    Cube & operator=(Cube &&) = default;

    Dimension * add_dimension(KelpString const & name)
    {
        KelpString const inner = doubled(name);
        KelpString const uniqueName = u"[" + inner + u"]";
        return insert(fDimensions, uniqueName, inner, uniqueName);
    }
    // Without a name the hierarchy has its dimension's.
    Hierarchy * add_hierarchy(Dimension const * dimension, KelpString const & name = {})
    {
        KelpString const inner = doubled(name);
        if (inner.empty())
            return insert(fHierarchies, dimension->fUniqueName, dimension, inner, dimension->fUniqueName);
        KelpString const uniqueName = fFlat ? KelpString(u"[" + dimension->fName + u"." + inner + u"]")
                                            : below(dimension->fUniqueName, name);
        return insert(fHierarchies, uniqueName, dimension, inner, uniqueName);
    }
    // The next level down.
    Level * add_level(Hierarchy * hierarchy, KelpString const & name)
    {
        KelpString const uniqueName = below(hierarchy->fUniqueName, name);
        Level * const level = insert(fLevels, uniqueName, uniqueName);
        hierarchy->fLevels.push_back(level);
        return level;
    }
    // A member of the top level, and one below another.
    Member * add_member(Hierarchy const * hierarchy, KelpString const & name)
    {
        KelpString const uniqueName = below(hierarchy->fUniqueName, name);
        return insert(fMembers, uniqueName, uniqueName);
    }
    Member * add_member(Member const * parent, KelpString const & name)
    {
        KelpString const uniqueName = below(parent->fUniqueName, name);
        return insert(fMembers, uniqueName, uniqueName);
    }
    // A calculated member, which a server knows by its hierarchy and its own name, wherever it hangs.
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
