#pragma once
#include "tests/asked_host.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

// A condition tree that keeps the nodes beneath it.
struct Tree {
    std::shared_ptr<memory_cube::Node> fNode;
    std::vector<Tree> fOperands;

    Tree(std::shared_ptr<memory_cube::Node> node) : fNode(std::move(node)) {}
    Tree(BRIM_o::ExpressionType kind, std::vector<Tree> operands = {})
        : fNode(std::make_shared<AskedNode>(kind)), fOperands(std::move(operands))
    {
        for (Tree const & operand : fOperands)
            fNode->fOperands.push_back(operand.fNode.get());
    }
    BRIM_o::Expression * get() const { return fNode.get(); }
};

inline Tree text_node(std::u16string const & text, BRIM_o::ExpressionType kind = BRIM_o::ET_STRING)
{
    return { std::make_shared<AskedNode>(kind, text) };
}

inline Tree number_node(double number)
{
    return { std::make_shared<AskedNode>(number) };
}
