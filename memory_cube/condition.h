#pragma once
#include "maker.h"

#include <odbomodule/frame/mdx_error.h>
#include <odbomodule/host/automation.h>
#include <odbomodule/host/expression.h>
#include <odbomodule/ref_ptr.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

// -Weffc++ objects to pointers that are copied and to overloads of && and ||. Both are intended here.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Weffc++"
#endif

namespace memory_cube {

/// A condition for MDXSet::TakeFilter: a tree of nodes. The functions of memory_cube::conditions make conditions,
/// and operators combine them:
///
///     using namespace memory_cube;
///     using namespace memory_cube::conditions;
///     Condition const enough = value(sales) >= 1000 && !is_empty(key);
///     take_filter(rows, enough);
///
/// Operators and functions add parentheses where MDX needs them. Text from mdx() or a RefPtr must bring its own:
/// comparisons, && and || add none around it. && and || always evaluate both operands.
///
/// A condition is a value. Its nodes never change and copies share them, so a copy costs the same for any size, and
/// copies may be used from several threads at once. A tree can be of any depth, but the library translates it by
/// recursion: if it was built with optimization, a stack of 1 MiB is enough for 2,000 levels. `a && b && c` adds a
/// level for each operator. all_of and any_of join a million conditions in only 20 levels.
class Condition final : public BRIM_o::Expression {
public:
    /// A number or a bool. Characters do not convert. An integer with a magnitude above 2^53 is written as text,
    /// with all its digits.
    template <class Number, class = std::enable_if_t<is_number<Number>>>
    Condition(Number number) : fNode(number_node(number))
    {}
    /// The text that a member, tuple, set or value has now.
    template <class Object>
    Condition(RefPtr<Object> const & object) : Condition(BRIM_o::ET_STRING, object->getText())
    {}

    /// A node of any kind. No parentheses are added.
    explicit Condition(BRIM_o::ExpressionType type, std::vector<Condition> operands = {})
        : fNode(new Node(type, {}, {}, std::move(operands)))
    {}
    Condition(BRIM_o::ExpressionType type, KelpString const & text) : fNode(new Node(type, text, {}, {})) {}
    /// A value of any type that converts to a number. What the VARIANT points to, such as a BSTR, is not copied and
    /// must outlive the condition.
    explicit Condition(VARIANT const & value, BRIM_o::ExpressionType type = BRIM_o::ET_VALUE)
        : fNode(new Node(type, {}, value, {}))
    {}

    // A move is a copy, so every condition has a node.
    Condition(Condition const & other) noexcept : BRIM_o::Expression(other), fNode(share(other.fNode)) {}
    Condition & operator=(Condition const & other) noexcept
    {
        // `other` may be an operand of the node that is released here, so share it first.
        release(std::exchange(fNode, share(other.fNode)));
        return *this;
    }
    ~Condition() { release(fNode); }

    /// The tree as the library's functions take it. They do not change its nodes.
    BRIM_o::Expression * get() const { return const_cast<Condition *>(this); }
    /// The same, for a library call to which `tuple` is passed too. Throws MDX_ERR_MISSING_TUPLE if `tuple` is null
    /// and the condition has current().
    BRIM_o::Expression * get(RefPtr<MDXTuple> const & tuple) const
    {
        if (!tuple && fNode->fHasCurrent)
            throw MDXError(MDX_ERR_MISSING_TUPLE);
        return get();
    }

    std::vector<BRIM_o::Expression *> const & getChildren() override { return fNode->fPointers; }
    BRIM_o::ExpressionType getType() override { return fNode->fType; }
    VARIANT const * getValue() override { return &fNode->fValue; }
    char16_t const * getString() override { return fNode->fText.c_str(); }

    /// How tightly the text of a node binds, from the loosest to the tightest.
    enum Binding { Or, And, Not, Comparison, Sum, Product, Whole };

