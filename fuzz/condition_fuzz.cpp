#undef NDEBUG // the invariants are assertions
#include <odbomodule/memory_cube.h>

#include <cassert>
#include <fuzzer/FuzzedDataProvider.h>
#include <memory>
#include <stdexcept>

static memory_cube::Condition read_tree(FuzzedDataProvider & bytes, int depth)
{
    auto const kind = BRIM_o::ExpressionType{ bytes.ConsumeIntegral<std::uint8_t>() };
    std::vector<memory_cube::Condition> operands;
    for (int left = depth > 0 ? bytes.ConsumeIntegralInRange(0, 4) : 0; left > 0; --left)
        operands.push_back(read_tree(bytes, depth - 1));
    if (!operands.empty())
        return memory_cube::Condition(kind, std::move(operands));
    VARIANT value{};
    value.vt = bytes.ConsumeIntegralInRange<VARTYPE>(VT_EMPTY, VT_UINT);
    if (value.vt == VT_EMPTY)
        return memory_cube::Condition(kind, "'x]");
    value.llVal = value.vt == VT_BSTR ? 0 : bytes.ConsumeIntegral<std::int64_t>();
    return memory_cube::Condition(value, kind);
}

// If a tree cannot be translated, the set is unchanged. Otherwise Filter() and TakeFilter(), called on two sets,
// write the same condition.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    std::unique_ptr<MDXQueryGenerator> const generator(createMSOLAP7QueryGenerator("[C]", false));
    RefPtr const set(generator->GenerateSet("{S}"));
    RefPtr const field(generator->GenerateField("[F]"));
    RefPtr const tuple(generator->GenerateTuple());
    tuple->AddField(field.get());
    FuzzedDataProvider bytes(data, size);
    memory_cube::Condition top = read_tree(bytes, 6);
    try {
        set->Filter(top.get(), tuple.get());
        RefPtr const again(generator->GenerateSet("{S}"));
        again->TakeFilter(top.get(), tuple.get());
        assert(again->getText() == KelpString("FILTER( {S}, ") + set->getText() + KelpString(")"));
    } catch (MDXError const & error) {
        assert(error.code() == MDX_ERR_BAD_EXPRESSION && set->getText() == KelpString("{S}"));
    } catch (std::out_of_range const &) {
        assert(set->getText() == KelpString("{S}"));
    }
    return 0;
}
