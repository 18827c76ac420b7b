#pragma once
#include "odbomodule/host/kelp_string.h"

#include <cstdint>
#include <map>
#include <vector>

// The host's cube model, as far as the module looks at it. The host implements these classes; the module
// calls them during the host's own calls, on the same thread and with no lock held, keeps no pointer to
// them and deletes none. Names go into MDX unchanged. Whatever they throw passes through to the host.
namespace BRIM_o {

class Calculation;

using CalculationId = std::int32_t; // the host's own number for a calculated member

class Cube; // handed to the generator, never looked at

class Dimension {
public:
    virtual KelpString const & getName() const = 0;       // short, without brackets
    virtual KelpString const & getUniqueName() const = 0; // as MDX spells it
protected:
    ~Dimension() = default;
};

class Level {
public:
    virtual KelpString const & getUniqueName() const = 0;

protected:
    ~Level() = default;
};

// The operations of a hierarchy that speak of the hierarchy itself.
class HierarchyContents {
public:
    // The short name, without brackets; empty when the dimension's name says it all.
    virtual KelpString const & getName() const = 0;
    virtual KelpString const & getUniqueName() const = 0;

    // The level with that ordinal, 0 being the top; null if there is none.
    virtual Level * getLevel(std::int32_t index) const = 0;

    // The number of levels; the deepest level's ordinal is one less.
    virtual std::int32_t getLevelCount() = 0;

    // Fills `ids` with the hierarchy's calculated members, in the order of the text.
    virtual void getCalculationIds(std::vector<CalculationId> & ids) const = 0;

    // Sets `calculation` to the one with that id; never to null for an id from getCalculationIds.
    virtual bool getCalculation(CalculationId id, Calculation *& calculation) const = 0;

    // Fills the map with the hierarchy's calculated members, in the order of the text; a value may be null.
    virtual void getCalculations(std::map<CalculationId, Calculation *> & calculations) = 0;

protected:
    ~HierarchyContents() = default;
};

class DimensionChild {
public:
    virtual Dimension const * getDimension() const = 0; // never null
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

// A calculated member that the host defines.
class Calculation {
public:
    virtual Hierarchy const * getHierarchy() const = 0;
    virtual KelpString getUniqueName() const = 0;       // fit to stand in a list of members
    virtual KelpString getParentUniqueName() const = 0; // empty directly under the hierarchy
protected:
    ~Calculation() = default;
};

}
