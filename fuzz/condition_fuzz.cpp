#include "memory_cube.h"
#include "odbomodule.h"

#include <cstdint>
#include <cstdlib>
#include <deque>
#include <memory>
#include <stdexcept>

using memory_cube::Node;

namespace {

// Takes a tree from bytes: kind, number of operands, operands.
struct Reader {
    std::uint8_t const * data;
    std::size_t size;
    std::deque<Node> nodes;

    std::uint8_t next()
    {
        if (size == 0)
            return 141;
        --size;
        return *data++;
    }
    BRIM_o::Expression * tree(int depth)
    {
        auto const type = static_cast<BRIM_o::ExpressionType>(next());
        std::vector<BRIM_o::Expression *> operands;
        if (depth > 0) {
            for (int count = next() % 5; count > 0; --count)
                operands.push_back(tree(depth - 1));
        }
        Node & node = nodes.emplace_back(type, operands);
        node.fText = u"'x]";
        node.fValue.vt = next() % 24;
        node.fValue.llVal = node.fValue.vt == VT_BSTR ? 0
                                                      : static_cast<std::int64_t>(next()) << 56 >> (next() % 64);
        return &node;
    }
};

}

// A tree is translated whole, or an error leaves the set as it was; a set that is translated twice gives one text.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    std::unique_ptr<MDXQueryGenerator> const generator(createMSOLAP7QueryGenerator("[C]", false));
    MDXSet * const set = generator->GenerateSet(KelpString("{S}"));
    MDXField * const field = generator->GenerateField(KelpString("[F]"));
    MDXTuple * const tuple = generator->GenerateTuple();
    tuple->AddField(field);
    Reader reader{ data, size, {} };
    BRIM_o::Expression * const top = reader.tree(6);
    try {
        set->Filter(top, tuple);
        MDXSet * const again = generator->GenerateSet(KelpString("{S}"));
        again->TakeFilter(top, tuple);
        if (again->getText() != KelpString("FILTER( {S}, ") + set->getText() + KelpString(")"))
            std::abort();
        again->unuse();
    } catch (MDXError const & error) {
        if (error.code() != MDX_ERR_BAD_EXPRESSION || set->getText() != KelpString("{S}"))
            std::abort();
    } catch (std::out_of_range const &) {
        if (set->getText() != KelpString("{S}"))
            std::abort();
    }
    set->unuse();
    field->unuse();
    tuple->unuse();
    return 0;
}
