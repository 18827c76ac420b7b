#include "steps.h"

using namespace memory_cube::conditions;

using memory_cube::Condition;
using A = Arguments const;

// clang-format off
std::map<std::string, Operation<Condition (*)(Arguments const &)>> const kConditions = {
    { "!=", { 2, 2, [](A & a) { return a.condition(0) != a.condition(1); } } },
    { "*", { 2, 2, [](A & a) { return a.condition(0) * a.condition(1); } } },
    { "+", { 2, 2, [](A & a) { return a.condition(0) + a.condition(1); } } },
    { "-", { 1, 2, [](A & a) { return a.has(1) ? a.condition(0) - a.condition(1) : -a.condition(0); } } },
    { "/", { 2, 2, [](A & a) { return a.condition(0) / a.condition(1); } } },
    { "<", { 2, 2, [](A & a) { return a.condition(0) < a.condition(1); } } },
    { "<=", { 2, 2, [](A & a) { return a.condition(0) <= a.condition(1); } } },
    { "=", { 2, 2, [](A & a) { return a.condition(0) == a.condition(1); } } },
    { ">", { 2, 2, [](A & a) { return a.condition(0) > a.condition(1); } } },
    { ">=", { 2, 2, [](A & a) { return a.condition(0) >= a.condition(1); } } },
    { "and", { 2, kAnyCount, [](A & a) { return all_of(a.conditions()); } } },
    { "between", { 3, 3, [](A & a) { return between(a.condition(0), a.condition(1), a.condition(2)); } } },
    { "current", { 0, 0, [](A &) { return current(); } } },
    { "current set", { 0, 0, [](A &) { return current_set(); } } },
    { "is empty", { 1, 1, [](A & a) { return is_empty(a.tuple(0)); } } },
    { "is null", { 1, 1, [](A & a) { return is_null(a.condition(0)); } } },
    { "mdx", { 1, 1, [](A & a) { return mdx(a.text(0)); } } },
    { "not", { 1, 1, [](A & a) { return !a.condition(0); } } },
    { "or", { 2, kAnyCount, [](A & a) { return any_of(a.conditions()); } } },
    { "outside", { 3, 3, [](A & a) { return outside(a.condition(0), a.condition(1), a.condition(2)); } } },
    { "set", { 1, 1, [](A & a) { return Condition(a.set(0)); } } },
    { "text", { 1, 1, [](A & a) { return text(a.text(0)); } } },
    { "tuple", { 1, kAnyCount, [](A & a) { return tuple(a.conditions()); } } },
    { "value", { 1, 1, [](A & a) { return value(a.condition(0)); } } },
};
// clang-format on
