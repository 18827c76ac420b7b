#pragma once
#include "../host/export.h"
#include "../host/kelp_string.h"
#include "../refcount.h"

#include <cstdint>
#include <vector>
namespace BRIM_o {
class Calculation;
class Dimension;
class Expression;
class Hierarchy;
class Level;
}
class MDXField;
class MDXTuple;
class MDXValue;
namespace mdx_text {
struct TextFields;
}

MDX_EXPORTS_BEGIN

/// A set expression. The object is its MDX text: each operation rewrites the text and returns the set itself, for
/// chaining, without a new reference. "this" below is the text before the call; an operation that does not mention
/// it drops that text. A set remembers nothing else: drilling down twice writes the function twice.
///
/// Arguments are read during the call and not kept. They may not be null unless an operation says so, and texts are
/// inserted unchanged. During a call, the set calls functions of its arguments and of host objects. These functions
/// may read the set but must not change it.
///
/// Besides MDXError, an operation may throw what the host's objects throw, std::bad_alloc, std::length_error and,
/// for a condition that lacks an operand, std::out_of_range. Unless an operation says otherwise, the text is then
/// unchanged.
class MDX_API MDXSet : public support::RefCount {
public:
    enum ExtremityType : std::int32_t { Top = 0, Bottom = 1 };
    enum ExtremityMeasure : std::int32_t { Sum = 0, Count = 1, Percent = 2 };

    /// The empty set.
    MDXSet();
    /// The text itself, unchanged.
    explicit MDXSet(KelpString const & text);
    explicit MDXSet(KelpString && text);
    /// The current text of `other`.
    explicit MDXSet(MDXSet const * other);
    /// { first, second }. Throws MDX_ERR_EMPTY_TUPLE if a tuple has no field.
    explicit MDXSet(std::vector<MDXField *> const & fields);
    explicit MDXSet(std::vector<MDXTuple *> const & tuples);
    /// level.MEMBERS
    explicit MDXSet(BRIM_o::Level const * level);
    /// {hierarchy.allmembers}
    explicit MDXSet(BRIM_o::Hierarchy const * hierarchy);
    MDXSet(MDXSet const & other) = default;

    /// Copies the other's text. Keeps its own reference count and id.
    void operator=(MDXSet const & other);

    /// The text.
    virtual KelpString getText() const;
    /// The text with each single quote doubled, for use between single quotes.
    virtual KelpString getQuotedText();
    /// Assigns the text to `out`.
    virtual void writeText(KelpString & out) const;

    /// UNION(this, {field})
    virtual MDXSet * operator+=(MDXField const & field);
    /// UNION(this, other)
    virtual MDXSet * operator+=(MDXSet const & other);
    /// EXCEPT(this, {other})
    virtual MDXSet * operator-=(MDXSet const & other);
    /// CROSSJOIN(this, other)
    virtual MDXSet * operator*=(MDXSet const & other);

    /// The members of the anchor's level, calculated ones included, between two offsets from the anchor. Either
    /// offset may be the lower one. The anchor's text must be a member, not a tuple of several. Here and below, a
    /// tuple without a field throws MDX_ERR_EMPTY_TUPLE.
    virtual MDXSet * TakeSubset(MDXTuple const * anchor, std::int32_t offset1, std::int32_t offset2);
    /// The part of the set from `first` to `second`, whichever of the two comes first. Empty if either is not in
    /// the set.
    virtual MDXSet * TakeSubset(MDXTuple const * first, MDXTuple const * second);
    /// SUBSET(this, start, count). A negative count is left out. `start` counts from 0 and is not checked.
    virtual MDXSet * TakeSubset(std::int32_t start, std::int32_t count);

