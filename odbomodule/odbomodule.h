#pragma once

// Everything that a host needs: start with createMSOLAP7QueryGenerator.

#if defined(_MSC_VER)
// Fields and bases of the standard library in classes that a DLL exports: host and module share one runtime.
#pragma warning(push)
#pragma warning(disable : 4251 4275)
#endif

#include "odbomodule/base/mdx_error.h"
#include "odbomodule/base/ref_ptr.h"
#include "odbomodule/expressions/mdx_field.h"
#include "odbomodule/expressions/mdx_member_property.h"
#include "odbomodule/expressions/mdx_tuple.h"
#include "odbomodule/expressions/mdx_value.h"
#include "odbomodule/expressions/member_names.h"
#include "odbomodule/generator/mdx_query_generator.h"
#include "odbomodule/host/cube_model.h"
#include "odbomodule/host/expression.h"
#include "odbomodule/log/mdx_query_log.h"
#include "odbomodule/sets/mdx_set.h"
#include "odbomodule/statements/mdx_create_query.h"
#include "odbomodule/statements/mdx_drop_query.h"
#include "odbomodule/statements/mdx_query.h"
#include "odbomodule/statements/mdx_select_query.h"

#if defined(_MSC_VER)
#pragma warning(pop)
#endif
