#pragma once
#include "../refcount.h"
#include "../host/export.h"
#include "../host/kelp_string.h"

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

// One set expression. The object is its MDX text: an operation rewrites the text and returns the set, for chaining,
// with no reference attached. "this" below is the text before the call; an operation without it drops that text.
// Nothing else is remembered: drilling twice wraps twice. Arguments are read during the call and not kept; they may
// not be null unless it says so, and texts go in unchanged. Unless it says otherwise, an argument that throws, and
// a lack of memory, leave the text as it was. What the host is asked during a call may read the set but not change
// it. Besides MDXError an operation may throw what the host throws and the standard library's std::bad_alloc and
// std::length_error. Born with one reference; the last unuse() deletes it. Only use() and unuse() may be called
// from two threads at once.
class MDX_API MDXSet : public support::RefCount {
public:
    enum ExtremityType : std::int32_t { Top = 0, Bottom = 1 };
    enum ExtremityMeasure : std::int32_t { Sum = 0, Count = 1, Percent = 2 };

    // The empty set.
    MDXSet();
    // The text itself, unchanged.
    explicit MDXSet(KelpString const & text);
    explicit MDXSet(KelpString && text);
    // The text that `other` has now.
    explicit MDXSet(MDXSet const * other);
    // { first, second }. A tuple without a field throws MDX_ERR_EMPTY_TUPLE; no set is made.
    explicit MDXSet(std::vector<MDXField *> const & fields);
    explicit MDXSet(std::vector<MDXTuple *> const & tuples);
    // level.MEMBERS
    explicit MDXSet(BRIM_o::Level const * level);
    // {hierarchy.allmembers}
    explicit MDXSet(BRIM_o::Hierarchy const * hierarchy);
    MDXSet(MDXSet const & other) = default;

    // Takes over the other's text; count and identity stay.
    void operator=(MDXSet const & other);

    // The text.
    virtual KelpString getText() const;
    // The text with each single quote doubled, to stand between single quotes.
    virtual KelpString getQuotedText();
    // Assigns the text to `out`.
    virtual void writeText(KelpString & out) const;

    // UNION(this, {field}), UNION(this, other), EXCEPT(this, {other}), CROSSJOIN(this, other).
    virtual MDXSet * operator+=(MDXField const & field);
    virtual MDXSet * operator+=(MDXSet const & other);
    virtual MDXSet * operator-=(MDXSet const & other);
    virtual MDXSet * operator*=(MDXSet const & other);

    // A stretch of the anchor's level, calculated members included, from one offset around the anchor to the
    // other, in either order. The anchor's text has to read as a member. A tuple without fields throws
    // MDX_ERR_EMPTY_TUPLE here and below; the text then stays as it was.
    virtual MDXSet * TakeSubset(MDXTuple const * anchor, std::int32_t offset1, std::int32_t offset2);
    // The stretch of this from `first` to `second`, whichever the server finds earlier.
    virtual MDXSet * TakeSubset(MDXTuple const * first, MDXTuple const * second);
    // SUBSET(this, start, count); a count below 0 is left out. `start` counts from 0, unchecked.
    virtual MDXSet * TakeSubset(std::int32_t start, std::int32_t count);

    // UNION(this, {field}), as += writes it. Without `unite`, the bare list this, field: Delimit makes a set of it.
    virtual MDXSet * AddField(MDXField const & field, bool unite);
    // ADDCALCULATEDMEMBERS(this)
    virtual MDXSet * AddCalculations();
    // STRIPCALCULATEDMEMBERS(this). A dialect may name the hierarchy's calculated members one by one when
    // `byName` is true; otherwise the hierarchy is not read and may be null.
    virtual MDXSet * StripCalculations(BRIM_o::Hierarchy const * hierarchy, bool byName);
    // HIERARCHIZE(this), which undoes an order. Given a hierarchy, a dialect may first strip the calculated members, as
    // StripCalculations does with `byName`, and add `calculations` at the end. Here no argument is read.
    virtual MDXSet * Hierarchize(bool, BRIM_o::Hierarchy const * hierarchy, bool byName,
        std::vector<BRIM_o::Calculation *> const & calculations);
    // HIERARCHIZE(this). A dialect may do nothing.
    virtual MDXSet * HierarchizeCalculations(bool);
    // DISTINCT(this)
    virtual MDXSet * SpecifyDistinct();
    // The empty set.
    virtual MDXSet * Empty();

