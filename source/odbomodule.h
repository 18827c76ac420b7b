#pragma once

/// \file
/// Everything that a host needs, except host/automation.h, which defines VARIANT. Start with
/// createMSOLAP7QueryGenerator.

#include "dialect/msolap7_create_query.h"
#include "dialect/msolap7_drop_query.h"
#include "dialect/msolap7_field.h"
#include "dialect/msolap7_member_property.h"
#include "dialect/msolap7_member_specification.h"
#include "expressions/mdx_field.h"
#include "expressions/mdx_member_property.h"
#include "expressions/mdx_tuple.h"
#include "expressions/mdx_value.h"
#include "expressions/member_names.h"
#include "frame/mdx_error.h"
#include "frame/mdx_query_generator.h"
#include "frame/msolap7_query_generator.h"
#include "host/cube_model.h"
#include "host/expression.h"
#include "log/mdx_query_log.h"
#include "ref_ptr.h"
#include "sets/mdx_set.h"
#include "statements/formula_specifications.h"
#include "statements/mdx_create_query.h"
#include "statements/mdx_drop_query.h"
#include "statements/mdx_query.h"
#include "statements/mdx_select_query.h"
