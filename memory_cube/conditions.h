#pragma once
#include "condition.h"
#include "cube_parts.h"
#include "maker.h"

#include <utility>
#include <vector>

namespace memory_cube {

/// The functions that make conditions. They are in a namespace of their own because names such as value and text
/// are common: `using namespace memory_cube` does not bring them in.
namespace conditions {

/// MDX, inserted unchanged. If the text contains an operator, put parentheses around it.
inline Condition mdx(KelpString const & expression)
{
    return Condition(BRIM_o::ET_STRING, expression);
}
/// A text constant. The quotes are added.
inline Condition text(KelpString const & characters)
{
    return mdx(quoted(characters));
}
/// The tuple that is given to TakeFilter.
inline Condition current()
{
    return Condition(BRIM_o::ET_CURRENT);
}
/// The set that is filtered.
inline Condition current_set()
{
    return Condition(BRIM_o::ET_CURRENTSET);
}
/// ( first, second ), from one or more members.
inline Condition tuple(std::vector<Condition> members)
{
    return Condition(BRIM_o::ET_TUPLE, std::move(members));
}
/// The value of a tuple, member or other condition. `+`, `-`, `*` and `/` put parentheses around any operand that
/// is not a value().
inline Condition value(Condition const & x)
{
    return Condition::of(BRIM_o::ET_TUPLE_VALUE, Condition::Whole, { x });
}
/// The value of a member, as value() writes it, but in arithmetic with parentheses around it.
inline Condition member_value(Condition const & x)
{
    return Condition::of(BRIM_o::ET_MEMBER_VALUE, Condition::Whole, { x });
}
/// IsEmpty( member ): true if the cell of the member or tuple is empty.
inline Condition is_empty(RefPtr<MDXField> const & member)
{
    return mdx(u"IsEmpty( " + member->getText() + u" )");
}
/// IsEmpty( ( first, second ) )
inline Condition is_empty(RefPtr<MDXTuple> const & key)
{
    return mdx(u"IsEmpty( " + key->getText() + u" )");
}
/// x = NULL, or ( x ) = NULL if x is neither tuple() nor current(). Use is_empty to test whether there is a value:
/// on some servers this comparison is never true, on others it is also true for 0.
inline Condition is_null(Condition const & x)
{
    BRIM_o::ExpressionType const type = x.get()->getType();
    bool const isTuple = type == BRIM_o::ET_TUPLE || type == BRIM_o::ET_CURRENT;
    return Condition::of(BRIM_o::ET_TUPLE_IS_NULL, Condition::Or, { isTuple ? x : tuple({ x }) });
}
/// x >= low AND x <= high
inline Condition between(Condition const & x, Condition const & low, Condition const & high)
{
    return Condition::of(BRIM_o::ET_BETWEEN, Condition::Sum, { x, low, high });
}
/// x < low OR x > high
inline Condition outside(Condition const & x, Condition const & low, Condition const & high)
{
    return Condition::of(BRIM_o::ET_OUTSIDE, Condition::Sum, { x, low, high });
}
/// a AND b AND c; true if `all` is empty.
inline Condition all_of(std::vector<Condition> const & all)
{
    return all.empty() ? Condition(true)
                       : Condition::joined(BRIM_o::ET_AND, Condition::And, all.data(), all.size());
}
/// a OR b OR c; false if `all` is empty.
inline Condition any_of(std::vector<Condition> const & all)
{
    return all.empty() ? Condition(false) : Condition::joined(BRIM_o::ET_OR, Condition::Or, all.data(), all.size());
}

}

/// set->TakeFilter. Throws MDX_ERR_MISSING_TUPLE if the condition has current() and there is no `current`.
inline void take_filter(
    RefPtr<MDXSet> const & set, Condition const & condition, RefPtr<MDXTuple> const & current = {})
{
    set->TakeFilter(condition.get(current), current.get());
}

inline RefPtr<MDXValue> Maker::value(Condition const & condition, RefPtr<MDXTuple> const & current) const
{
    RefPtr<MDXSet> const text = set();
    text->Filter(condition.get(current), current.get());
    return value(text->getText());
}

}
