// A host that includes <windows.h> first, with all its macros.
#include <windows.h>

#include <odbomodule/memory_cube.h>
#include <odbomodule/host/automation.h>
#include <odbomodule/host/core_log.h>
#include <odbomodule/host/file.h>
#include <odbomodule/host/registry.h>
#include <odbomodule/host/string_converters.h>
#include <odbomodule/odbomodule.h>

struct Host {
    memory_cube::Maker make{ "[Sales]" };
    KelpString text = make.set("[Team]")->TakeTail()->getText();
    MDXError error{ MDX_ERR_NO_AXES };
};

int main()
{
    Host const host;
    return host.text.empty() ? 1 : 0;
}
