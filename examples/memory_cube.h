#pragma once
#include "odbomodule/host/automation.h"
#include "odbomodule/host/cube_model.h"
#include "odbomodule/host/expression.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// A host's cube model in memory: plain structs that implement what the module asks of a host. The module keeps no
// pointer to them, so they may go as soon as a call has returned.
namespace memory_cube {

struct Dimension : BRIM_o::Dimension {
    KelpString fName;
    KelpString fUniqueName;

    Dimension(KelpString const & name, KelpString const & uniqueName) : fName(name), fUniqueName(uniqueName) {}
    virtual ~Dimension() = default;
    KelpString const & getName() const override { return fName; }
    KelpString const & getUniqueName() const override { return fUniqueName; }
};

struct Level : BRIM_o::Level {
    KelpString fUniqueName;

    explicit Level(KelpString const & uniqueName) : fUniqueName(uniqueName) {}
    virtual ~Level() = default;
    KelpString const & getUniqueName() const override { return fUniqueName; }
};

struct Member : BRIM_o::Member {
    KelpString fUniqueName;

    explicit Member(KelpString const & uniqueName) : fUniqueName(uniqueName) {}
    virtual ~Member() = default;
    KelpString const & getUniqueName() const override { return fUniqueName; }
};

struct Calculation : BRIM_o::Calculation {
    BRIM_o::Hierarchy const * fHierarchy;
    KelpString fUniqueName;
    KelpString fParentUniqueName; // empty directly under the hierarchy

    Calculation(BRIM_o::Hierarchy const * hierarchy, KelpString const & uniqueName, KelpString const & parent = {})
        : fHierarchy(hierarchy), fUniqueName(uniqueName), fParentUniqueName(parent)
    {}
    virtual ~Calculation() = default;
    BRIM_o::Hierarchy const * getHierarchy() const override { return fHierarchy; }
    KelpString getUniqueName() const override { return fUniqueName; }
    KelpString getParentUniqueName() const override { return fParentUniqueName; }
};

struct Hierarchy : BRIM_o::Hierarchy {
    Dimension const * fDimension;
    KelpString fName; // empty if it has the name of its dimension
    KelpString fUniqueName;
    std::vector<Level *> fLevels;                                               // from the top down
    std::vector<std::pair<BRIM_o::CalculationId, Calculation *>> fCalculations; // in the order of the text

    Hierarchy(Dimension const * dimension, KelpString const & name, KelpString const & uniqueName)
        : fDimension(dimension), fName(name), fUniqueName(uniqueName)
    {}
    virtual ~Hierarchy() = default;
    KelpString const & getName() const override { return fName; }
    KelpString const & getUniqueName() const override { return fUniqueName; }
    BRIM_o::Level * getLevel(std::int32_t index) const override
    {
        auto const i = static_cast<std::size_t>(index);
        return index >= 0 && i < fLevels.size() ? fLevels[i] : nullptr;
    }
    std::int32_t getLevelCount() override { return static_cast<std::int32_t>(fLevels.size()); }
    void getCalculationIds(std::vector<BRIM_o::CalculationId> & ids) const override
    {
        for (auto const & [id, calculation] : fCalculations)
            ids.push_back(id);
    }
    bool getCalculation(BRIM_o::CalculationId wanted, BRIM_o::Calculation *& found) const override
    {
        for (auto const & [id, calculation] : fCalculations) {
            if (id == wanted) {
                found = calculation;
                return true;
            }
        }
        return false;
    }
    void getCalculations(std::map<BRIM_o::CalculationId, BRIM_o::Calculation *> & all) override
    {
        for (auto const & [id, calculation] : fCalculations)
            all[id] = calculation;
    }
    BRIM_o::Dimension const * getDimension() const override { return fDimension; }
};

// One node of a condition tree. The operands belong to whoever made them.
struct Node : BRIM_o::Expression {
    BRIM_o::ExpressionType fType;
    std::vector<BRIM_o::Expression *> fOperands;
    std::u16string fText;
    VARIANT fValue;

    explicit Node(BRIM_o::ExpressionType type, std::vector<BRIM_o::Expression *> operands = {})
        : fType(type), fOperands(std::move(operands))
    {
        VariantInit(&fValue);
    }
    Node(BRIM_o::ExpressionType type, std::u16string_view text) : Node(type) { fText = text; }
    // A number.
    explicit Node(double number) : Node(BRIM_o::ET_VALUE)
    {
        fValue.vt = VT_R8;
        fValue.dblVal = number;
    }
    virtual ~Node() { VariantClear(&fValue); }
    Node(Node const &) = delete;
    Node & operator=(Node const &) = delete;

    std::vector<BRIM_o::Expression *> const & getChildren() override { return fOperands; }
    BRIM_o::ExpressionType getType() override { return fType; }
    VARIANT const * getValue() override { return &fValue; }
    char16_t const * getString() override { return fText.c_str(); }
};

}
