#include "documented.h"

#include <set>
#include <stdexcept>

// Condition nodes: the rows of the node table in docs/operations.md, and behaviour that the table does not show.

namespace {

using namespace memory_cube::conditions;

ExpressionType const kUnknown{ 300 };

struct NodeRow {
    char const * row;
    std::function<Condition(Documented &)> make;
    struct {
        std::string text, number, operands, asksDialect;
    } node;

    Row as_row() const
    {
        return { row, "s->Filter", [make = make](Documented & f) { return f.texts_of_result(make(f)); }, { node.text } };
    }
    bool asksDialect() const { return node.asksDialect == "yes"; } // whether translate_condition() calls server_translate() for this kind
    std::size_t needed() const { return node.operands == "none" ? 0 : node.operands == "all" ? 1 : std::stoul(node.operands); }
};

struct Nodes : testing::TestWithParam<Table<NodeRow>> {
    static void for_each(std::function<void(NodeRow const & row, Documented & f, Condition & tree)> const & check)
    {
        for (NodeRow const & row : GetParam()) {
            SCOPED_TRACE(row.row);
            Documented f(kDialect);
            Condition tree = row.make(f);
            check(row, f, tree);
        }
    }
};

TEST_P(Nodes, LeaveNoTraceOfAFault)
{
    for (NodeRow const & row : GetParam())
        expect_no_trace_of_faults(row.as_row(), { kGeneral });
}

TEST_P(Nodes, NeedTheirOperands)
{
    for_each([](NodeRow const & row, Documented & f, Condition & tree) {
        if (row.needed() == 0)
            return;
        Condition few(tree.getType(), std::vector<Condition>(row.needed() - 1, mdx("a")));
        EXPECT_THROW(f.set->Filter(&few, f.single), std::out_of_range);
        EXPECT_EQ("s", mdx_of(*f.set));
    });
}

TEST_P(Nodes, HaveTheNumbersOfAllKinds)
{
    std::set<std::int32_t> numbers;
    for_each([&numbers](NodeRow const & row, Documented &, Condition & tree) {
        EXPECT_EQ(row.node.number, std::to_string(tree.getType()));
        numbers.insert(tree.getType());
    });
    EXPECT_EQ(40u, numbers.size());
    Documented f(kDialect);
    for (std::int32_t number = -1; number < 300; ++number) {
        Condition node(ExpressionType{ number }, { mdx("a"), mdx("b"), mdx("c") });
        if (!numbers.contains(number)) {
            EXPECT_EQ(raises(MDX_ERR_BAD_EXPRESSION), error_of([&] { f.set->Filter(&node, f.single); })) << number;
        }
    }
}

// A set of a derived dialect that may write one node itself. Expects each node first in translate_condition() and then perhaps in
// server_translate(), with the tuple and an empty text.
struct ServerSet final : MDXSet {
    Expression const * const fOwnNode;
    MDXTuple const * const fTuple;
    std::multiset<Expression const *> fSeen;

    ServerSet(Expression const * ownNode, MDXTuple const * tuple) : MDXSet(KelpString("s")), fOwnNode(ownNode), fTuple(tuple) {}
    void translate_condition(KelpString & text, Expression * node, MDXTuple const * tuple) override
    {
        fSeen.insert(node);
        EXPECT_TRUE(tuple == fTuple && text.empty());
        MDXSet::translate_condition(text, node, tuple);
    }
    bool server_translate(KelpString & text, Expression * node, MDXTuple const * tuple) override
    {
        EXPECT_TRUE(fSeen.contains(node) && tuple == fTuple && text.empty());
        text = "the server's"; // ignored if this returns false
        return node == fOwnNode;
    }
};

std::size_t nodes_of(Expression & tree)
{
    std::size_t count = 1;
    for (Expression * const operand : tree.getChildren())
        count += nodes_of(*operand);
    return count;
}

// Each node is translated once. If the dialect writes a node before its operands are translated, they are not read.
TEST_P(Nodes, MayBeWrittenByTheDialect)
{
    for_each([](NodeRow const & row, Documented & f, Condition & tree) {
        RefPtr<ServerSet> const set(new ServerSet(nullptr, f.single)), server(new ServerSet(&tree, f.single));
        EXPECT_EQ(row.node.text, mdx_of(*set->Filter(&tree, f.single)));
        EXPECT_EQ(nodes_of(tree), set->fSeen.size());
        if (row.asksDialect())
            tree = Condition(tree.getType(), std::vector<Condition>(tree.getChildren().size(), Condition(kUnknown)));
        EXPECT_EQ(row.asksDialect() ? "the server's" : row.node.text, mdx_of(*server->Filter(&tree, f.single)));
    });
}

#include "documented_nodes.h"

TEST(Condition, IsRefusedIfABooleanHasNoValue)
{
    Fixture f;
    Condition truth(true);
    HostNode node(truth);
    node.fHasValue = false;
    EXPECT_EQ(raises(MDX_ERR_BAD_EXPRESSION), error_of([&] { f.set->Filter(&node, f.single); }));
    EXPECT_EQ("{A}", mdx_of(*f.set));
}

}
