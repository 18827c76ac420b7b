#pragma once
#include "composer.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

// An entry of a table of steps or conditions: how many arguments it takes, and the function that reads them.
template <class Function>
struct Operation {
    std::size_t least;
    std::size_t most;
    Function run;
};
constexpr std::size_t kAnyCount = std::numeric_limits<std::size_t>::max();

// A list [name, argument...]. The arguments are read by number and count from 0.
class Arguments {
public:
    Arguments(Composer & composer, Place const & place) : fComposer(composer), fPlace(place), fItems(place.items())
    {
        if (fItems.empty())
            place.reject("expected a list that begins with a name");
    }

    Place const & name() const { return fItems[0]; }
    std::size_t count() const { return fItems.size() - 1; }
    bool has(std::size_t i) const { return i < count(); }
    Place const & operator[](std::size_t i) const { return fItems.at(i + 1); }

    // The function for the name in a table of operations. Rejects an unknown name and a wrong count of arguments.
    template <class Table>
    auto find_in(Table const & table) const
    {
        auto const & [least, most, run] = name().find_in(table);
        if (count() < least || count() > most)
            reject_count(least, most);
        return run;
    }

    KelpString text(std::size_t i) const { return (*this)[i].text(); }
    std::int32_t number(std::size_t i) const { return (*this)[i].number(); }
    // A number of levels. The step repeats `text` about once for each level or, with `all`, in proportion to the
    // square of the number. Rejects the number, before the step writes anything, if the text would become too long.
    std::int32_t levels(std::size_t i, KelpString const & text, bool all) const
    {
        constexpr std::int32_t most = 64;
        std::int32_t const levels = number(i);
        if (levels > most)
            (*this)[i].reject("expected at most " + std::to_string(most) + " levels");
        double const chain = std::max(levels, 0) + 2;
        double const times = all ? chain * (chain + 1) / 2 : chain;
        fComposer.expect_room(times * static_cast<double>(text.size()), (*this)[i]);
        return levels;
    }
    std::int32_t number_or(std::size_t i, std::int32_t other) const { return has(i) ? number(i) : other; }
    bool flag(std::size_t i) const { return has(i) && (*this)[i].flag(); } // false without it
    memory_cube::Hierarchy * hierarchy(std::size_t i) const { return fComposer.hierarchy((*this)[i]); }
    memory_cube::Level * level(std::size_t i) const { return fComposer.level((*this)[i]); }
    RefPtr<MDXField> member(std::size_t i) const { return fComposer.member((*this)[i]); }
    RefPtr<MDXTuple> tuple(std::size_t i) const { return fComposer.tuple((*this)[i]); }
    RefPtr<MDXTuple> tuple_or_null(std::size_t i) const { return has(i) ? tuple(i) : RefPtr<MDXTuple>(); }
    RefPtr<MDXSet> set(std::size_t i) const
    {
        if ((*this)[i].is_object())
            (*this)[i].expect_keys({ "from", "steps" });
        return fComposer.set((*this)[i]);
    }
    RefPtr<MDXValue> value(std::size_t i) const { return fComposer.value((*this)[i]); }
    RefPtr<MDXValue> value_or_null(std::size_t i) const { return has(i) ? value(i) : RefPtr<MDXValue>(); }
    memory_cube::Condition condition(std::size_t i) const { return fComposer.condition((*this)[i]); }
    Composer & composer() const { return fComposer; }
    std::vector<BRIM_o::Calculation *> calculations(std::size_t i) const
    {
        return has(i) ? fComposer.calculations((*this)[i]) : std::vector<BRIM_o::Calculation *>();
    }
    std::vector<memory_cube::Condition> conditions() const
    {
        std::vector<memory_cube::Condition> all;
        for (std::size_t i = 0; i < count(); ++i)
            all.push_back(condition(i));
        return all;
    }

private:
    [[noreturn]] void reject_count(std::size_t least, std::size_t most) const
    {
        std::string counts = std::to_string(least);
        if (most == kAnyCount)
            counts += " or more";
        else if (most != least)
            counts += (most == least + 1 ? " or " : " to ") + std::to_string(most);
        fPlace.reject(in_quotes(name().utf8()) + " takes " + counts + (most == 1 ? " argument" : " arguments") +
                      ", found " + std::to_string(count()));
    }

    Composer & fComposer;
    Place fPlace;
    std::vector<Place> fItems;
};
