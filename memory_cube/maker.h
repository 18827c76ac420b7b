#pragma once
#include "cube.h"

#include <odbomodule/odbomodule.h>

#include <cstdint>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace memory_cube {

/// Makes expressions and statements, as a generator does, but returns each in a RefPtr that holds its reference.
class Maker {
public:
    explicit Maker(std::unique_ptr<MDXQueryGenerator> generator) : fGenerator(std::move(generator)) {}
    explicit Maker(KelpString const & cubeName, bool flatHierarchyNames = false)
        : fGenerator(createMSOLAP7QueryGenerator(cubeName, flatHierarchyNames))
    {}
    explicit Maker(Cube const & cube) : Maker(cube.name(), cube.flat_hierarchy_names()) {}

    /// GenerateSet, GenerateField and GenerateValue with the same arguments.
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
            "GenerateValue takes numbers of 32 bits. Pass a longer one as text.");
        return RefPtr(fGenerator->GenerateValue(argument));
    }

    /// The calculated member, by its hierarchy and its own name. A CREATE defines it under this name.
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
    /// { first, second }. The empty set is set().
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

}
