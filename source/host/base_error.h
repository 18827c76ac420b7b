#pragma once
#include "export.h"
#include "kelp_string.h"

#include <cstdint>
#include <vector>

namespace BRIM_o {

// A text that goes into an error's message.
class SUPPORT_API AnyErrorInsert {
public:
    virtual ~AnyErrorInsert();
    virtual KelpString const & getText() const = 0;
};

// What a host can ask any error. Errors are thrown by value and caught by reference. What makes a text, and log(),
// throw std::bad_alloc when memory runs out.
class SUPPORT_API AnyError {
public:
    enum Severity : std::int32_t { SeverityError = 1 };
    enum Completed : std::int32_t { NotCompleted = 2 };

    virtual ~AnyError();

    // The number of the error, its severity, and whether the operation was completed all the same.
    virtual std::uint32_t code() const = 0;
    virtual Severity level() const = 0;
    virtual Completed status() const = 0;

    // The module that raised the error.
    virtual KelpString const & module() const = 0;

    // The code as a failed OLE result.
    virtual std::int32_t hResult() const = 0;

    // The message for a reader, with the inserts put in.
    virtual KelpString getText() const = 0;

    // The number of inserts, and the one with that index, counted from 0. Null for an index out of range. An insert
    // belongs to its error.
    virtual std::int32_t numInserts() const = 0;
    virtual AnyErrorInsert const * getInsert(std::int32_t index) const = 0;

    // Writes the message to the process's log, under the error's module.
    virtual void log() const = 0;
};

}

// An error as the support library makes it: the code leads to its message; the inserts stand in the order in which
// they were added. When memory runs out, std::bad_alloc passes through: an assignment and addInsert leave the error
// as it was then.
class SUPPORT_API BaseError : public BRIM_o::AnyError {
public:
    BaseError(std::uint32_t code, char const * module, Severity severity, Completed completed);
    BaseError(BaseError const &);
    BaseError & operator=(BaseError const &);
    ~BaseError() override;

    void addInsert(KelpString const & text);

    std::uint32_t code() const override;
    Severity level() const override;
    Completed status() const override;
    KelpString const & module() const override;
    std::int32_t hResult() const override;
    KelpString getText() const override;
    std::int32_t numInserts() const override;
    BRIM_o::AnyErrorInsert const * getInsert(std::int32_t index) const override;
    void log() const override;

private:
    class Insert final : public BRIM_o::AnyErrorInsert {
    public:
        explicit Insert(KelpString const & text) : fText(text) {}
        KelpString const & getText() const override { return fText; }

    private:
        KelpString fText;
    };

    std::uint32_t fCode;
    Severity fSeverity;
    Completed fCompleted;
    KelpString fModule;
    std::vector<Insert> fInserts;
};
