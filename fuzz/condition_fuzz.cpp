#undef NDEBUG // the invariants are assertions
#include "examples/memory_cube.h"
#include "odbomodule/odbomodule.h"

#include <cassert>
#include <deque>
#include <fuzzer/FuzzedDataProvider.h>
#include <memory>
#include <stdexcept>

static BRIM_o::Expression * read_tree(FuzzedDataProvider & bytes, std::deque<memory_cube::Node> & nodes, int depth)
{
    auto & node = nodes.emplace_back(BRIM_o::ExpressionType{ bytes.ConsumeIntegral<std::uint8_t>() });
    int const operands = depth > 0 ? bytes.ConsumeIntegralInRange(0, 4) : 0;
    for (int i = 0; i < operands; ++i)
        node.fOperands.push_back(read_tree(bytes, nodes, depth - 1));
    node.fText = u"'x]";
    node.fValue.vt = bytes.ConsumeIntegralInRange<VARTYPE>(VT_EMPTY, VT_UINT);
    node.fValue.llVal = node.fValue.vt == VT_BSTR ? 0 : bytes.ConsumeIntegral<std::int64_t>();
    return &node;
}

// A tree is translated whole, or an error leaves the set as it was; a set that is translated twice gives one text.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    std::unique_ptr<MDXQueryGenerator> const generator(createMSOLAP7QueryGenerator("[C]", false));
    RefPtr const set(generator->GenerateSet("{S}"));
    RefPtr const field(generator->GenerateField("[F]"));
    RefPtr const tuple(generator->GenerateTuple());
    tuple->AddField(field.get());
    FuzzedDataProvider bytes(data, size);
    std::deque<memory_cube::Node> nodes;
    BRIM_o::Expression * const top = read_tree(bytes, nodes, 6);
    try {
        set->Filter(top, tuple.get());
        RefPtr const again(generator->GenerateSet("{S}"));
        again->TakeFilter(top, tuple.get());
        assert(again->getText() == KelpString("FILTER( {S}, ") + set->getText() + KelpString(")"));
    } catch (MDXError const & error) {
        assert(error.code() == MDX_ERR_BAD_EXPRESSION && set->getText() == KelpString("{S}"));
    } catch (std::out_of_range const &) {
        assert(set->getText() == KelpString("{S}"));
    }
    return 0;
}
