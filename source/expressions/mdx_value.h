#pragma once
#include "../refcount.h"
#include "../host/export.h"
#include "../host/kelp_string.h"

#include <cstdint>
#include <type_traits>
class MDXField;
class MDXSet;

// The expression for one value: a number, an aggregate, a property of a member, a condition. The object is its
// MDX text: an operation rewrites the text and returns the value, for chaining, with no reference attached.
// "this" below is the text before the call; an operation without it drops that text. Arguments are read during
// the call and not kept, and may not be null unless it says so; texts go in unchanged. An operation may throw what
// an argument throws and the standard library's std::bad_alloc and std::length_error; unless it says otherwise, the
// text is as it was then. Born with one reference; the last unuse() deletes it.
class MDX_API MDXValue : public support::RefCount {
public:
    // The number in decimal.
    explicit MDXValue(std::int32_t value);
    // The text itself, unchanged.
    explicit MDXValue(KelpString const & text);
    explicit MDXValue(KelpString && text);
    MDXValue(MDXValue const &) = default;

    // Reports an assertion failure, then copies the text: values are not meant to be assigned.
    MDXValue & operator=(MDXValue const & other);

    // The text.
    virtual KelpString getText() const;
    // The text with each single quote doubled, to stand between single quotes.
    virtual KelpString getQuotedText();
    // Assigns the text to `out`.
    virtual void writeText(KelpString & out) const;

    // COUNT(set)
    virtual MDXValue * TakeCount(MDXSet const * set);
    // field.UNIQUENAME, .NAME, .CAPTION, .DESCRIPTION
    virtual MDXValue * TakeUniqueName(MDXField const * field);
    virtual MDXValue * TakeName(MDXField const * field);
    virtual MDXValue * TakeCaption(MDXField const * field);
    virtual MDXValue * TakeDescription(MDXField const * field);
    // SUM(set), MIN, MAX, AVG
    virtual MDXValue * TakeSum(MDXSet const * set);
    virtual MDXValue * TakeMin(MDXSet const * set);
    virtual MDXValue * TakeMax(MDXSet const * set);
    virtual MDXValue * TakeAverage(MDXSet const * set);

    // COVARIANCE(set, first, second), or COVARIANCEN with `unbiased`. Here and up to TakeCorrelation, `second` may
    // be null and is then left out. The text is written piece by piece: a value that is its own argument reads what
    // has been written so far. If an argument throws or memory runs out, so much stays.
    virtual MDXValue * TakeCovariance(
        MDXSet const * set, MDXValue const * first, MDXValue const * second, bool unbiased);
    // LINREG...(set, first, second)
    virtual MDXValue * TakeLinRegVariance(MDXSet const * set, MDXValue const * first, MDXValue const * second);
    virtual MDXValue * TakeLinRegR2(MDXSet const * set, MDXValue const * first, MDXValue const * second);
    virtual MDXValue * TakeLinRegSlope(MDXSet const * set, MDXValue const * first, MDXValue const * second);
    virtual MDXValue * TakeLinRegIntercept(MDXSet const * set, MDXValue const * first, MDXValue const * second);
    // LINREGPOINT(at, set, first, second)
    virtual MDXValue * TakeLinRegPoint(
        MDXValue const * at, MDXSet const * set, MDXValue const * first, MDXValue const * second);
    // CORRELATION(set, first, second)
    virtual MDXValue * TakeCorrelation(MDXSet const * set, MDXValue const * first, MDXValue const * second);

    // number + this
    virtual MDXValue * Add(std::int32_t number);
    template <class Real, std::enable_if_t<std::is_floating_point_v<Real>, int> = 0>
    MDXValue * Add(Real number) = delete;
    // - (this)
    virtual MDXValue * ReverseSign();
    // field.Properties("name")
    virtual MDXValue * TakeProperty(MDXField const * field, KelpString const & name);
    // this = text; a text constant has to bring its own quotes.
    virtual MDXValue * TakeEquality(KelpString text);
    // this = number; one with a fraction goes in as a text, "1.5".
    virtual MDXValue * TakeEquality(std::int32_t number);
    template <class Real, std::enable_if_t<std::is_floating_point_v<Real>, int> = 0>
    MDXValue * TakeEquality(Real number) = delete;

protected:
    ~MDXValue() override;

    KelpString fText;
    KelpString fQuotedText;
    bool fQuotedTextValid = false;

private:
    friend struct TextFields;
};
