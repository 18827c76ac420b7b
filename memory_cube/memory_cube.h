#pragma once
#include <odbomodule/host/automation.h>
#include <odbomodule/odbomodule.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

// -Weffc++ warns of pointers that are copied and of an && of one's own; both are meant here.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Weffc++"
#endif

// A start for a host: a cube model in memory, short ways to make expressions and statements, and conditions that
// are written as C++. The library itself does not use this header. Take it as it is, derive from its structs, or
// replace it part by part. On Windows it brings the system's macros; see odbomodule/host/automation.h.
namespace memory_cube {

// A name in brackets, each "]" in it doubled; a text constant in single quotes, each of those in it doubled.
inline KelpString bracketed(KelpString const & name)
{
    KelpString doubled;
    double_sqaure_brackets(doubled, name);
    return u"[" + doubled + u"]";
}
inline KelpString quoted(KelpString const & text)
{
    KelpString doubled;
    quote_member_name(doubled, text);
    return u"'" + doubled + u"'";
}

// The parts of a cube, as plain structs. A short name is kept as it stands between brackets.
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

// The name is for Maker::calculated alone.
struct Calculation : BRIM_o::Calculation {
    BRIM_o::Hierarchy const * fHierarchy;
    KelpString fUniqueName;
    KelpString fParentUniqueName; // empty directly under the hierarchy
    KelpString fName;

    Calculation(BRIM_o::Hierarchy const * hierarchy, KelpString const & uniqueName, KelpString const & parent = {},
        KelpString const & name = {})
        : fHierarchy(hierarchy), fUniqueName(uniqueName), fParentUniqueName(parent), fName(name)
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
        auto const i = static_cast<std::size_t>(index); // a negative one is too large
        return i < fLevels.size() ? fLevels[i] : nullptr;
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

// Owns the parts of a cube. The add_... functions take plain names and make the unique ones: brackets, and each "]"
// of a name doubled. A part stays where it is as long as the cube lives, and is found by its unique name. A part that is
// there already throws std::invalid_argument, an unknown name std::out_of_range.
class Cube {
public:
    template <class Part>
    using Parts = std::map<KelpString, Part>; // by unique name

    // `name` is the cube's in MDX. `flatHierarchyNames` is what the generator is made with too: it tells the unique
    // names [Time.Fiscal] from [Time].[Fiscal].
    explicit Cube(KelpString const & name, bool flatHierarchyNames = false) : fName(name), fFlat(flatHierarchyNames)
    {}
    Cube(Cube &&) = default; // a part stays where it is
    Cube & operator=(Cube &&) = default;

    Dimension * add_dimension(KelpString const & name)
    {
        KelpString const inner = doubled(name);
        KelpString const uniqueName = u"[" + inner + u"]";
        return insert(fDimensions, uniqueName, inner, uniqueName);
    }
    // Without a name the hierarchy has its dimension's.
    Hierarchy * add_hierarchy(Dimension const * dimension, KelpString const & name = {})
    {
        KelpString const inner = doubled(name);
        if (inner.empty())
            return insert(fHierarchies, dimension->fUniqueName, dimension, inner, dimension->fUniqueName);
        KelpString const uniqueName = fFlat ? KelpString(u"[" + dimension->fName + u"." + inner + u"]")
                                            : below(dimension->fUniqueName, name);
        return insert(fHierarchies, uniqueName, dimension, inner, uniqueName);
    }
    // The next level down.
    Level * add_level(Hierarchy * hierarchy, KelpString const & name)
    {
        KelpString const uniqueName = below(hierarchy->fUniqueName, name);
        Level * const level = insert(fLevels, uniqueName, uniqueName);
        hierarchy->fLevels.push_back(level);
        return level;
    }
    // A member of the top level, and one below another.
    Member * add_member(Hierarchy const * hierarchy, KelpString const & name)
    {
        KelpString const uniqueName = below(hierarchy->fUniqueName, name);
        return insert(fMembers, uniqueName, uniqueName);
    }
    Member * add_member(Member const * parent, KelpString const & name)
    {
        KelpString const uniqueName = below(parent->fUniqueName, name);
        return insert(fMembers, uniqueName, uniqueName);
    }
    // A calculated member, which a server knows by its hierarchy and its own name, wherever it hangs.
    Calculation * add_calculation(Hierarchy * hierarchy, KelpString const & name, Member const * parent = nullptr)
    {
        KelpString const uniqueName = below(hierarchy->fUniqueName, name);
        Calculation * const calculation = insert(fCalculations, uniqueName, hierarchy, uniqueName,
            parent != nullptr ? parent->fUniqueName : KelpString(), doubled(name));
        hierarchy->fCalculations.emplace_back(
            static_cast<BRIM_o::CalculationId>(hierarchy->fCalculations.size() + 1), calculation);
        return calculation;
    }

    KelpString const & name() const { return fName; }
    bool flat_hierarchy_names() const { return fFlat; }

