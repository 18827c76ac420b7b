// A host with headers of its own whose names the library uses too.
#include "host/kelp_string.h"
#include "log/mdx_query_log.h"
#include "text.h"
#include <odbomodule/odbomodule.h>

int main()
{
    [[maybe_unused]] HostString const string;
    [[maybe_unused]] HostLog const log;
    [[maybe_unused]] HostText const text;
    std::unique_ptr<MDXQueryGenerator> const generator(createMSOLAP7QueryGenerator("[Sales]", true));
    RefPtr const set(generator->GenerateSet("[Team]"));
    return set->TakeTail()->getText().toUTF8() == "TAIL( [Team] ) " ? 0 : 1;
}
