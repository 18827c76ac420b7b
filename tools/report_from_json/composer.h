#pragma once
#include "json_place.h"
#include <odbomodule/memory_cube.h>

#include <sstream>
#include <string>
#include <vector>

// Makes the objects that a report file describes, and records the text after each step.
class Composer {
public:
    explicit Composer(memory_cube::Cube & cube) : fCube(cube), fMake(cube) {}

    memory_cube::Maker const & make() const { return fMake; }
    std::string take_steps()
    {
        std::string steps = fSteps.str();
        fSteps.str("");
        return steps;
    }

    memory_cube::Hierarchy * hierarchy(Place const & place);
    memory_cube::Level * level(Place const & place);
    memory_cube::Calculation * calculation(Place const & place);
    std::vector<BRIM_o::Calculation *> calculations(Place const & place);

    RefPtr<MDXField> member(Place const & place);
    std::vector<RefPtr<MDXField>> members(Place const & place);
    RefPtr<MDXTuple> tuple(Place const & place);
    std::vector<RefPtr<MDXTuple>> tuples(Place const & place);
    RefPtr<MDXSet> set(Place const & place);
    RefPtr<MDXValue> value(Place const & place);
    memory_cube::Condition condition(Place const & place);

private:
    template <class Object, class Table>
    void take_steps(Object & object, Place const & place, Table const & table);

    memory_cube::Cube & fCube;
    memory_cube::Maker fMake;
    std::ostringstream fSteps;
};