    Dimension * dimension(KelpString const & uniqueName) { return find(fDimensions, "dimension", uniqueName); }
    Hierarchy * hierarchy(KelpString const & uniqueName) { return find(fHierarchies, "hierarchy", uniqueName); }
    Level * level(KelpString const & uniqueName) { return find(fLevels, "level", uniqueName); }
    Member * member(KelpString const & uniqueName) { return find(fMembers, "member", uniqueName); }
    Calculation * calculation(KelpString const & uniqueName)
    {
        return find(fCalculations, "calculated member", uniqueName);
    }

    Parts<Dimension> const & dimensions() const { return fDimensions; }
    Parts<Hierarchy> const & hierarchies() const { return fHierarchies; }
    Parts<Level> const & levels() const { return fLevels; }
    Parts<Member> const & members() const { return fMembers; }
    Parts<Calculation> const & calculations() const { return fCalculations; }

private:
    static KelpString doubled(KelpString const & name)
    {
        KelpString text;
        double_sqaure_brackets(text, name);
        return text;
    }
    static KelpString below(KelpString const & owner, KelpString const & name)
    {
        return owner + u"." + bracketed(name);
    }
    template <class Part, class... Arguments>
    static Part * insert(Parts<Part> & parts, KelpString const & uniqueName, Arguments const &... arguments)
    {
        auto const [place, isNew] = parts.try_emplace(uniqueName, arguments...);
        if (!isNew)
            throw std::invalid_argument("The cube has " + uniqueName.toUTF8() + " already");
        return &place->second;
    }
    template <class Part>
    static Part * find(Parts<Part> & parts, char const * kind, KelpString const & uniqueName)
    {
        auto const found = parts.find(uniqueName);
        if (found == parts.end())
            throw std::out_of_range("The cube has no " + std::string(kind) + " " + uniqueName.toUTF8());
        return &found->second;
    }

    KelpString fName;
    bool fFlat;
    Parts<Dimension> fDimensions;
    Parts<Hierarchy> fHierarchies;
    Parts<Level> fLevels;
    Parts<Member> fMembers;
    Parts<Calculation> fCalculations;
};

// Makes expressions and statements, each with its reference in a RefPtr.
class Maker {
public:
    explicit Maker(std::unique_ptr<MDXQueryGenerator> generator) : fGenerator(std::move(generator)) {}
    explicit Maker(KelpString const & cubeName, bool flatHierarchyNames = false)
        : fGenerator(createMSOLAP7QueryGenerator(cubeName, flatHierarchyNames))
    {}
    explicit Maker(Cube const & cube) : Maker(cube.name(), cube.flat_hierarchy_names()) {}

    // What GenerateSet, GenerateField and GenerateValue make of the same arguments.
    template <class... Arguments>
    RefPtr<MDXSet> set(Arguments const &... arguments) const
    {
        return RefPtr(fGenerator->GenerateSet(arguments...));
    }
    template <class... Arguments>
    RefPtr<MDXField> member(Arguments const &... arguments) const
    {
        return RefPtr(fGenerator->GenerateField(arguments...));
    }
    template <class Argument>
    RefPtr<MDXValue> value(Argument const & argument) const
    {
        static_assert(!std::is_integral_v<Argument> || sizeof(Argument) <= sizeof(std::int32_t),
            "A number of more than 32 bits is cut: pass it as a text");
        return RefPtr(fGenerator->GenerateValue(argument));
    }

    // A calculated member by the name under which it is defined.
    RefPtr<MDXField> calculated(Calculation const * calculation) const
    {
        return member(static_cast<BRIM_o::Calculation const *>(calculation), calculation->fName);
    }
    RefPtr<MDXTuple> tuple(std::vector<RefPtr<MDXField>> const & members) const
    {
        RefPtr tuple(fGenerator->GenerateTuple());
        for (auto const & member : members)
            tuple->AddField(member.get());
        return tuple;
    }
    // The set of these alone. For one of none, take set().
    RefPtr<MDXSet> list(std::vector<RefPtr<MDXField>> const & members) const { return set(pointers(members)); }
    RefPtr<MDXSet> list(std::vector<RefPtr<MDXTuple>> const & tuples) const { return set(pointers(tuples)); }

    RefPtr<MDXSelectQuery> select() const { return query<MDXSelectQuery>(MDXQuery::QT_SELECT); }
    RefPtr<MDXCreateQuery> create() const { return query<MDXCreateQuery>(MDXQuery::QT_CREATE); }
    RefPtr<MDXDropQuery> drop() const { return query<MDXDropQuery>(MDXQuery::QT_DROP); }

    MDXQueryGenerator & generator() const { return *fGenerator; }

private:
    template <class Object>
    static std::vector<Object *> pointers(std::vector<RefPtr<Object>> const & objects)
    {
        std::vector<Object *> pointers;
        for (auto const & object : objects)
            pointers.push_back(object.get());
        return pointers;
    }
    template <class Query>
    RefPtr<Query> query(MDXQuery::QueryType type) const
    {
        return RefPtr(static_cast<Query *>(fGenerator->GenerateQuery(type, nullptr)));
    }