    /// A node with its operands. Operands that bind less tightly than `least` are put in parentheses.
    static Condition of(BRIM_o::ExpressionType type, Binding least, std::vector<Condition> operands)
    {
        for (Condition & operand : operands) {
            if (operand.binding() < least)
                operand = Condition(BRIM_o::ET_GROUP_190, { operand });
        }
        return Condition(type, std::move(operands));
    }
    /// `count` conditions, joined by AND or OR as a balanced tree, which stays shallow.
    static Condition joined(BRIM_o::ExpressionType type, Binding least, Condition const * first, std::size_t count)
    {
        if (count == 1)
            return *first;
        std::size_t const half = count / 2;
        return of(
            type, least, { joined(type, least, first, half), joined(type, least, first + half, count - half) });
    }

    friend Condition operator==(Condition const & a, Condition const & b)
    {
        return of(BRIM_o::ET_EQUALTO, Sum, { a, b });
    }
    friend Condition operator!=(Condition const & a, Condition const & b)
    {
        return of(BRIM_o::ET_NOTEQUALTO, Sum, { a, b });
    }
    friend Condition operator<(Condition const & a, Condition const & b)
    {
        return of(BRIM_o::ET_LESSTHAN, Sum, { a, b });
    }
    friend Condition operator<=(Condition const & a, Condition const & b)
    {
        return of(BRIM_o::ET_LESSTHANOREQUALTO, Sum, { a, b });
    }
    friend Condition operator>(Condition const & a, Condition const & b)
    {
        return of(BRIM_o::ET_GREATERTHAN, Sum, { a, b });
    }
    friend Condition operator>=(Condition const & a, Condition const & b)
    {
        return of(BRIM_o::ET_GREATERTHANOREQUALTO, Sum, { a, b });
    }

    friend Condition operator&&(Condition const & a, Condition const & b)
    {
        return of(BRIM_o::ET_AND, And, { a, b });
    }
    friend Condition operator||(Condition const & a, Condition const & b)
    {
        return of(BRIM_o::ET_OR, Or, { a, b });
    }

    // The library adds the parentheses that the operands of these need.
    friend Condition operator!(Condition const & a) { return of(BRIM_o::ET_NOT, Or, { a }); }
    friend Condition operator+(Condition const & a, Condition const & b)
    {
        return of(BRIM_o::ET_ADD, Or, { a, b });
    }
    friend Condition operator-(Condition const & a, Condition const & b)
    {
        return of(BRIM_o::ET_SUBTRACT, Or, { a, b });
    }
    friend Condition operator*(Condition const & a, Condition const & b)
    {
        return of(BRIM_o::ET_TIMES, Or, { a, b });
    }
    friend Condition operator/(Condition const & a, Condition const & b)
    {
        return of(BRIM_o::ET_DIVIDE, Or, { a, b });
    }
    friend Condition operator-(Condition const & a) { return of(BRIM_o::ET_NEGATE, Or, { a }); }

private:
    struct Node {
        Node(BRIM_o::ExpressionType type, KelpString const & text, VARIANT const & value,
            std::vector<Condition> operands)
            : fType(type), fText(text), fValue(value), fOperands(std::move(operands))
        {
            for (Condition & operand : fOperands) {
                fPointers.push_back(&operand);
                fHasCurrent = fHasCurrent || operand.fNode->fHasCurrent;
            }
        }

