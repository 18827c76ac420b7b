#pragma once
#include "../host/export.h"
#include "../host/kelp_string.h"
#include "../refcount.h"

#include <cstdint>
#include <vector>
namespace BRIM_o {
class Calculation;
class Dimension;
class Hierarchy;
class Level;
class Member;
}
namespace mdx_text {
struct TextFields;
}

MDX_EXPORTS_BEGIN

/// The expression for one member of a cube. The object is its MDX text, and what MDXSet says of operations, their
/// arguments, calls of host objects and exceptions is true of fields, too. "this" below is the text before the
/// call. Names are inserted unchanged: a "]" in them is not doubled.
class MDX_API MDXField : public support::RefCount {
public:
    /// The text itself, unchanged.
    explicit MDXField(KelpString const & text);
    explicit MDXField(KelpString && text);
    /// The current text of `other`.
    explicit MDXField(MDXField const * other);
    /// owner.[name]
    MDXField(KelpString const & owner, KelpString const & name);
    /// The member's unique name.
    explicit MDXField(BRIM_o::Member const * member);
    /// level.[name]
    MDXField(BRIM_o::Level const * level, KelpString const & name);
    /// hierarchy.[name]
    MDXField(BRIM_o::Hierarchy const * hierarchy, KelpString const & name);
    /// The default member: unique name.DEFAULTMEMBER
    explicit MDXField(BRIM_o::Dimension const * dimension);
    explicit MDXField(BRIM_o::Hierarchy const * hierarchy);
    /// parent.[name], where the parent is the calculation's parent member, or its hierarchy if it has none.
    MDXField(BRIM_o::Calculation const * calculation, KelpString const & name);
    MDXField(MDXField const &) = default;

    /// Reports an assertion failure and then copies the text: fields are not meant to be assigned.
    MDXField & operator=(MDXField const & other);

    /// The text.
    virtual KelpString getText() const;
    /// The text with each single quote doubled, for use between single quotes.
    virtual KelpString getQuotedText();
    /// Assigns the text to `out`.
    virtual void writeText(KelpString & out) const;

    /// this.[name]
    virtual MDXField * MoveToChild(KelpString const & name);
    /// dimension.[name]
    virtual MDXField * MoveToRootNode(BRIM_o::Dimension const * dimension, KelpString const & name);
    /// this.FIRSTCHILD. For a leaf, the server returns an empty axis and no error.
    virtual MDXField * MoveToFirstChild();
    /// this.PARENT. For a member of the top level, the server returns an empty axis and no error.
    virtual MDXField * MoveToParent();
    /// The first member of this member's level.
    virtual MDXField * MoveToFirstSibling();
    /// The last member of this member's level.
    virtual MDXField * MoveToLastSibling();
    /// The ancestor at the top level. The dimension is not read and may be null. Valid only if the dimension has
    /// one hierarchy.
    virtual MDXField * MoveToRoot(BRIM_o::Dimension const * dimension);
    /// The parent, or the member itself if it has none. The dimension is not read and may be null.
    virtual MDXField * DrillUp(BRIM_o::Dimension const * dimension);

    /// dimension.CURRENTMEMBER, with the unique name. Valid only if the dimension has one hierarchy.
    virtual MDXField * TakeCurrentMember(BRIM_o::Dimension const * dimension);
    /// hierarchy.CURRENTMEMBER, with the unique name.
    virtual MDXField * TakeCurrentMember(BRIM_o::Hierarchy const * hierarchy);

    /// unique name.DEFAULTMEMBER
    virtual MDXField * TakeDefaultMember(BRIM_o::Hierarchy const * hierarchy);
    /// ANCESTOR(this, level). The level counts from 0 and is not checked. The dimension is not read and may be
    /// null. Valid only if the dimension has one hierarchy.
    virtual MDXField * TakeAncestorAtLevel(BRIM_o::Dimension const * dimension, std::int32_t level);
    /// The calculation's parent member, or its hierarchy if it has none.
    virtual MDXField * TakeParentOfCalculation(BRIM_o::Calculation const * calculation);
    /// The calculation's unique name.
    virtual MDXField * TakeNameOfCalculation(BRIM_o::Calculation const * calculation);
    /// The previous member of the level. Before the first member comes the last one, which may be a calculated
    /// member.
    virtual MDXField * LoopLeft();
    /// The next member of the level. After the last member comes the level's first calculated member or, if the
    /// level has none, its first member.
    virtual MDXField * LoopRight();
    /// Replaces the text with `text`, unchanged.
    virtual MDXField * ReplaceName(KelpString const & text);

    /// Puts a bare name into brackets and drops the blanks around it. A text that ends in "]", apart from blanks,
    /// is unchanged. Throws std::out_of_range if the text is empty or blank; the text is then unchanged.
    void Delimit();

    /// Gives back one reference to each element, from first to last. The vector keeps its pointers.
    static void unuseVector(std::vector<MDXField *> const & fields);

protected:
    ~MDXField() override;

    KelpString fText;
    KelpString fQuotedText;
    bool fQuotedTextValid = false;

private:
    friend struct mdx_text::TextFields;
};

MDX_EXPORTS_END