    // { top level.Members }. Without a hierarchy or a top level, the braces alone. Should the host throw or memory
    // run out, the text is the opening brace.
    virtual MDXSet * TakeTopLevel(BRIM_o::Hierarchy const * hierarchy);
    // unique name.MEMBERS
    virtual MDXSet * TakeWholeLevel(BRIM_o::Level const * level);
    virtual MDXSet * TakeAllMembers(KelpString const & name);
    virtual MDXSet * TakeAllMembers(BRIM_o::Hierarchy const * hierarchy);
    // The leaves of the hierarchy and its calculated members, by GENERATE over the top level. Should the host throw
    // or memory run out when asked for the calculated members, the leaves alone are the text.
    virtual MDXSet * TakeLeafNodes(BRIM_o::Hierarchy * hierarchy);
    // The members of a level; `level` counts from 1, unchecked.
    virtual MDXSet * TakeBaseLevel(BRIM_o::Hierarchy const * hierarchy, std::int32_t level);

    // DRILLDOWNMEMBER(this, {given}). With `recursive`, all members of the hierarchy stand in the place of `given`,
    // which is not read. Without it the hierarchy is not read and may be null.
    virtual MDXSet * DrillDown(BRIM_o::Hierarchy const * hierarchy, KelpString const & given, bool recursive);
    virtual MDXSet * DrillDownOnSet(KelpString const & given);
    virtual MDXSet * DrillDownOnSet(MDXSet const * other);
    // DRILLUPMEMBER(this, {given}); the forms on a set hierarchize this first.
    virtual MDXSet * DrillUp(KelpString const & given);
    virtual MDXSet * DrillUpOnSet(KelpString const & given);
    virtual MDXSet * DrillUpOnSet(MDXSet const * other);
    // TOGGLEDRILLSTATE(this, other)
    virtual MDXSet * ToggleDrillStateOnSet(MDXSet const * other, bool recursive);

    // EXCEPT(hierarchy.MEMBERS, this)
    virtual MDXSet * Invert(BRIM_o::Hierarchy const * hierarchy);

    // The ancestor `count` generations above the member; with `all`, each one from there down to the member. The
    // level is spelled as a chain of parents: the text grows with the square of the count, and with `all` with its
    // cube. A count below 0 counts as 0.
    virtual MDXSet * TakeAncestorsOfMember(KelpString const & member, bool all, std::int32_t count);
    // The same for each member of a set. A count of -1 goes to the top; a dialect may take `openCount` for it. Any
    // other count below 0 counts as 0; with `all` it gives no ancestor.
    virtual MDXSet * TakeAncestorsOfSet(KelpString const & set, BRIM_o::Hierarchy const * hierarchy, bool all,
        std::int32_t count, std::int32_t openCount);

    // The text itself, unchanged; the other's text.
    virtual MDXSet * TakeName(KelpString const & text);
    virtual MDXSet * TakeName(MDXSet const * other);

    // FILTER(this, condition). The condition is not changed.
    virtual MDXSet * TakeFilter(MDXValue * condition);
    virtual MDXSet * TakeFilter(KelpString & condition);
    // FILTER(this, condition) with the condition from a tree, and the text of a tree as the whole set. `tuple`
    // stands where the tree has its current tuple; it may be null when the tree has none. Throw
    // MDX_ERR_BAD_EXPRESSION for a node without a translation, MDX_ERR_EMPTY_TUPLE for a tuple without fields that
    // the tree asks for.
    virtual MDXSet * TakeFilter(BRIM_o::Expression * condition, MDXTuple const * tuple);
    virtual MDXSet * Filter(BRIM_o::Expression * expression, MDXTuple const * tuple);

