#pragma once
#include "arguments.h"

#include <map>
#include <string>

// The steps that a report file can name. A new step is one line in a table.
template <class Object>
using Steps = std::map<std::string, Operation<void (*)(Object &, Arguments const &)>>;

extern Steps<MDXSet> const kSetSteps;
extern Steps<MDXField> const kMemberSteps;
extern Steps<MDXValue> const kValueSteps;

// The kinds of condition that a report file can name.
extern std::map<std::string, Operation<memory_cube::Condition (*)(Arguments const &)>> const kConditions;
