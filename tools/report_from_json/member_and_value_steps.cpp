#include "steps.h"

using A = Arguments const;

// clang-format off
Steps<MDXField> const kMemberSteps = {
    { "DrillUp", { 0, 0, [](MDXField & m, A &) { m.DrillUp(nullptr); } } },
    { "LoopLeft", { 0, 0, [](MDXField & m, A &) { m.LoopLeft(); } } },
    { "LoopRight", { 0, 0, [](MDXField & m, A &) { m.LoopRight(); } } },
    { "MoveToChild", { 1, 1, [](MDXField & m, A & a) { m.MoveToChild(a.text(0)); } } },
    { "MoveToFirstChild", { 0, 0, [](MDXField & m, A &) { m.MoveToFirstChild(); } } },
    { "MoveToFirstSibling", { 0, 0, [](MDXField & m, A &) { m.MoveToFirstSibling(); } } },
    { "MoveToLastSibling", { 0, 0, [](MDXField & m, A &) { m.MoveToLastSibling(); } } },
    { "MoveToParent", { 0, 0, [](MDXField & m, A &) { m.MoveToParent(); } } },
    { "TakeAncestorAtLevel", { 1, 1, [](MDXField & m, A & a) { m.TakeAncestorAtLevel(nullptr, a.number(0)); } } },
    { "TakeCurrentMember", { 1, 1, [](MDXField & m, A & a) { m.TakeCurrentMember(a.hierarchy(0)); } } },
    { "TakeDefaultMember", { 1, 1, [](MDXField & m, A & a) { m.TakeDefaultMember(a.hierarchy(0)); } } },
};

Steps<MDXValue> const kValueSteps = {
    { "Add", { 1, 1, [](MDXValue & v, A & a) { v.Add(a.number(0)); } } },
    { "ReverseSign", { 0, 0, [](MDXValue & v, A &) { v.ReverseSign(); } } },
    { "TakeAverage", { 1, 1, [](MDXValue & v, A & a) { v.TakeAverage(a.set(0).get()); } } },
    { "TakeCaption", { 1, 1, [](MDXValue & v, A & a) { v.TakeCaption(a.member(0).get()); } } },
    { "TakeCorrelation", { 2, 3, [](MDXValue & v, A & a) {
        v.TakeCorrelation(a.set(0).get(), a.value(1).get(), a.value_or_null(2).get()); } } },
    { "TakeCount", { 1, 1, [](MDXValue & v, A & a) { v.TakeCount(a.set(0).get()); } } },
    { "TakeCovariance", { 2, 4, [](MDXValue & v, A & a) {
        v.TakeCovariance(a.set(0).get(), a.value(1).get(), a.value_or_null(2).get(), a.flag(3)); } } },
    { "TakeDescription", { 1, 1, [](MDXValue & v, A & a) { v.TakeDescription(a.member(0).get()); } } },
    { "TakeEquality", { 1, 1, [](MDXValue & v, A & a) { v.TakeEquality(a.text(0)); } } },
    { "TakeLinRegIntercept", { 2, 3, [](MDXValue & v, A & a) {
        v.TakeLinRegIntercept(a.set(0).get(), a.value(1).get(), a.value_or_null(2).get()); } } },
    { "TakeLinRegPoint", { 3, 4, [](MDXValue & v, A & a) {
        v.TakeLinRegPoint(a.value(0).get(), a.set(1).get(), a.value(2).get(), a.value_or_null(3).get()); } } },
    { "TakeLinRegR2", { 2, 3, [](MDXValue & v, A & a) {
        v.TakeLinRegR2(a.set(0).get(), a.value(1).get(), a.value_or_null(2).get()); } } },
    { "TakeLinRegSlope", { 2, 3, [](MDXValue & v, A & a) {
        v.TakeLinRegSlope(a.set(0).get(), a.value(1).get(), a.value_or_null(2).get()); } } },
    { "TakeLinRegVariance", { 2, 3, [](MDXValue & v, A & a) {
        v.TakeLinRegVariance(a.set(0).get(), a.value(1).get(), a.value_or_null(2).get()); } } },
    { "TakeMax", { 1, 1, [](MDXValue & v, A & a) { v.TakeMax(a.set(0).get()); } } },
    { "TakeMin", { 1, 1, [](MDXValue & v, A & a) { v.TakeMin(a.set(0).get()); } } },
    { "TakeName", { 1, 1, [](MDXValue & v, A & a) { v.TakeName(a.member(0).get()); } } },
    { "TakeProperty", { 2, 2, [](MDXValue & v, A & a) { v.TakeProperty(a.member(0).get(), a.text(1)); } } },
    { "TakeSum", { 1, 1, [](MDXValue & v, A & a) { v.TakeSum(a.set(0).get()); } } },
    { "TakeUniqueName", { 1, 1, [](MDXValue & v, A & a) { v.TakeUniqueName(a.member(0).get()); } } },
};
// clang-format on
