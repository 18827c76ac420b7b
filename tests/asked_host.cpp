#include "asked_host.h"

#include <new>

thread_local std::function<void()> gAsked;

bool fails_at_question(std::size_t nth, std::function<void()> const & work)
{
    bool failed = false;
    gAsked = [left = nth]() mutable { --left == 0 ? throw std::bad_alloc() : void(); };
    try {
        work();
    } catch (std::bad_alloc const &) {
        failed = true;
    }
    gAsked = nullptr;
    return failed;
}
