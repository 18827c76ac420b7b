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

// A tuple's text is left out, which may be that of the very object.
std::string state_of(Fixture & f, support::RefCount const * but)
{
    std::string state;
    auto const add = [&](auto &... objects) { ((state += &objects == but ? "" : mdx_of(objects) + std::to_string(count_of(objects)) + "; "), ...); };
    add(*f.set, *f.other, *f.field, *f.second, *f.value, *f.weight, *f.third);
    for (MDXTuple * const tuple : { f.tuple, f.single })
        state += std::to_string(tuple->FieldCount()) + "/" + std::to_string(count_of(*tuple)) + "; ";
    return state;
}

std::string doubled_quotes(std::string text)
{
    for (std::size_t at = 0; (at = text.find('\'', at)) != std::string::npos; at += 2)
        text.insert(at, 1, '\'');
    return text;
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
