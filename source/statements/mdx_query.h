#pragma once
#include "../host/export.h"
#include "../host/kelp_string.h"
#include "../refcount.h"

#include <cstdint>

MDX_EXPORTS_BEGIN

/// A statement. Each getText makes the text anew, from the current texts of the expressions that the statement
/// holds; names and raw text are copies. The last unuse() gives back these expressions. Besides MDXError, a call
/// may throw std::bad_alloc and std::length_error; the statement is then unchanged.
class MDX_API MDXQuery : public support::RefCount {
public:
    enum QueryType : std::int32_t { QT_SELECT = 0, QT_CREATE = 1, QT_DROP = 2 };

    MDXQuery(MDXQuery const &) = delete;
    MDXQuery & operator=(MDXQuery const &) = delete;

    /// The statement, on one line or on several. The two forms differ only in white space.
    virtual KelpString getText(bool multiLine) const = 0;
    /// Assigns the statement on one line to `out`.
    virtual void writeText(KelpString & out) const = 0;

protected:
    explicit MDXQuery(KelpString const & cubeName); // the derived class sets fQueryType
    ~MDXQuery() override;

    QueryType fQueryType = QT_SELECT;
    KelpString fCubeName;
};

MDX_EXPORTS_END
