#pragma once
#include <odbomodule/expressions/member_names.h>
#include <odbomodule/host/cube_model.h>
#include <odbomodule/host/kelp_string.h>

#include <cstddef>
#include <cstdint>
#include <map>
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

/// The parts of a cube, as structs with public fields. A host may derive from them to add what it knows about a
/// part, but has to own such objects itself, because a Cube stores these structs by value. `fName` is the name as
/// MDX writes it between brackets: without the brackets, but with each "]" doubled.
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
    KelpString fParentUniqueName; // empty if the member is directly under the hierarchy
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
    std::vector<std::pair<BRIM_o::CalculationId, Calculation *>> fCalculations; // in the order MDX lists them

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

}

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
