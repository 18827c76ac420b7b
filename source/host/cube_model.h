#pragma once
#include "kelp_string.h"

#include <cstdint>
#include <map>
#include <vector>

/// \file
/// The host's cube model, as far as the module reads it. The host implements these classes. The module calls them
/// during the host's own calls, on the same thread and with no lock held. It keeps no pointer to them and deletes
/// none. Names are inserted into MDX unchanged. What these classes throw passes through to the host.
namespace BRIM_o {

class Calculation;

using CalculationId = std::int32_t; ///< the host's own number for a calculated member

class Cube; ///< passed to the generator and never read

class Dimension {
public:
    virtual KelpString const & getName() const = 0;       ///< the short name, without brackets
    virtual KelpString const & getUniqueName() const = 0; ///< as MDX spells it

protected:
    ~Dimension() = default;
};

class Level {
public:
    virtual KelpString const & getUniqueName() const = 0;

protected:
    ~Level() = default;
};

/// What a hierarchy contains.
class HierarchyContents {
public:
    /// The short name, without brackets. Empty if the hierarchy has the name of its dimension.
    virtual KelpString const & getName() const = 0;
    virtual KelpString const & getUniqueName() const = 0;

    /// The level with ordinal `index`, counted from 0 at the top; null below the deepest level.
    virtual Level * getLevel(std::int32_t index) const = 0;

    /// The number of levels, including the "(All)" level if the hierarchy has one.
    virtual std::int32_t getLevelCount() = 0;

    /// Fills `ids`, which is empty, with the hierarchy's calculated members, in the order in which MDX text is to
    /// list them.
    virtual void getCalculationIds(std::vector<CalculationId> & ids) const = 0;

    /// Sets `calculation` to the calculated member with that id. For an id from getCalculationIds, `calculation`
    /// must not be null afterwards. The return value is not read.
    virtual bool getCalculation(CalculationId id, Calculation *& calculation) const = 0;

    /// Fills the map, which is empty, with the hierarchy's calculated members. They are written in the order of
    /// their ids; null entries are skipped.
    virtual void getCalculations(std::map<CalculationId, Calculation *> & calculations) = 0;

protected:
    ~HierarchyContents() = default;
};

class DimensionChild {
public:
    virtual Dimension const * getDimension() const = 0; ///< never null

protected:
    ~DimensionChild() = default;
};

class Hierarchy : public HierarchyContents, public DimensionChild {
protected:
    ~Hierarchy() = default;
};

class Member {
public:
    virtual KelpString const & getUniqueName() const = 0;

protected:
    ~Member() = default;
};

/// A calculated member that the host defines.
class Calculation {
public:
    virtual Hierarchy const * getHierarchy() const = 0;
    virtual KelpString getUniqueName() const = 0;       ///< inserted where MDX lists or names the member
    virtual KelpString getParentUniqueName() const = 0; ///< empty if the member is directly under the hierarchy

protected:
    ~Calculation() = default;
};

}