    /// UNION(this, {field}), like +=. Without `unite`, appends ", field" to the text; call Delimit to make that a
    /// set.
    virtual MDXSet * AddField(MDXField const & field, bool unite);
    /// ADDCALCULATEDMEMBERS(this). Adds the calculated members that are siblings of a member of the set. A
    /// calculated member without a parent is a sibling of the All member: a set of All's children does not get it.
    virtual MDXSet * AddCalculations();
    /// STRIPCALCULATEDMEMBERS(this). With `byName`, the sets of the MSOLAP generator instead write EXCEPT(this,
    /// {names}) with the hierarchy's calculated members, each of which must be defined on the server or in the
    /// statement. Without `byName`, the hierarchy is not read and may be null.
    virtual MDXSet * StripCalculations(BRIM_o::Hierarchy const * hierarchy, bool byName);
    /// HIERARCHIZE(this), which discards an earlier Order. The first argument has no effect. Only the sets of the
    /// MSOLAP generator read the others, and only if `hierarchy` is not null: they first call
    /// StripCalculations(hierarchy, byName) and afterwards append all `calculations`, even those that were not in
    /// the set. To remove any of these, call TakeFilter after Hierarchize. If the host throws or memory runs out,
    /// the text is then that of the last completed step.
    virtual MDXSet * Hierarchize(bool, BRIM_o::Hierarchy const * hierarchy, bool byName,
        std::vector<BRIM_o::Calculation *> const & calculations);
    /// HIERARCHIZE(this). The argument has no effect. The sets of the MSOLAP generator leave the text unchanged.
    virtual MDXSet * HierarchizeCalculations(bool);
    /// DISTINCT(this)
    virtual MDXSet * SpecifyDistinct();
    /// The empty set.
    virtual MDXSet * Empty();

    /// { top level.Members }. Writes only the braces if the hierarchy is null or has no level. If the host throws
    /// or memory runs out, the text is the opening brace. The top level is the "(All)" level if the hierarchy has
    /// one.
    virtual MDXSet * TakeTopLevel(BRIM_o::Hierarchy const * hierarchy);
    /// level.MEMBERS
    virtual MDXSet * TakeWholeLevel(BRIM_o::Level const * level);
    /// name.MEMBERS. The name of a dimension is valid only if the dimension has one hierarchy.
    virtual MDXSet * TakeAllMembers(KelpString const & name);
    /// hierarchy.MEMBERS
    virtual MDXSet * TakeAllMembers(BRIM_o::Hierarchy const * hierarchy);
    /// The leaves of the hierarchy and its calculated members, by GENERATE over the top level. If the host throws
    /// or memory runs out while the calculated members are asked for, the text is the leaves. getLevelCount must
    /// count the "(All)" level if there is one. The sets of the MSOLAP generator give the members of the deepest
    /// level, without calculated members.
    virtual MDXSet * TakeLeafNodes(BRIM_o::Hierarchy * hierarchy);
    /// The members of a level. `level` counts from 1 and is not checked.
    virtual MDXSet * TakeBaseLevel(BRIM_o::Hierarchy const * hierarchy, std::int32_t level);

    /// DRILLDOWNMEMBER(this, {given}); the hierarchy is not read and may be null. With `recursive`,
    /// DRILLDOWNMEMBER(this, hierarchy.MEMBERS, RECURSIVE); `given` is not read.
    virtual MDXSet * DrillDown(BRIM_o::Hierarchy const * hierarchy, KelpString const & given, bool recursive);
    /// DRILLDOWNMEMBER(this, {given}). Start from one level or from the All member, not from all members: if the
    /// children of a member already follow it, some servers leave it as it is and others insert the children again.
    /// A member that occurs twice gets its children twice.
    virtual MDXSet * DrillDownOnSet(KelpString const & given);
    virtual MDXSet * DrillDownOnSet(MDXSet const * other);
    /// DRILLUPMEMBER(this, {given}). Collapses a member only if the next member in the set is its descendant.
    /// DrillUpOnSet sorts the set first.
    virtual MDXSet * DrillUp(KelpString const & given);
    /// DRILLUPMEMBER(Hierarchize(this), other), which discards an earlier Order.
    virtual MDXSet * DrillUpOnSet(KelpString const & given);
    virtual MDXSet * DrillUpOnSet(MDXSet const * other);
    /// TOGGLEDRILLSTATE(this, other), or TOGGLEDRILLSTATE(this, other, RECURSIVE).
    virtual MDXSet * ToggleDrillStateOnSet(MDXSet const * other, bool recursive);

