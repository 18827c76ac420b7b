#include "allocations.h"
#include "host_calls.h"

#include <new>

thread_local std::function<void()> gOnHostCall;

bool fails_at_host_call(std::size_t nth, std::function<void()> const & work)
{
    gOnHostCall = [left = nth]() mutable { --left == 0 ? throw std::bad_alloc() : void(); };
    bool const failed = runs_out_of_memory(work);
    gOnHostCall = nullptr;
    return failed;
}
