#include "odbomodule/sets/mdx_set.h"

#include "odbomodule/base/text.h"
#include "odbomodule/host/cube_model.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace {

// The way down from the count-th ancestor of a member to the member itself, as "a.Parent.Parent, a.Parent, a".
// The way from a nearer ancestor is the tail of it, so that one text serves them all.
class AncestorChain {
public:
    AncestorChain(KelpString const & member, KelpString const & step, std::int64_t count)
        : fMember(member.size()), fStep(step.size())
    {
        count = std::max<std::int64_t>(count, 0);
        if (static_cast<double>(count) * static_cast<double>(count) > static_cast<double>(fText.max_size()))
            throw std::length_error("a chain of ancestors that no text can hold");
        fText.reserve(length(count));
        KelpString steps;
        for (std::int64_t i = 0; i < count; ++i)
            steps.append(step);
        for (std::int64_t generation = count; generation >= 0; --generation) {
            append(
                fText, member, std::u16string_view(steps).substr(0, fStep * static_cast<std::size_t>(generation)));
            if (generation > 0)
                append(fText, ", ");
        }
    }

    std::u16string_view from(std::int64_t count) const
    {
        return std::u16string_view(fText).substr(fText.size() - length(count));
    }

    // The length of all chains from `count` down to the member, with room for `around` characters beside each.
    std::size_t length_of_all(std::int64_t count, std::size_t around) const
    {
        std::size_t sum = 0;
        for (std::int64_t k = count; k >= 0; --k)
            sum += length(k) + around;
        return sum;
    }

private:
    std::size_t length(std::int64_t count) const
    {
        std::size_t const n = count < 0 ? 0 : static_cast<std::size_t>(count);
        return (n + 1) * fMember + n * (n + 1) / 2 * fStep + n * 2;
    }

    KelpString fText;
    std::size_t fMember;
    std::size_t fStep;
};

// What stands around a chain, beside the member or hierarchy; an estimate will do.
constexpr std::size_t kAroundChain = 80;

}

MDXSet * MDXSet::TakeAncestorsOfMember(KelpString const & member, bool all, std::int32_t count)
{
    fQuotedTextValid = false;
    AncestorChain const chain(member, ".Parent", count);

    KelpString text = concat(" { Ancestor( ", member, ", {", chain.from(count), "}.Item(0).Item(0).Level )");
    if (all) {
        text.reserve(chain.length_of_all(count, member.size() + kAroundChain));
        for (std::int64_t k = std::int64_t{ count } - 1; k >= 0; --k)
            append(text, ", Ancestor( ", member, ", {", chain.from(k), "}.Item(0).Item(0).Level )");
    }
    append(text, " } ");
    fText = std::move(text);
    return this;
}

MDXSet * MDXSet::TakeAncestorsOfSet(
    KelpString const & set, BRIM_o::Hierarchy const * hierarchy, bool all, std::int32_t count, std::int32_t)
{
    if (count != -1)
        return take_counted_ancestors(set, hierarchy, all, count);

    fQuotedTextValid = false;
    KelpString const h = hierarchy->getUniqueName();
    if (all)
        fText = concat(" GENERATE( ", set, ", ASCENDANTS( ", h, ".CURRENTMEMBER.PARENT) )");
    else
        fText = concat(
            " GENERATE( ", set, ", { ANCESTOR( ", h, ".CURRENTMEMBER, ", h, ".CURRENTMEMBER.LEVEL.ORDINAL ) } )");
    return this;
}

MDXSet * MDXSet::take_counted_ancestors(
    KelpString const & set, BRIM_o::Hierarchy const * hierarchy, bool all, std::int32_t count)
{
    fQuotedTextValid = false;
    KelpString const h = hierarchy->getUniqueName();
    AncestorChain const chain(concat(h, ".CURRENTMEMBER"), ".PARENT", count);

    if (!all) {
        fText = concat(" GENERATE( ", set, " , { ANCESTOR( ", h, ".CURRENTMEMBER, {", chain.from(count),
            "}.ITEM(0).ITEM(0).LEVEL )  } ) ");
        return this;
    }
    KelpString text = concat(" GENERATE( ", set, " , { ");
    text.reserve(text.size() + chain.length_of_all(count, h.size() + kAroundChain));
    for (std::int64_t k = count; k >= 0; --k) {
        if (k < count)
            append(text, ", ");
        append(text, "{ ANCESTOR( ", h, ".CURRENTMEMBER.PARENT, { ", chain.from(k), "}.ITEM(0).ITEM(0).LEVEL ) }");
    }
    append(text, " } ) ");
    fText = std::move(text);
    return this;
}