    // ORDER(this, key, direction): 0 ASC, 1 DESC, 2 BASC, 3 BDESC. Throws MDX_ERR_BAD_ENUM for an unknown
    // direction, with the value and "Sort::direction". Hierarchize and DrillUpOnSet undo an order before them.
    virtual MDXSet * Order(std::int32_t direction, MDXTuple const * key);
    virtual MDXSet * Order(std::int32_t direction, MDXValue const * key);

    // TOPCOUNT(this, amount, tuple) and its kin. `amount` is a number in text; a null tuple is left out. Throws
    // MDX_ERR_BAD_ENUM for an unknown type or measure, with the value and the enumeration's name, then
    // MDX_ERR_MISSING_TUPLE for a null tuple unless the measure is Count.
    virtual MDXSet * TakeExtremity(
        ExtremityType type, ExtremityMeasure measure, KelpString const & amount, MDXTuple const * tuple);

    // INTERSECT(this, other)
    virtual MDXSet * Intersect(MDXSet const * other);

    // The members beside the field. The dimension is not read and may be null.
    virtual MDXSet * TakeSiblings(MDXField const * field, BRIM_o::Dimension const * dimension);
    // The descendants of each member of the set, down to `depth` levels below it, or down to the bottom for -1:
    // with `all` each of them, without it the leaves alone. `level` is not read here. A dialect may read it, as the
    // text of a level, in place of the depth.
    virtual MDXSet * TakeChildren(MDXSet const * set, BRIM_o::Hierarchy const * hierarchy, bool all,
        std::int32_t depth, KelpString const & level);
    // field.CHILDREN
    virtual MDXSet * TakeChildren(MDXField const * field);
    // The descendants of one member, as TakeChildren has them for each. The hierarchy is read for the leaves at
    // depth -1 alone and may be null otherwise; `level` is not read.
    virtual MDXSet * TakeDescendants(KelpString const & member, BRIM_o::Hierarchy const * hierarchy, bool all,
        std::int32_t depth, KelpString const & level);
    // All descendants of the field; `withSelf`, the field too.
    virtual MDXSet * TakeDescendants(MDXField const * field, bool withSelf);

    // TAIL(this)
    virtual MDXSet * TakeTail();
    // { this }
    virtual MDXSet * Delimit();
    // { Extract(set, hierarchy) }. Should the host throw or memory run out, the text ends before the hierarchy.
    virtual MDXSet * Extract(KelpString const & set, BRIM_o::Hierarchy const * hierarchy);
    // The text itself, unchanged.
    virtual MDXSet * SetExpression(KelpString const & text);

    // Rank(field,set)
    virtual MDXSet * Rank(MDXField const * field, MDXSet const * set);
    // Rank(field,this)
    virtual MDXSet * TakeRank(MDXField const * field);
    // Generate(first, second)
    virtual MDXSet * generate(KelpString const & first, KelpString const & second);
    // CROSSJOIN(this, other), as *= writes it.
    virtual MDXSet * nonEmptyCrossjoin(MDXSet const * other);
    // Does nothing. The argument may be null.
    virtual MDXSet * removeCalculationsSpecial(MDXSet * other);

protected:
    ~MDXSet() override;

    // Writes the MDX of one node, with its operands, to `text`, which is empty before. Each operand is translated
    // by another call of this function, so that an override sees every node of the tree. `tuple` as in TakeFilter.
    virtual void translate_condition(KelpString & text, BRIM_o::Expression * expression, MDXTuple const * tuple);

    // A dialect that writes a node itself, operands included, writes it to `text` and returns true. Asked before
    // the operands are translated, for the kinds that a server may want in another shape. Here returns false.
    virtual bool server_translate(KelpString & text, BRIM_o::Expression * expression, MDXTuple const * tuple);

    KelpString fText;
    KelpString fQuotedText;
    bool fQuotedTextValid = false;

private:
    friend struct ConditionShapes;
    friend struct TextFields;
};
