#include "fixture.h"

#include "host/core_log.h"

Fixture::Fixture(bool dialect, bool flatHierarchyNames)
    : fDialect(dialect),
      generator(createMSOLAP7QueryGenerator("[Sales]", flatHierarchyNames)),
      set(makeSet("{A}")),
      other(makeSet("{B}")),
      field(makeField("[F]")),
      second(makeField("[G]")),
      value(makeValue("V")),
      weight(makeValue("W")),
      tuple(generator->GenerateTuple()),
      single(generator->GenerateTuple()),
      empty(generator->GenerateTuple())
{
    hierarchy.fLevels = { &country, &city, &shop };
    tuple->AddField(field.get())->AddField(second.get());
    single->AddField(field.get());
}

Held<MDXSet> Fixture::makeSet(KelpString const & text) const
{
    return Held<MDXSet>(fDialect ? generator->GenerateSet(text) : new General<MDXSet>(text));
}

Held<MDXField> Fixture::makeField(KelpString const & text) const
{
    return Held<MDXField>(fDialect ? generator->GenerateField(text) : new General<MDXField>(text));
}

Held<MDXValue> Fixture::makeValue(KelpString const & text) const
{
    return Held<MDXValue>(fDialect ? generator->GenerateValue(text) : new General<MDXValue>(text));
}

LogLines::LogLines()
{
    auto const take = [](void * context, std::uint32_t code, std::int32_t level, KelpString const & module, KelpString const & part, KelpString const & line) {
        KelpString text;
        text.build("%x %d %s/%s: %s", code, level, module, part, line);
        static_cast<LogLines *>(context)->fAll.push_back(text.toUTF8());
    };
    support_dll::getLogObject()->setSink(take, this);
}

LogLines::~LogLines()
{
    support_dll::getLogObject()->setSink(nullptr, nullptr);
}

std::int32_t count_of(support::RefCount & object)
{
    object.use();
    return object.unuse();
}

void expect_error(Raises const & want, std::string const & name, void (*body)(void *), void * context)
{
    try {
        body(context);
        ADD_FAILURE() << name << ": no error";
    } catch (MDXError const & error) {
        EXPECT_EQ(want.code, error.code()) << name;
        ASSERT_EQ(static_cast<std::int32_t>(want.inserts.size()), error.numInserts()) << name;
        for (std::int32_t i = 0; i < error.numInserts(); ++i)
            EXPECT_EQ(want.inserts[static_cast<std::size_t>(i)], error.getInsert(i)->getText().toUTF8()) << name;
    }
}

// The texts and counts of everything that a call could have touched.
static std::vector<std::string> state_of(Fixture & f, support::RefCount const * but)
{
    std::vector<std::string> state;
    auto const add = [&](auto & object) {
        if (object.get() == but)
            return;
        state.push_back(object->getText().toUTF8());
        state.push_back(std::to_string(count_of(*object)));
    };
    add(f.set);
    add(f.other);
    add(f.field);
    add(f.second);
    add(f.value);
    add(f.weight);
    // The tuples' texts are those of their fields, and a tuple may hold the very field that a row rewrites.
    state.push_back(std::to_string(count_of(*f.tuple)) + std::to_string(f.tuple->FieldCount()));
    state.push_back(std::to_string(count_of(*f.single)) + std::to_string(f.single->FieldCount()));
    return state;
}

static std::string doubled_quotes(std::string const & text)
{
    std::string doubled;
    for (char const character : text)
        doubled.append(character == '\'' ? 2 : 1, character);
    return doubled;
}

template <class Row, class Object>
static void check_rows(std::vector<Row> const & rows, Held<Object> Fixture::*subject, bool dialect, bool flatHierarchyNames)
{
    for (Row const & row : rows) {
        Fixture f(dialect, flatHierarchyNames);
        Object & object = *(f.*subject);
        std::string want = object.getText().toUTF8();
        EXPECT_EQ(doubled_quotes(want), object.getQuotedText().toUTF8()) << row.name;
        std::int32_t const count = count_of(object);
        std::vector<std::string> const before = state_of(f, &object);

        if (auto const * const error = std::get_if<Raises>(&row.want)) {
            expect_error(
                *error, [&] { row.call(f); }, row.name);
        } else {
            want = std::get<std::string>(row.want);
            EXPECT_EQ(&object, row.call(f)) << row.name;
        }
        std::string const have = object.getText().toUTF8();
        EXPECT_EQ(want, have) << row.name << "\nwant |" << want << "|\nhave |" << have << "|";
        KelpString written("stale");
        object.writeText(written);
        EXPECT_EQ(have, written.toUTF8()) << row.name;
        EXPECT_EQ(doubled_quotes(have), object.getQuotedText().toUTF8()) << row.name << ": quoted text";
        EXPECT_EQ(count, count_of(object)) << row.name << ": count";
        EXPECT_EQ(before, state_of(f, &object)) << row.name << ": arguments";
    }
}

void check(std::vector<SetRow> const & rows, bool dialect, bool flatHierarchyNames)
{
    check_rows(rows, &Fixture::set, dialect, flatHierarchyNames);
}

void check_both(std::vector<SetRow> const & rows)
{
    check(rows, false);
    check(rows, true);
}

void check(std::vector<FieldRow> const & rows, bool dialect, bool flatHierarchyNames)
{
    check_rows(rows, &Fixture::field, dialect, flatHierarchyNames);
}

void check(std::vector<ValueRow> const & rows, bool dialect, bool flatHierarchyNames)
{
    check_rows(rows, &Fixture::value, dialect, flatHierarchyNames);
}
