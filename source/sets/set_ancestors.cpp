#include "set_ancestors.h"

#include "../host/cube_model.h"
#include "mdx_set.h"
#include "../text.h"

#include <algorithm>
#include <string_view>
#include <utility>

using namespace mdx_text;

namespace {

// The ancestors of a member from the count-th one down to the member itself: "a.Parent.Parent, a.Parent, a". The
// chain of a nearer ancestor is a suffix of this text, so one text serves for all chains.
class AncestorChain {
public:
    AncestorChain(KelpString const & member, std::u16string_view step, std::int64_t count)
        : fMemberLength(member.size()), fStepLength(step.size())
    {
        fText.reserve(length(count)); // throws at once if the chain is too long
        KelpString ancestor = member;
        for (std::int64_t i = 0; i < count; ++i)
            ancestor.append(step);
        for (; ancestor.size() > fMemberLength; ancestor.resize(ancestor.size() - fStepLength))
            append<u"$1, ">(fText, { ancestor });
        fText.append(member);
    }

    std::u16string_view from(std::int64_t count) const
    {
        return std::u16string_view(fText).substr(fText.size() - length(count));
    }

    // The length of the chain from the count-th ancestor: n + 1 members, 0 + 1 + ... + n steps and n separators.
    std::size_t length(std::int64_t count) const
    {
        auto const n = static_cast<std::size_t>(std::max<std::int64_t>(count, 0));
        return (n + 1) * fMemberLength + n * (n + 1) / 2 * fStepLength + n * 2;
    }

private:
    KelpString fText;
    std::size_t fMemberLength;
    std::size_t fStepLength;
};

// Reserves room for all chains from `count` down to the member, with `around` more characters for each. Throws at
// once if the text is too long, before it fills the memory of the machine.
void reserve_chains(KelpString & text, AncestorChain const & chain, std::int64_t count, std::size_t around)
{
    std::size_t length = 0;
    for (std::int64_t k = 0; k <= count; ++k)
        length += chain.length(k) + around;
    text.reserve(length);
}

// An upper bound for the text around one chain, not counting the name of the member or hierarchy.
constexpr std::size_t kAroundChain = 80;

}

MDXSet * MDXSet::TakeAncestorsOfMember(KelpString const & member, bool all, std::int32_t count)
{
    AncestorChain const chain(member, u".Parent", count);
    KelpString text;
    if (all)
        reserve_chains(text, chain, count, member.size() + kAroundChain);
    append<u" { Ancestor( $1, {$2}.Item(0).Item(0).Level )">(text, { member, chain.from(count) });
    for (std::int64_t k = std::int64_t{ count } - 1; all && k >= 0; --k)
        append<u", Ancestor( $1, {$2}.Item(0).Item(0).Level )">(text, { member, chain.from(k) });
    append<u" } ">(text);
    return rewrite(this, std::move(text));
}

MDXSet * MDXSet::TakeAncestorsOfSet(
    KelpString const & set, BRIM_o::Hierarchy const * hierarchy, bool all, std::int32_t count, std::int32_t)
{
    if (count != -1)
        return rewrite(this, counted_ancestors(set, hierarchy, all, count));
    KelpString const h = hierarchy->getUniqueName();
    if (all)
        return rewrite<u" GENERATE( $1, ASCENDANTS( $2.CURRENTMEMBER.PARENT) )">(this, { set, h });
    return rewrite<u" GENERATE( $1, { ANCESTOR( $2.CURRENTMEMBER, $2.CURRENTMEMBER.LEVEL.ORDINAL ) } )">(
        this, { set, h });
}

KelpString counted_ancestors(
    KelpString const & set, BRIM_o::Hierarchy const * hierarchy, bool all, std::int32_t count)
{
    KelpString const h = hierarchy->getUniqueName();
    AncestorChain const chain(mdx<u"$1.CURRENTMEMBER">({ h }), u".PARENT", count);
    if (!all)
        return mdx<u" GENERATE( $1 , { ANCESTOR( $2.CURRENTMEMBER, {$3}.ITEM(0).ITEM(0).LEVEL )  } ) ">(
            { set, h, chain.from(count) });

    KelpString text;
    reserve_chains(text, chain, count, h.size() + kAroundChain);
    append<u" GENERATE( $1 , { ">(text, { set });
    for (std::int64_t k = count; k >= 0; --k) {
        append<u"{ ANCESTOR( $1.CURRENTMEMBER.PARENT, { $2}.ITEM(0).ITEM(0).LEVEL ) }">(text, { h, chain.from(k) });
        if (k > 0)
            append<u", ">(text);
    }
    append<u" } ) ">(text);
    return text;
}
