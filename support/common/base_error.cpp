#include <odbomodule/host/base_error.h>

#include <odbomodule/host/core_log.h>
#include "error_messages.h"

#include <utility>

BRIM_o::AnyErrorInsert::~AnyErrorInsert() = default;
BRIM_o::AnyError::~AnyError() = default;

BaseError::BaseError(std::uint32_t code, char const * module, Severity severity, Completed completed)
    : fCode(code), fSeverity(severity), fCompleted(completed), fModule(module)
{}
BaseError::BaseError(BaseError const &) = default;
BaseError & BaseError::operator=(BaseError const & other)
{
    BaseError copy(other); // if this throws, the error is unchanged
    fCode = copy.fCode;
    fSeverity = copy.fSeverity;
    fCompleted = copy.fCompleted;
    fModule = std::move(copy.fModule);
    fInserts = std::move(copy.fInserts);
    return *this;
}
BaseError::~BaseError() = default;

void BaseError::addInsert(KelpString const & text)
{
    fInserts.emplace_back(text);
}

std::uint32_t BaseError::code() const
{
    return fCode;
}

BRIM_o::AnyError::Severity BaseError::level() const
{
    return fSeverity;
}

BRIM_o::AnyError::Completed BaseError::status() const
{
    return fCompleted;
}

KelpString const & BaseError::module() const
{
    return fModule;
}

std::int32_t BaseError::hResult() const
{
    return static_cast<std::int32_t>(fCode | 0x80000000u);
}

KelpString BaseError::getText() const
{
    char const * at = error_message(fCode);
    if (at == nullptr)
        return format_text("Error 0x%08x in module %s.", fCode, fModule);

    KelpString text;
    for (; *at != '\0'; ++at) {
        if (*at == '%') {
            if (BRIM_o::AnyErrorInsert const * const insert = getInsert(*++at - '1'))
                text += insert->getText();
        } else {
            text += static_cast<char16_t>(*at);
        }
    }
    return text;
}

std::int32_t BaseError::numInserts() const
{
    return static_cast<std::int32_t>(fInserts.size());
}

BRIM_o::AnyErrorInsert const * BaseError::getInsert(std::int32_t index) const
{
    return index < 0 || index >= numInserts() ? nullptr : &fInserts[static_cast<std::size_t>(index)];
}

void BaseError::log() const
{
    KelpString const text = getText();
    char16_t const * const inserts[] = { text.c_str() };
    support_dll::getLogObject()->log(fCode, fSeverity, fModule.toUTF8().c_str(), KelpString(), 1, inserts);
}
