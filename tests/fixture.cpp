#include "fixture.h"

Fixture::Fixture(Classes classes) : fGeneral(classes == kGeneral), generator(createMSOLAP7QueryGenerator("[Sales]", classes == kFlatDialect))
{
    hierarchy.fLevels = { &country, &city, &shop };
    tuple->AddField(field)->AddField(second);
    single->AddField(field);
}

Fixture::~Fixture()
{
    for (support::RefCount * const object : std::vector<support::RefCount *>{ set, other, field, second, value, weight, third, tuple, single, empty })
        object->unuse();
}

std::string raises(std::uint32_t code, std::string const & inserts)
{
    return "error " + std::to_string(code) + " (" + inserts + ")";
}

std::string error_of(std::function<void()> const & body)
{
    try {
        body();
        return "";
    } catch (MDXError const & error) {
        std::string inserts;
        for (std::int32_t i = 0; i < error.numInserts(); ++i)
            inserts += (i == 0 ? "" : ", ") + error.getInsert(i)->getText().toUTF8();
        return raises(error.code(), inserts);
    }
}

std::int32_t count_of(support::RefCount & object)
{
    object.use();
    return object.unuse();
}

// The texts and counts of all but one object. A tuple's text is left out, which may be that of the very object.
static std::string state_of(Fixture & f, support::RefCount const * but)
{
    std::string state;
    auto const add = [&](auto &... objects) { ((state += &objects == but ? "" : mdx_of(objects) + std::to_string(count_of(objects)) + "; "), ...); };
    add(*f.set, *f.other, *f.field, *f.second, *f.value, *f.weight, *f.third);
    for (MDXTuple * const tuple : { f.tuple, f.single })
        state += std::to_string(tuple->FieldCount()) + "/" + std::to_string(count_of(*tuple)) + "; ";
    return state;
}

static std::string doubled_quotes(std::string text)
{
    for (std::size_t at = 0; (at = text.find('\'', at)) != std::string::npos; at += 2)
        text.insert(at, 1, '\'');
    return text;
}

template <class Object>
static void check_row(Row<Object> const & row, Fixture & f, Object & object)
{
    std::string const old = mdx_of(object);
    std::int32_t const count = count_of(object);
    std::string const others = state_of(f, &object);
    EXPECT_EQ(doubled_quotes(old), object.getQuotedText().toUTF8()) << row.name;

    std::string const error = error_of([&] { EXPECT_EQ(&object, row.call(f)) << row.name; });
    std::string const have = mdx_of(object);
    if (error.empty()) {
        EXPECT_EQ(row.want, have) << row.name;
    } else {
        EXPECT_EQ(row.want, error) << row.name;
        EXPECT_EQ(old, have) << row.name << ": text after an error";
    }
    EXPECT_EQ(have, object.getText().toUTF8()) << row.name;
    EXPECT_EQ(doubled_quotes(have), object.getQuotedText().toUTF8()) << row.name << ": quoted text";
    EXPECT_EQ(count, count_of(object)) << row.name << ": count";
    EXPECT_EQ(others, state_of(f, &object)) << row.name << ": other objects";
}

template <class Object>
void check_rows(Classes classes, std::vector<Row<Object>> const & rows)
{
    for (Classes const each : classes == kBoth ? std::vector{ kGeneral, kDialect } : std::vector{ classes }) {
        for (Row<Object> const & row : rows) {
            Fixture f(each);
            if constexpr (std::is_same_v<Object, MDXSet>)
                check_row(row, f, *f.set);
            else if constexpr (std::is_same_v<Object, MDXField>)
                check_row(row, f, *f.field);
            else
                check_row(row, f, *f.value);
        }
    }
}
template void check_rows(Classes, std::vector<Row<MDXSet>> const &);
template void check_rows(Classes, std::vector<Row<MDXField>> const &);
template void check_rows(Classes, std::vector<Row<MDXValue>> const &);

LogLines::LogLines()
{
    auto const take = [](void * context, std::uint32_t code, std::int32_t level, KelpString const & module, KelpString const & part, KelpString const & line) {
        KelpString text;
        text.build("%x %d %s/%s: %s", code, level, module, part, line);
        static_cast<LogLines *>(context)->fAll.push_back(text.toUTF8());
    };
    support_dll::getLogObject()->setSink(take, this);
}
