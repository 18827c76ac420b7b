#pragma once
#include "../refcount.h"
#include "../host/export.h"
#include "../host/kelp_string.h"

#include <cstdint>

// A statement. It holds objects, not text: each getText makes the text anew, from the current texts of what it
// holds. Used from one thread at a time. Besides MDXError, a call may throw std::bad_alloc, and std::length_error for
// a text; the statement is as it was then. Born with one reference; the last unuse() deletes it and gives back what
// it holds.
class MDX_API MDXQuery : public support::RefCount {
public:
    enum QueryType : std::int32_t { QT_SELECT = 0, QT_CREATE = 1, QT_DROP = 2 };

    MDXQuery(MDXQuery const &) = delete;
    MDXQuery & operator=(MDXQuery const &) = delete;

    // The statement, on one line or on several; the two differ in white space alone.
    virtual KelpString getText(bool multiLine) const = 0;
    // Assigns the statement on one line to `out`.
    virtual void writeText(KelpString & out) const = 0;

protected:
    explicit MDXQuery(KelpString const & cubeName); // the concrete statement sets its type
    ~MDXQuery() override;

    QueryType fQueryType = QT_SELECT;
    KelpString fCubeName;
};
