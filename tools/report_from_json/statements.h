#pragma once
#include "composer.h"

// The statement that a report describes.
RefPtr<MDXQuery> make_statement(Composer & composer, Place const & report);
