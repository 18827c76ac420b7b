#pragma once
#include "cube.h"

#include <odbomodule/host/automation.h>
#include <odbomodule/host/expression.h>
#include <odbomodule/ref_ptr.h>

#include <type_traits>
#include <utility>
#include <vector>

// -Weffc++ objects to pointers that are copied and to overloads of && and ||. Both are intended here.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Weffc++"
#endif

namespace memory_cube {

/// A condition for MDXSet::TakeFilter: one node of a tree, with its operands. A condition is a value, which can be
/// copied and moved. The functions below make conditions, and operators combine them:
///
///     Condition enough = value(sales) >= 1000 && !is_null(current());
///     rows->TakeFilter(enough.get(), key.get());
///
/// Operators and functions add the parentheses without which MDX would read the text differently. && and || always
/// evaluate both operands.
class Condition final : public BRIM_o::Expression {
    template <class Type>
    static constexpr bool is_number = std::is_arithmetic_v<Type> && !std::is_same_v<Type, char> &&
                                      !std::is_same_v<Type, wchar_t> && !std::is_same_v<Type, char16_t> &&
                                      !std::is_same_v<Type, char32_t>;

public:
    BRIM_o::ExpressionType fType;
    KelpString fText;
    VARIANT fValue{}; // never cleared: the condition does not own what it points to

    /// A number, true or false. Characters do not convert.
    template <class Number, class = std::enable_if_t<is_number<Number>>>
    Condition(Number number) : fType(std::is_same_v<Number, bool> ? BRIM_o::ET_BOOLVAL : BRIM_o::ET_VALUE)
    {
        fValue.vt = VT_R8;
        fValue.dblVal = static_cast<double>(number);
    }
    /// The text that a member, tuple, set or value has now.
    template <class Object>
    Condition(RefPtr<Object> const & object) : Condition(BRIM_o::ET_STRING, object->getText())
    {}

    /// A node of any kind. No parentheses are added.
    explicit Condition(BRIM_o::ExpressionType type, std::vector<Condition> operands = {})
        : fType(type), fOperands(std::move(operands))
    {
        point_to_operands();
    }
    Condition(BRIM_o::ExpressionType type, KelpString const & text) : fType(type), fText(text) {}

    Condition(Condition const & other)
        : BRIM_o::Expression(other),
          fType(other.fType),
          fText(other.fText),
          fValue(other.fValue),
          fOperands(other.fOperands)
    {
        point_to_operands();
    }
    Condition(Condition &&) = default; // moved operands keep their addresses
    Condition & operator=(Condition const & other) { return *this = Condition(other); }
    Condition & operator=(Condition &&) = default;
    ~Condition() = default;

    /// The argument for a call of the library.
    BRIM_o::Expression * get() { return this; }

    std::vector<BRIM_o::Expression *> const & getChildren() override { return fPointers; }
    BRIM_o::ExpressionType getType() override { return fType; }
    VARIANT const * getValue() override { return &fValue; }
    char16_t const * getString() override { return fText.c_str(); }

    /// How tightly the text of a node binds, from the loosest to the tightest.
    enum Binding { Or, And, Not, Comparison, Sum, Product, Whole };

    /// A node with its operands. Operands that bind less tightly than `least` are put in parentheses.
    template <class... Operands>
    static Condition of(BRIM_o::ExpressionType type, Binding least, Operands... operands)
    {
        std::vector<Condition> all;
        all.reserve(sizeof...(operands));
        (all.push_back(
             operands.binding() < least ? of(BRIM_o::ET_GROUP_190, Or, std::move(operands)) : std::move(operands)),
            ...);
        return Condition(type, std::move(all));
    }

