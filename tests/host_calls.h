#pragma once
#include <odbomodule/memory_cube.h>

#include <cstddef>
#include <functional>
#include <gtest/gtest.h>
#include <list>
#include <set>

// The classes below take the place of a host's. When the library calls one of their overrides, it calls gOnHostCall.
extern thread_local std::function<void()> gOnHostCall;

template <class Answer>
Answer && on_host_call(Answer && given)
{
    if (gOnHostCall)
        gOnHostCall();
    return std::forward<Answer>(given);
}

// Runs `work`, and the nth call of a host object throws std::bad_alloc. Returns whether `work` threw it.
bool fails_at_host_call(std::size_t nth, std::function<void()> const & work);

struct HostDimension final : memory_cube::Dimension {
    using Dimension::Dimension;
    KelpString const & getName() const override { return on_host_call(fName); }
    KelpString const & getUniqueName() const override { return on_host_call(fUniqueName); }
};

template <class Part>
struct HostPart final : Part {
    using Part::Part;
    KelpString const & getUniqueName() const override { return on_host_call(Part::getUniqueName()); }
};
using HostLevel = HostPart<memory_cube::Level>;
using HostMember = HostPart<memory_cube::Member>;

struct HostCalculation final : memory_cube::Calculation {
    using Calculation::Calculation;
    BRIM_o::Hierarchy const * getHierarchy() const override { return on_host_call(fHierarchy); }
    KelpString getUniqueName() const override { return on_host_call(fUniqueName); }
    KelpString getParentUniqueName() const override { return on_host_call(fParentUniqueName); }
};

struct HostHierarchy final : memory_cube::Hierarchy {
    using Base = memory_cube::Hierarchy;
    using Base::Base;
    KelpString const & getName() const override { return on_host_call(fName); }
    KelpString const & getUniqueName() const override { return on_host_call(fUniqueName); }
    BRIM_o::Level * getLevel(std::int32_t index) const override { return on_host_call(Base::getLevel(index)); }
    std::int32_t getLevelCount() override { return on_host_call(Base::getLevelCount()); }
    void getCalculationIds(std::vector<BRIM_o::CalculationId> & ids) const override
    {
        return on_host_call(0), Base::getCalculationIds(ids);
    }
    bool getCalculation(BRIM_o::CalculationId id, BRIM_o::Calculation *& found) const override
    {
        return on_host_call(Base::getCalculation(id, found));
    }
    void getCalculations(std::map<BRIM_o::CalculationId, BRIM_o::Calculation *> & all) override
    {
        return on_host_call(0), Base::getCalculations(all);
    }
    BRIM_o::Dimension const * getDimension() const override { return on_host_call(fDimension); }
};

struct HostNode final : BRIM_o::Expression {
    BRIM_o::Expression & fNode;
    bool fHasValue = true;
    std::list<HostNode> fNodes;
    std::vector<BRIM_o::Expression *> fOperands;

    explicit HostNode(BRIM_o::Expression & node) : fNode(node)
    {
        for (BRIM_o::Expression * const operand : node.getChildren())
            fOperands.push_back(&fNodes.emplace_back(*operand));
    }
    std::vector<BRIM_o::Expression *> const & getChildren() override { return on_host_call(fOperands); }
    BRIM_o::ExpressionType getType() override { return on_host_call(fNode.getType()); }
    // Only kinds that have a value or a text are asked for it.
    VARIANT const * getValue() override
    {
        EXPECT_TRUE(std::set({ BRIM_o::ET_VALUE, BRIM_o::ET_BOOLVAL }).contains(fNode.getType()));
        return on_host_call(fHasValue ? fNode.getValue() : nullptr);
    }
    char16_t const * getString() override
    {
        EXPECT_TRUE(std::set({ BRIM_o::ET_NATIVE, BRIM_o::ET_STRING, BRIM_o::ET_TEXT_193, BRIM_o::ET_TEXT_199 }).contains(fNode.getType()));
        return on_host_call(fNode.getString());
    }
};

// An expression as a host derives it from a general class. Its getText() can return another text than it holds.
template <class Base>
struct HostText final : Base {
    using Base::Base;
    char const * fSays = nullptr;

    void hold(KelpString const & text) { this->fText = text; }
    KelpString getText() const override { return on_host_call(fSays != nullptr ? KelpString(fSays) : Base::getText()); }
    KelpString getQuotedText() override { return on_host_call(fSays != nullptr ? KelpString(fSays) : Base::getQuotedText()); }
};
