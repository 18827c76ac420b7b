#include "documented.h"

#include <set>
#include <string_view>

// What operations, statements and conditions write, and what they refuse: the tables of README.md, docs/operations.md,
// docs/general_classes.md and docs/conditions.md. Each table is a test.

namespace {

using namespace memory_cube::conditions;

struct Calls : testing::TestWithParam<Table<Row>> {};

TEST_P(Calls, LeaveTheDocumentedText)
{
    for (Row const & row : GetParam())
        expect_call(row, kBoth);
}

TEST_P(Calls, UseTheVirtualTextsOfArguments)
{
    for (Row const & row : GetParam()) {
        Documented plain(kGeneral), general(kGeneral), host(kGeneral), dialect(kDialect);
        row.run(plain);
        general.disguise(plain.changed);
        row.expect_texts(general, kGeneral);
        host.disguise("nothing");
        if (host.borrow(dialect, plain.changed))
            row.expect_texts(host, kDialect);
    }
}

// The operations that write their text in steps: after a failure the object keeps the text of the last step, as their doc comments say.
std::set<std::string_view> const kBySteps = { "s->Extract", "s->Hierarchize", "s->TakeLeafNodes", "s->TakeTopLevel", "x->TakeCorrelation",
    "x->TakeCovariance", "x->TakeLinRegIntercept", "x->TakeLinRegPoint", "x->TakeLinRegR2", "x->TakeLinRegSlope", "x->TakeLinRegVariance" };

TEST_P(Calls, LeaveNoTraceOfAFault)
{
    for (Row const & row : GetParam())
        expect_no_trace_of_faults(row, kBoth, kBySteps.contains(row.operation));
}

// Several calls, one after the other.
struct Sequences : Calls {};

TEST_P(Sequences, GoOnFromTheLastText)
{
    for (Row const & row : GetParam()) {
        for (Classes const classes : kBoth) {
            Documented f(classes);
            row.expect_texts(f, classes);
        }
    }
}

// The texts with unique and with flat names of hierarchies.
struct Spellings : Calls {};

TEST_P(Spellings, AreThoseOfTheGenerator)
{
    for (Row const & row : GetParam()) {
        expect_call(row, { kDialect, kFlatDialect });
        expect_no_trace_of_faults(row, { kDialect, kFlatDialect });
    }
}

#include "documented_calls.h"

}
