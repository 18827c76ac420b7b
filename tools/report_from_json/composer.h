#pragma once
#include "json_place.h"
#include <odbomodule/memory_cube.h>

#include <string>
#include <utility>
#include <vector>

// Makes the objects that a report file describes. The lengths of their texts are limited: sixteen LoopLeft steps,
// for example, multiply the length of a text by four billion.
class Composer {
public:
    Composer(memory_cube::Cube & cube, bool recordSteps) : fCube(cube), fMake(cube), fRecordSteps(recordSteps) {}

    memory_cube::Maker const & make() const { return fMake; }
    // Returns and forgets the recorded text of each step since the last call.
    std::string take_recorded() { return std::exchange(fRecorded, {}); }

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

    // Adds this length to the total. Rejects `place` if the length or the total exceeds its limit.
    void expect_room(double length, Place const & place);

private:
    template <class Object, class Table>
    void take_steps(Object & object, Place const & place, Table const & table);

    memory_cube::Cube & fCube;
    memory_cube::Maker fMake;
    bool fRecordSteps;
    std::string fRecorded;
    double fTotal = 0; // the sum of the lengths given to expect_room
};