    friend Condition operator==(Condition a, Condition b)
    {
        return of(BRIM_o::ET_EQUALTO, Sum, std::move(a), std::move(b));
    }
    friend Condition operator!=(Condition a, Condition b)
    {
        return of(BRIM_o::ET_NOTEQUALTO, Sum, std::move(a), std::move(b));
    }
    friend Condition operator<(Condition a, Condition b)
    {
        return of(BRIM_o::ET_LESSTHAN, Sum, std::move(a), std::move(b));
    }
    friend Condition operator<=(Condition a, Condition b)
    {
        return of(BRIM_o::ET_LESSTHANOREQUALTO, Sum, std::move(a), std::move(b));
    }
    friend Condition operator>(Condition a, Condition b)
    {
        return of(BRIM_o::ET_GREATERTHAN, Sum, std::move(a), std::move(b));
    }
    friend Condition operator>=(Condition a, Condition b)
    {
        return of(BRIM_o::ET_GREATERTHANOREQUALTO, Sum, std::move(a), std::move(b));
    }

    friend Condition operator&&(Condition a, Condition b)
    {
        return of(BRIM_o::ET_AND, And, std::move(a), std::move(b));
    }
    friend Condition operator||(Condition a, Condition b)
    {
        return of(BRIM_o::ET_OR, Or, std::move(a), std::move(b));
    }
    friend Condition operator!(Condition a) { return of(BRIM_o::ET_NOT, Or, std::move(a)); }

    // The library puts the operands of these in parentheses itself.
    friend Condition operator+(Condition a, Condition b)
    {
        return of(BRIM_o::ET_ADD, Or, std::move(a), std::move(b));
    }
    friend Condition operator-(Condition a, Condition b)
    {
        return of(BRIM_o::ET_SUBTRACT, Or, std::move(a), std::move(b));
    }
    friend Condition operator*(Condition a, Condition b)
    {
        return of(BRIM_o::ET_TIMES, Or, std::move(a), std::move(b));
    }
    friend Condition operator/(Condition a, Condition b)
    {
        return of(BRIM_o::ET_DIVIDE, Or, std::move(a), std::move(b));
    }
    friend Condition operator-(Condition a) { return of(BRIM_o::ET_NEGATE, Or, std::move(a)); }

private:
    Binding binding() const
    {
        // No default: a new kind has to be added here, or the compiler warns.
        switch (fType) {
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
    void point_to_operands()
    {
        for (Condition & operand : fOperands)
            fPointers.push_back(&operand);
    }

    std::vector<Condition> fOperands;
    std::vector<BRIM_o::Expression *> fPointers; // to fOperands
};

/// MDX, inserted unchanged. Text that holds an operator has to bring its own parentheses.
inline Condition mdx(KelpString const & text)
{
    return Condition(BRIM_o::ET_STRING, text);
}
/// A text constant. The quotes are added.
inline Condition text(KelpString const & text)
{
    return mdx(quoted(text));
}
/// The tuple that is given to TakeFilter.
inline Condition current()
{
    return Condition(BRIM_o::ET_CURRENT);
}
/// The set that is filtered.
inline Condition current_set()
{
    return Condition(BRIM_o::ET_CURRENTSET);
}
/// ( first, second ), from one member or more.
inline Condition tuple(std::vector<Condition> members)
{
    return Condition(BRIM_o::ET_TUPLE, std::move(members));
}
/// The value of a tuple. In arithmetic it is the only operand that is written without parentheses.
inline Condition value(Condition tuple)
{
    return Condition::of(BRIM_o::ET_TUPLE_VALUE, Condition::Whole, std::move(tuple));
}
/// The value of a member.
inline Condition member_value(Condition member)
{
    return Condition::of(BRIM_o::ET_MEMBER_VALUE, Condition::Whole, std::move(member));
}
/// tuple = NULL
inline Condition is_null(Condition tuple)
{
    bool const isTuple = tuple.fType == BRIM_o::ET_TUPLE || tuple.fType == BRIM_o::ET_CURRENT;
    return Condition::of(BRIM_o::ET_TUPLE_IS_NULL, Condition::Or,
        isTuple ? std::move(tuple) : memory_cube::tuple({ std::move(tuple) }));
}
/// x >= low AND x <= high
inline Condition between(Condition x, Condition low, Condition high)
{
    return Condition::of(BRIM_o::ET_BETWEEN, Condition::Sum, std::move(x), std::move(low), std::move(high));
}
/// x < low OR x > high
inline Condition outside(Condition x, Condition low, Condition high)
{
    return Condition::of(BRIM_o::ET_OUTSIDE, Condition::Sum, std::move(x), std::move(low), std::move(high));
}

}

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
