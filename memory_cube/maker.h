#pragma once
#include "cube.h"

#include <odbomodule/odbomodule.h>

#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace memory_cube {

class Condition;

/// True for arithmetic types, including bool. False for the character types, and for `long double`, which is wider
/// than any number in the library.
template <class Type>
inline constexpr bool is_number = std::is_arithmetic_v<Type> && !std::is_same_v<Type, long double> &&
                                  !std::is_same_v<Type, char> && !std::is_same_v<Type, wchar_t> &&
#if defined(__cpp_char8_t)
                                  !std::is_same_v<Type, char8_t> &&
#endif
                                  !std::is_same_v<Type, char16_t> && !std::is_same_v<Type, char32_t>;

/// Makes expressions and statements, as a generator does, but returns each in a RefPtr that holds its reference.
class Maker {
public:
    explicit Maker(std::unique_ptr<MDXQueryGenerator> generator) : fGenerator(std::move(generator)) {}
    explicit Maker(KelpString const & cubeName, bool flatHierarchyNames = false)
        : fGenerator(createMSOLAP7QueryGenerator(cubeName, flatHierarchyNames))
    {}
    explicit Maker(Cube const & cube) : Maker(cube.name(), cube.flat_hierarchy_names()) {}

    /// GenerateSet and GenerateField with the same arguments. A RefPtr is passed as its pointer.
    template <class... Arguments>
    RefPtr<MDXSet> set(Arguments const &... arguments) const
    {
        return RefPtr(fGenerator->GenerateSet(plain(arguments)...));
    }
    template <class... Arguments>
    RefPtr<MDXField> member(Arguments const &... arguments) const
    {
        return RefPtr(fGenerator->GenerateField(plain(arguments)...));
    }

    /// MDX, inserted unchanged.
    RefPtr<MDXValue> value(KelpString const & mdx) const { return RefPtr(fGenerator->GenerateValue(mdx)); }
    /// A whole number of any size.
    template <class Number, class = std::enable_if_t<is_number<Number> && std::is_integral_v<Number>>>
    RefPtr<MDXValue> value(Number number) const
    {
        static_assert(!std::is_same_v<Number, bool>, "A bool is a condition: write value(Condition(flag))");
        return value(KelpString(std::to_string(number)));
    }
    /// The text of a condition, so that a value can be written with C++ operators: value(a + b). Throws
    /// MDX_ERR_MISSING_TUPLE if the condition has current() and there is no `current`. Defined in conditions.h.
    RefPtr<MDXValue> value(Condition const & condition, RefPtr<MDXTuple> const & current = {}) const;

    /// hierarchy.[name] of the calculated member, the name under which a CREATE should define it.
    RefPtr<MDXField> calculated(Calculation const * calculation) const
    {
        return member(static_cast<BRIM_o::Calculation const *>(calculation), calculation->fName);
    }
    /// hierarchy.CURRENTMEMBER
    RefPtr<MDXField> current(BRIM_o::Hierarchy const * hierarchy) const
    {
        RefPtr<MDXField> const current = member(""); // TakeCurrentMember replaces the text
        current->TakeCurrentMember(hierarchy);
        return current;
    }
    RefPtr<MDXTuple> tuple(std::vector<RefPtr<MDXField>> const & members) const
    {
        RefPtr tuple(fGenerator->GenerateTuple());
        for (auto const & member : members)
            tuple->AddField(member.get());
        return tuple;
    }
    /// { first, second }. For the empty set, call set().
    RefPtr<MDXSet> list(std::vector<RefPtr<MDXField>> const & members) const { return set(pointers(members)); }
    RefPtr<MDXSet> list(std::vector<RefPtr<MDXTuple>> const & tuples) const { return set(pointers(tuples)); }

    RefPtr<MDXSelectQuery> select() const { return query<MDXSelectQuery>(MDXQuery::QT_SELECT); }
    /// A SELECT with one or two axes. The status applies to both axes: NES_NON_EMPTY leaves out positions without
    /// values.
    RefPtr<MDXSelectQuery> select(RefPtr<MDXSet> const & columns, RefPtr<MDXSet> const & rows = {},
        MDXSelectQuery::NonEmptyStatus status = MDXSelectQuery::NES_ALL) const
    {
        RefPtr<MDXSelectQuery> const query = select();
        query->AddAxisSpecification(0, columns.get(), {}, status);
        if (rows)
            query->AddAxisSpecification(1, rows.get(), {}, status);
        return query;
    }
    RefPtr<MDXCreateQuery> create() const { return query<MDXCreateQuery>(MDXQuery::QT_CREATE); }
    RefPtr<MDXDropQuery> drop() const { return query<MDXDropQuery>(MDXQuery::QT_DROP); }

    MDXQueryGenerator & generator() const { return *fGenerator; }

private:
    template <class Argument>
    static Argument const & plain(Argument const & argument)
    {
        return argument;
    }
    template <class Object>
    static Object * plain(RefPtr<Object> const & object)
    {
        return object.get();
    }
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

}