    std::unique_ptr<MDXQueryGenerator> fGenerator;
};

// A condition for MDXSet::TakeFilter: one node of a tree, with its operands. Conditions are values. They are made by
// the functions below, combined by operators, copied and moved:
//
//     Condition enough = value(sales) >= 1000 && !is_null(current());
//     rows->TakeFilter(enough.get(), key.get());
//
// The operators and functions put parentheses where MDX would read the text in another way. && and || always take
// both operands.
class Condition final : public BRIM_o::Expression {
    template <class Type>
    static constexpr bool is_number = std::is_arithmetic_v<Type> && !std::is_same_v<Type, char> &&
                                      !std::is_same_v<Type, wchar_t> && !std::is_same_v<Type, char16_t> &&
                                      !std::is_same_v<Type, char32_t>;

public:
    BRIM_o::ExpressionType fType;
    KelpString fText;
    VARIANT fValue{}; // not cleared: what it points to is not the condition's

    // A number, true or false; no character.
    template <class Number, class = std::enable_if_t<is_number<Number>>>
    Condition(Number number) : fType(std::is_same_v<Number, bool> ? BRIM_o::ET_BOOLVAL : BRIM_o::ET_VALUE)
    {
        fValue.vt = VT_R8;
        fValue.dblVal = static_cast<double>(number);
    }
    // The text that a member, tuple, set or value has now.
    template <class Object>
    Condition(RefPtr<Object> const & object) : Condition(BRIM_o::ET_STRING, object->getText())
    {}

    // Any node, just as it is: no parentheses are added.
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
    Condition(Condition &&) = default; // operands that are moved stay in their place
    Condition & operator=(Condition const & other) { return *this = Condition(other); }
    Condition & operator=(Condition &&) = default;
    ~Condition() = default;

    // For a call of the library.
    BRIM_o::Expression * get() { return this; }

    std::vector<BRIM_o::Expression *> const & getChildren() override { return fPointers; }
    BRIM_o::ExpressionType getType() override { return fType; }
    VARIANT const * getValue() override { return &fValue; }
    char16_t const * getString() override { return fText.c_str(); }

    // How tightly a node's text holds together, from the loosest to the tightest.
    enum Binding { Or, And, Not, Comparison, Sum, Product, Whole };

    // A node with its operands, of which those that hold less tightly than `least` are put in parentheses.
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
        default: return Whole;
        }
    }
    void point_to_operands()
    {
        for (Condition & operand : fOperands)
            fPointers.push_back(&operand);
    }

    std::vector<Condition> fOperands;
    std::vector<BRIM_o::Expression *> fPointers; // to them
};

// MDX that goes in as it is. One that holds an operator brings its own parentheses.
inline Condition mdx(KelpString const & text)
{
    return Condition(BRIM_o::ET_STRING, text);
}
// A text constant, with its quotes.
inline Condition text(KelpString const & text)
{
    return mdx(quoted(text));
}
// The tuple that is given to TakeFilter, and the set that is filtered.
inline Condition current()
{
    return Condition(BRIM_o::ET_CURRENT);
}
inline Condition current_set()
{
    return Condition(BRIM_o::ET_CURRENTSET);
}
// ( first, second ), of at least one member.
inline Condition tuple(std::vector<Condition> members)
{
    return Condition(BRIM_o::ET_TUPLE, std::move(members));
}
// The value of a tuple, or of a member. A tuple's value alone stands in arithmetic without parentheses.
inline Condition value(Condition tuple)
{
    return Condition::of(BRIM_o::ET_TUPLE_VALUE, Condition::Whole, std::move(tuple));
}
inline Condition member_value(Condition member)
{
    return Condition::of(BRIM_o::ET_MEMBER_VALUE, Condition::Whole, std::move(member));
}
// Whether the cube has no value there.
inline Condition is_null(Condition tuple)
{
    bool const isTuple = tuple.fType == BRIM_o::ET_TUPLE || tuple.fType == BRIM_o::ET_CURRENT;
    return Condition::of(BRIM_o::ET_TUPLE_IS_NULL, Condition::Or,
        isTuple ? std::move(tuple) : memory_cube::tuple({ std::move(tuple) }));
}
// x >= low AND x <= high
inline Condition between(Condition x, Condition low, Condition high)
{
    return Condition::of(BRIM_o::ET_BETWEEN, Condition::Sum, std::move(x), std::move(low), std::move(high));
}
// x < low OR x > high
inline Condition outside(Condition x, Condition low, Condition high)
{
    return Condition::of(BRIM_o::ET_OUTSIDE, Condition::Sum, std::move(x), std::move(low), std::move(high));
}

}

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