    /// EXCEPT(hierarchy.MEMBERS, this)
    virtual MDXSet * Invert(BRIM_o::Hierarchy const * hierarchy);

    /// The ancestor `count` generations above the member; with `all`, the ancestors from there down to the member,
    /// which is included. A count below 0 counts as 0. Each level is written as a list of the member and all its
    /// parents up to that level, so the text grows with the square of the count, or with its cube if `all` is set.
    /// If the count goes past the top, the result is the top member, and with `all` the top member several times:
    /// call SpecifyDistinct.
    virtual MDXSet * TakeAncestorsOfMember(KelpString const & member, bool all, std::int32_t count);
    /// The ancestors of each member of a set, written in the same way. With `all`, the members themselves are not
    /// included. A count of -1 goes to the top; the sets of the MSOLAP generator use `openCount` as the count
    /// instead. Any other negative count counts as 0, or with `all` gives an empty set.
    virtual MDXSet * TakeAncestorsOfSet(KelpString const & set, BRIM_o::Hierarchy const * hierarchy, bool all,
        std::int32_t count, std::int32_t openCount);

    /// Replaces the text with `text`, unchanged.
    virtual MDXSet * TakeName(KelpString const & text);
    /// The text of the other set.
    virtual MDXSet * TakeName(MDXSet const * other);

    /// FILTER(this, condition). The condition is not changed. Servers disagree about comparisons with an empty
    /// cell: test with IsEmpty where empty cells matter.
    virtual MDXSet * TakeFilter(MDXValue * condition);
    virtual MDXSet * TakeFilter(KelpString & condition);
    /// FILTER(this, condition) with the text of a condition tree. `tuple` replaces ET_CURRENT in the tree; it may
    /// be null if the tree has no such node. Throws MDX_ERR_BAD_EXPRESSION for a node that cannot be translated,
    /// and MDX_ERR_EMPTY_TUPLE if the tree has ET_CURRENT and `tuple` has no field.
    virtual MDXSet * TakeFilter(BRIM_o::Expression * condition, MDXTuple const * tuple);
    /// The text of a tree, without FILTER. The arguments and errors are those of TakeFilter. A condition is not a
    /// set: use its text in a value, not on an axis.
    virtual MDXSet * Filter(BRIM_o::Expression * expression, MDXTuple const * tuple);

    /// ORDER(this, key, direction). 0 (ASC) and 1 (DESC) sort the members within each parent, 2 (BASC) and 3
    /// (BDESC) sort them across the whole set. Throws MDX_ERR_BAD_ENUM for another direction, with the value and
    /// "Sort::direction". A later Hierarchize or DrillUpOnSet discards the order. Servers disagree about 0 and 1 on
    /// a crossjoin.
    virtual MDXSet * Order(std::int32_t direction, MDXTuple const * key);
    virtual MDXSet * Order(std::int32_t direction, MDXValue const * key);

    /// TOPCOUNT(this, amount, tuple), BOTTOMSUM and so on. `amount` is a number as text. With the measure Count,
    /// `tuple` may be null and is then left out. Throws MDX_ERR_BAD_ENUM for an unknown type or measure, with the
    /// value and the name of the enumeration, and MDX_ERR_MISSING_TUPLE for a null tuple unless the measure is
    /// Count. Members of all levels are compared with each other, so start from one level. The BOTTOM functions
    /// return members with empty cells first. Always give BOTTOMCOUNT a tuple: without one, some servers return the
    /// first members and others the last.
    virtual MDXSet * TakeExtremity(
        ExtremityType type, ExtremityMeasure measure, KelpString const & amount, MDXTuple const * tuple);