        BRIM_o::ExpressionType const fType;
        KelpString const fText;
        VARIANT const fValue; // never cleared: the node does not own what it points to
        std::vector<Condition> fOperands;
        std::vector<BRIM_o::Expression *> fPointers;    // to fOperands
        bool fHasCurrent = fType == BRIM_o::ET_CURRENT; // the node or an operand
        std::atomic<std::size_t> fHolders{ 1 };
        Node * fNext = nullptr; // in the list of nodes that release() deletes
    };
    template <class Number>
    static Node * number_node(Number number)
    {
        if constexpr (std::is_integral_v<Number> && sizeof(Number) > sizeof(std::int32_t)) {
            constexpr Number largest = Number{ 1 } << std::numeric_limits<double>::digits;
            bool isExact = number <= largest; // as a double
            if constexpr (std::is_signed_v<Number>)
                isExact = isExact && number >= -largest;
            if (!isExact)
                return new Node(BRIM_o::ET_STRING, std::to_string(number), {}, {});
        }
        VARIANT value{};
        value.vt = VT_R8;
        value.dblVal = static_cast<double>(number);
        return new Node(std::is_same_v<Number, bool> ? BRIM_o::ET_BOOLVAL : BRIM_o::ET_VALUE, {}, value, {});
    }

    static Node * share(Node * node) noexcept
    {
        ++node->fHolders;
        return node;
    }
    // Deletes the nodes that have no holder any more, one after another: a deep tree would overflow the stack if
    // each node deleted its operands.
    static void release(Node * node) noexcept
    {
        Node * doomed = nullptr;
        auto const drop = [&doomed](Node * each) {
            if (each != nullptr && --each->fHolders == 0) {
                each->fNext = doomed;
                doomed = each;
            }
        };
        drop(node);
        while (doomed != nullptr) {
            Node * const each = std::exchange(doomed, doomed->fNext);
            for (Condition & operand : each->fOperands)
                drop(std::exchange(operand.fNode, nullptr));
            delete each;
        }
    }

    Binding binding() const
    {
        // No default: a new kind has to be added here, or the compiler warns.
        switch (fNode->fType) {
        case BRIM_o::ET_OR:
        case BRIM_o::ET_OUTSIDE: return Or;
        case BRIM_o::ET_AND:
        case BRIM_o::ET_BETWEEN: return And;
        case BRIM_o::ET_NOT: return Not;
        case BRIM_o::ET_EQUALTO:
        case BRIM_o::ET_NOTEQUALTO:
        case BRIM_o::ET_LESSTHAN:
        case BRIM_o::ET_LESSTHANOREQUALTO:
        case BRIM_o::ET_GREATERTHAN:
        case BRIM_o::ET_GREATERTHANOREQUALTO:
        case BRIM_o::ET_TUPLE_IS_NULL:
        case BRIM_o::ET_UNDEFINED: // true is written as 1<2
        case BRIM_o::ET_BOOLVAL: return Comparison;
        case BRIM_o::ET_ADD:
        case BRIM_o::ET_SUBTRACT: return Sum;
        case BRIM_o::ET_TIMES:
        case BRIM_o::ET_DIVIDE:
        case BRIM_o::ET_INTDIVIDE: return Product;
        case BRIM_o::ET_NEGATE:
        case BRIM_o::ET_NATIVE:
        case BRIM_o::ET_STRING:
        case BRIM_o::ET_TEXT_193:
        case BRIM_o::ET_TEXT_199:
        case BRIM_o::ET_VALUE:
        case BRIM_o::ET_CURRENT:
        case BRIM_o::ET_CURRENTSET:
        case BRIM_o::ET_TUPLE:
        case BRIM_o::ET_TUPLE_VALUE:
        case BRIM_o::ET_MEMBER_VALUE:
        case BRIM_o::ET_FILTER:
        case BRIM_o::ET_EXCEPT:
        case BRIM_o::ET_TOPSUM:
        case BRIM_o::ET_TOPPERCENT:
        case BRIM_o::ET_TOPCOUNT:
        case BRIM_o::ET_BOTTOMSUM:
        case BRIM_o::ET_BOTTOMPERCENT:
        case BRIM_o::ET_BOTTOMCOUNT:
        case BRIM_o::ET_GROUP_190:
        case BRIM_o::ET_GROUP_206: return Whole;
        }
        return Whole; // a number that is not a kind, which the library rejects
    }

    Node * fNode; // null only while release() deletes the node that holds this operand
};

}

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
