#include "allocations.h"
#include "host_calls.h"

#include <new>

thread_local std::function<void()> gAsked;

bool fails_at_question(std::size_t nth, std::function<void()> const & work)
{
    gAsked = [left = nth]() mutable { --left == 0 ? throw std::bad_alloc() : void(); };
    bool const failed = runs_out_of_memory(work);
    gAsked = nullptr;
    return failed;
}