    /// INTERSECT(this, other)
    virtual MDXSet * Intersect(MDXSet const * other);

    /// The siblings of the field. The dimension is not read and may be null.
    virtual MDXSet * TakeSiblings(MDXField const * field, BRIM_o::Dimension const * dimension);
    /// The descendants of each member of the set, at most `depth` levels below the member; -1 means no limit.
    /// Without `all`, only the leaves among them. With `all`, a depth of 0 or more includes the members themselves.
    /// `level` is not read here. A dialect may use it, as the unique name of a level, instead of the depth. The
    /// sets of the MSOLAP generator ignore the depth: without a level they give the children of each member and,
    /// with `all`, the set as well. Calculated members are left out.
    virtual MDXSet * TakeChildren(MDXSet const * set, BRIM_o::Hierarchy const * hierarchy, bool all,
        std::int32_t depth, KelpString const & level);
    /// field.CHILDREN
    virtual MDXSet * TakeChildren(MDXField const * field);
    /// The descendants of one member, chosen as in TakeChildren. The hierarchy is only read for the leaves at depth
    /// -1 and may be null otherwise. `level` is not read. With `all`, a depth of 0 or more includes the member, -1
    /// does not.
    virtual MDXSet * TakeDescendants(KelpString const & member, BRIM_o::Hierarchy const * hierarchy, bool all,
        std::int32_t depth, KelpString const & level);
    /// All descendants of the field; with `withSelf`, the field too.
    virtual MDXSet * TakeDescendants(MDXField const * field, bool withSelf);

    /// TAIL(this)
    virtual MDXSet * TakeTail();
    /// { this }
    virtual MDXSet * Delimit();
    /// { Extract(set, hierarchy) }. If the host throws or memory runs out, the text ends before the hierarchy.
    virtual MDXSet * Extract(KelpString const & set, BRIM_o::Hierarchy const * hierarchy);
    /// Replaces the text with `text`, unchanged.
    virtual MDXSet * SetExpression(KelpString const & text);

    /// Rank(field,set). A rank is a number: use the text in a value, not on an axis. It is 0 if the member is not
    /// in the set.
    virtual MDXSet * Rank(MDXField const * field, MDXSet const * set);
    /// Rank(field,this), which is a number too.
    virtual MDXSet * TakeRank(MDXField const * field);
    /// Generate(first, second). The server evaluates `second` once for each member of `first`.
    virtual MDXSet * generate(KelpString const & first, KelpString const & second);
    /// CROSSJOIN(this, other), as *= writes it. Keeps empty tuples: to drop them, use NES_NON_EMPTY on the axis.
    virtual MDXSet * nonEmptyCrossjoin(MDXSet const * other);
    /// Does nothing. The argument may be null.
    virtual MDXSet * removeCalculationsSpecial(MDXSet * other);

protected:
    ~MDXSet() override;

    /// Writes the MDX of a node and its operands to `text`, which is empty. Each operand is translated by another
    /// call of this function, so an override sees every node of the tree. `tuple` is that of TakeFilter. After an
    /// error, `text` may hold part of the condition.
    virtual void translate_condition(KelpString & text, BRIM_o::Expression * expression, MDXTuple const * tuple);

    /// Lets a dialect write a node itself: it writes the node and its operands to `text` and returns true. If it
    /// returns false, anything that it wrote is discarded. This is called before the operands are translated, for
    /// the kinds of node that servers are likely to spell differently. Here it returns false.
    virtual bool server_translate(KelpString & text, BRIM_o::Expression * expression, MDXTuple const * tuple);

    KelpString fText;
    KelpString fQuotedText;
    bool fQuotedTextValid = false;

private:
    friend struct mdx_text::TextFields;
};

MDX_EXPORTS_END
