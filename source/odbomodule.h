#pragma once

// Everything that a host needs: start with createMSOLAP7QueryGenerator.

#if defined(_MSC_VER)
// Fields and bases of the standard library in classes that a DLL exports: host and module share one runtime.
#pragma warning(push)
#pragma warning(disable : 4251 4275)
#endif

#include "frame/mdx_error.h"
#include "ref_ptr.h"
#include "expressions/mdx_field.h"
#include "expressions/mdx_member_property.h"
#include "expressions/mdx_tuple.h"
#include "expressions/mdx_value.h"
#include "expressions/member_names.h"
#include "frame/mdx_query_generator.h"
#include "host/cube_model.h"
#include "host/expression.h"
#include "log/mdx_query_log.h"
#include "sets/mdx_set.h"
#include "statements/mdx_create_query.h"
#include "statements/mdx_drop_query.h"
#include "statements/mdx_query.h"
#include "statements/mdx_select_query.h"

#if defined(_MSC_VER)
#pragma warning(pop)
#endif
