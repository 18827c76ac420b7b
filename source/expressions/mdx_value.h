#pragma once
#include "../host/export.h"
#include "../host/kelp_string.h"
#include "../refcount.h"

#include <cstdint>
#include <type_traits>
class MDXField;
class MDXSet;
namespace mdx_text {
struct TextFields;
}

MDX_EXPORTS_BEGIN

/// The expression for one value: a number, an aggregate, a property of a member, a condition. The object is its MDX
/// text, and what MDXSet says of operations, their arguments, calls of host objects and exceptions is true of
/// values, too. "this" below is the text before the call; an operation that does not mention it drops that text.
class MDX_API MDXValue : public support::RefCount {
public:
    /// The number in decimal.
    explicit MDXValue(std::int32_t value);
    /// The text itself, unchanged.
    explicit MDXValue(KelpString const & text);
    explicit MDXValue(KelpString && text);
    MDXValue(MDXValue const &) = default;

    /// Reports an assertion failure and then copies the text: values are not meant to be assigned.
    MDXValue & operator=(MDXValue const & other);

    /// The text.
    virtual KelpString getText() const;
    /// The text with each single quote doubled, for use between single quotes.
    virtual KelpString getQuotedText();
    /// Assigns the text to `out`.
    virtual void writeText(KelpString & out) const;

    /// COUNT(set). Counts empty cells too. To count only cells that have a value, filter the set first.
    virtual MDXValue * TakeCount(MDXSet const * set);
    /// field.UNIQUENAME
    virtual MDXValue * TakeUniqueName(MDXField const * field);
    /// field.NAME
    virtual MDXValue * TakeName(MDXField const * field);
    /// field.CAPTION
    virtual MDXValue * TakeCaption(MDXField const * field);
    /// field.DESCRIPTION
    virtual MDXValue * TakeDescription(MDXField const * field);
    /// SUM(set). Sums the current measure, usually the default one. To sum another measure, cross the set with it
    /// first. The same holds for MIN, MAX and AVG.
    virtual MDXValue * TakeSum(MDXSet const * set);
    /// MIN(set)
    virtual MDXValue * TakeMin(MDXSet const * set);
    /// MAX(set)
    virtual MDXValue * TakeMax(MDXSet const * set);
    /// AVG(set). Ignores empty cells.
    virtual MDXValue * TakeAverage(MDXSet const * set);

    /// COVARIANCE(set, first, second), or COVARIANCEN if `unbiased`. Here and in the operations up to
    /// TakeCorrelation, `second` may be null and is then left out. These operations write the text in pieces: if
    /// the value itself is also an argument, its unfinished text is inserted. If an argument throws or memory runs
    /// out, the text is what has been written so far. `first` holds the y values and `second` the x values. With
    /// `unbiased`, the server divides by n - 1, not n.
    virtual MDXValue * TakeCovariance(
        MDXSet const * set, MDXValue const * first, MDXValue const * second, bool unbiased);
    /// LINREGVARIANCE(set, first, second)
    virtual MDXValue * TakeLinRegVariance(MDXSet const * set, MDXValue const * first, MDXValue const * second);
    /// LINREGR2(set, first, second)
    virtual MDXValue * TakeLinRegR2(MDXSet const * set, MDXValue const * first, MDXValue const * second);
    /// LINREGSLOPE(set, first, second)
    virtual MDXValue * TakeLinRegSlope(MDXSet const * set, MDXValue const * first, MDXValue const * second);
    /// LINREGINTERCEPT(set, first, second)
    virtual MDXValue * TakeLinRegIntercept(MDXSet const * set, MDXValue const * first, MDXValue const * second);
    /// LINREGPOINT(at, set, first, second)
    virtual MDXValue * TakeLinRegPoint(
        MDXValue const * at, MDXSet const * set, MDXValue const * first, MDXValue const * second);
    /// CORRELATION(set, first, second)
    virtual MDXValue * TakeCorrelation(MDXSet const * set, MDXValue const * first, MDXValue const * second);

    /// number + this
    virtual MDXValue * Add(std::int32_t number);
    /// - (this)
    virtual MDXValue * ReverseSign();
    /// field.Properties("name"). If the member is above the level that has the property, the server returns an
    /// error in the cell. The values of the MSOLAP generator write field.Name for the names Caption and
    /// Description.
    virtual MDXValue * TakeProperty(MDXField const * field, KelpString const & name);
    /// this = text. A text constant must include its quotes.
    virtual MDXValue * TakeEquality(KelpString text);
    /// this = number. Pass a number with a fraction as text: "1.5".
    virtual MDXValue * TakeEquality(std::int32_t number);
    template <class Real, std::enable_if_t<std::is_floating_point_v<Real>, int> = 0>
    MDXValue * TakeEquality(Real number) = delete;

protected:
    ~MDXValue() override;

    KelpString fText;
    KelpString fQuotedText;
    bool fQuotedTextValid = false;

private:
    friend struct mdx_text::TextFields;
};

MDX_EXPORTS_END
