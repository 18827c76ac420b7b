#pragma once
#include "../refcount.h"
#include "../host/export.h"
#include "../host/kelp_string.h"

#include <cstdint>
#include <vector>
namespace BRIM_o {
class Calculation;
class Dimension;
class Hierarchy;
class Level;
class Member;
}

// The expression for one member of a cube. The object is its MDX text: an operation rewrites the text and
// returns the field, for chaining, with no reference attached. "this" below is the text before the call.
// Arguments are read during the call and not kept, and may not be null unless it says so; names go in
// unchanged, a "]" in them is not doubled. An operation may throw what the host throws and the standard library's
// std::bad_alloc and std::length_error; the text is as it was then. Born with one reference; the last unuse()
// deletes it.
class MDX_API MDXField : public support::RefCount {
public:
    // The text itself, unchanged.
    explicit MDXField(KelpString const & text);
    explicit MDXField(KelpString && text);
    // The text that `other` has now.
    explicit MDXField(MDXField const * other);
    // owner.[name]
    MDXField(KelpString const & owner, KelpString const & name);
    // The member's unique name.
    explicit MDXField(BRIM_o::Member const * member);
    // level.[name]
    MDXField(BRIM_o::Level const * level, KelpString const & name);
    // hierarchy.[name]
    MDXField(BRIM_o::Hierarchy const * hierarchy, KelpString const & name);
    // The default member: unique name and .DEFAULTMEMBER
    explicit MDXField(BRIM_o::Dimension const * dimension);
    explicit MDXField(BRIM_o::Hierarchy const * hierarchy);
    // parent.[name]: the calculation's parent member, or its hierarchy when it has none.
    MDXField(BRIM_o::Calculation const * calculation, KelpString const & name);
    MDXField(MDXField const &) = default;

    // Reports an assertion failure, then copies the text: fields are not meant to be assigned.
    MDXField & operator=(MDXField const & other);

    // The text.
    virtual KelpString getText() const;
    // The text with each single quote doubled, to stand between single quotes.
    virtual KelpString getQuotedText();
    // Assigns the text to `out`.
    virtual void writeText(KelpString & out) const;

    // this.[name]
    virtual MDXField * MoveToChild(KelpString const & name);
    // dimension.[name]
    virtual MDXField * MoveToRootNode(BRIM_o::Dimension const * dimension, KelpString const & name);
    // this.FIRSTCHILD
    virtual MDXField * MoveToFirstChild();
    // this.PARENT
    virtual MDXField * MoveToParent();
    // The first and the last member of this member's level.
    virtual MDXField * MoveToFirstSibling();
    virtual MDXField * MoveToLastSibling();
    // The ancestor at the top level. The dimension is not read and may be null.
    virtual MDXField * MoveToRoot(BRIM_o::Dimension const * dimension);
    // The parent, or the member itself when it has none. The dimension is not read and may be null.
    virtual MDXField * DrillUp(BRIM_o::Dimension const * dimension);

    // unique name.CURRENTMEMBER
    virtual MDXField * TakeCurrentMember(BRIM_o::Dimension const * dimension);
    virtual MDXField * TakeCurrentMember(BRIM_o::Hierarchy const * hierarchy);

    // unique name.DEFAULTMEMBER
    virtual MDXField * TakeDefaultMember(BRIM_o::Hierarchy const * hierarchy);
    // ANCESTOR(this, level), the level counted from 0 and unchecked. The dimension is not read and may be null.
    virtual MDXField * TakeAncestorAtLevel(BRIM_o::Dimension const * dimension, std::int32_t level);
    // The calculation's parent member, or its hierarchy when it has none, with nothing after it.
    virtual MDXField * TakeParentOfCalculation(BRIM_o::Calculation const * calculation);
    // The calculation's unique name.
    virtual MDXField * TakeNameOfCalculation(BRIM_o::Calculation const * calculation);
    // The neighbour to the left or right on the same level. At the end of the level it goes on from the other end;
    // calculated members stand after the last one.
    virtual MDXField * LoopLeft();
    virtual MDXField * LoopRight();
    // The text itself, unchanged.
    virtual MDXField * ReplaceName(KelpString const & text);

    // Puts a bare name into brackets, without the blanks around it. A text that ends in "]", apart from blanks,
    // stays as it is. Throws std::out_of_range for a text that is empty or blank; the text then stays as it was.
    void Delimit();

    // Gives back one reference on each element, from first to last; the vector keeps its pointers.
    static void unuseVector(std::vector<MDXField *> const & fields);

protected:
    ~MDXField() override;

    KelpString fText;
    KelpString fQuotedText;
    bool fQuotedTextValid = false;

private:
    friend struct TextFields;
};
