#pragma once
#include "arguments.h"

#include <map>
#include <string>

// The steps, each with the least and the most arguments that it takes. A new one is one line.
template <class Object>
using Steps = std::map<std::string, Operation<void (*)(Object &, Arguments const &)>>;

extern Steps<MDXSet> const kSetSteps;
extern Steps<MDXField> const kMemberSteps;
extern Steps<MDXValue> const kValueSteps;

// The kinds of condition.
extern std::map<std::string, Operation<memory_cube::Condition (*)(Arguments const &)>> const kConditions;
