#pragma once
#include "export.h"
#include "kelp_string.h"

#include <cstdint>
#include <vector>

MDX_EXPORTS_BEGIN

namespace BRIM_o {

/// A text that is inserted into an error's message.
class SUPPORT_API AnyErrorInsert {
public:
    virtual ~AnyErrorInsert();
    virtual KelpString const & getText() const = 0;
};

/// What a host can ask of any error. Errors are thrown by value; catch them by reference. getText() and log() throw
/// std::bad_alloc if memory runs out.
class SUPPORT_API AnyError {
public:
    enum Severity : std::int32_t { SeverityError = 1 };
    enum Completed : std::int32_t { NotCompleted = 2 };

    virtual ~AnyError();

    /// The error's number. The module's numbers are listed in error_codes.h.
    virtual std::uint32_t code() const = 0;

    virtual Severity level() const = 0;

    /// Whether the operation was completed in spite of the error.
    virtual Completed status() const = 0;

    /// The module that raised the error.
    virtual KelpString const & module() const = 0;

    /// The code as a failed HRESULT.
    virtual std::int32_t hResult() const = 0;

    /// The message for a reader, with its inserts.
    virtual KelpString getText() const = 0;

    virtual std::int32_t numInserts() const = 0;

    /// The insert at `index`, which counts from 0. Null if the index is out of range. The error owns the insert.
    virtual AnyErrorInsert const * getInsert(std::int32_t index) const = 0;

    /// Writes the message to the process's log, under the error's module.
    virtual void log() const = 0;
};

}

/// An error with a message from the support library's table. If memory runs out, the functions throw
/// std::bad_alloc; an assignment and addInsert() leave the error unchanged then.
class SUPPORT_API BaseError : public BRIM_o::AnyError {
public:
    BaseError(std::uint32_t code, char const * module, Severity severity, Completed completed);
    BaseError(BaseError const &);
    BaseError & operator=(BaseError const &);
    ~BaseError() override;

    /// Adds an insert after the others.
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

MDX_EXPORTS_END
