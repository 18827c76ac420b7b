#pragma once
#include <odbomodule/host/kelp_string.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

// An error in a report file. The message names the place.
struct Fault : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// A value in a JSON file and its place, such as reports[0].axes[1]. A value of the wrong kind throws a Fault.
class Place {
public:
    using Json = nlohmann::ordered_json;

    explicit Place(Json const & json, std::string name = "") : fJson(&json), fName(std::move(name)) {}

    std::string const & name() const { return fName; }
    [[noreturn]] void reject(std::string const & why) const
    {
        throw Fault((fName.empty() ? "the file" : fName) + ": " + why);
    }
    [[noreturn]] void reject_kind(std::string const & expected) const
    {
        reject("expected " + expected + ", found " + (fJson->is_structured() ? fJson->type_name() : fJson->dump()));
    }
    template <class Name, class... Tables>
    [[noreturn]] void reject_name(Name const & name, Tables const &... known) const
    {
        std::string names;
        auto const add = [&names](auto const & entry) { names += (names.empty() ? "" : ", ") + utf8(entry.first); };
        (std::for_each(known.begin(), known.end(), add), ...);
        reject("\"" + utf8(name) + "\" is unknown here; known: " + names);
    }

    bool is_text() const { return fJson->is_string(); }
    bool is_number() const { return fJson->is_number(); }
    bool is_flag() const { return fJson->is_boolean(); }
    bool is_list() const { return fJson->is_array(); }
    bool is_object() const { return fJson->is_object(); }

    std::string utf8() const { return expect(is_text(), "a text").get<std::string>(); }
    KelpString text() const { return KelpString::fromUTF8(utf8()); }
    KelpString number_or_text() const
    {
        if (!is_number() && !is_text())
            reject_kind("a number or a text");
        return is_number() ? KelpString::fromUTF8(fJson->dump()) : text();
    }
    bool flag() const { return expect(is_flag(), "true or false").get<bool>(); }
    double real() const { return expect(is_number(), "a number").get<double>(); }
    std::int32_t number() const
    {
        using Limits = std::numeric_limits<std::int32_t>;
        double const number = expect(fJson->is_number_integer(), "a whole number").get<double>();
        if (number < Limits::min() || number > Limits::max())
            reject("the number is too large");
        return static_cast<std::int32_t>(number);
    }

    std::vector<Place> items() const
    {
        std::vector<Place> items;
        for (Json const & item : expect(is_list(), "a list"))
            items.emplace_back(item, fName + "[" + std::to_string(items.size()) + "]");
        return items;
    }
    std::vector<KelpString> texts() const
    {
        std::vector<KelpString> texts;
        for (Place const & item : items())
            texts.push_back(item.text());
        return texts;
    }

    // Rejects an object with an entry that is not one of these.
    void expect_keys(std::initializer_list<char const *> known) const
    {
        std::map<std::string, bool> names;
        for (char const * const name : known)
            names[name] = true;
        for (auto const & [key, value] : expect(is_object(), "an object").items())
            find(names, key);
    }
    std::vector<std::pair<KelpString, Place>> entries() const
    {
        std::vector<std::pair<KelpString, Place>> entries;
        for (auto const & [key, value] : expect(is_object(), "an object").items())
            entries.emplace_back(KelpString::fromUTF8(key), at(key));
        return entries;
    }
    bool has(std::string const & key) const { return expect(is_object(), "an object").contains(key); }
    Place at(std::string const & key) const
    {
        if (!has(key))
            reject("\"" + key + "\" is missing");
        return Place(fJson->at(key), fName + (fName.empty() ? "" : ".") + key);
    }

    // The entry of a table for a name. Rejects an unknown name.
    template <class Table>
    typename Table::mapped_type const & find(Table const & table, typename Table::key_type const & name) const
    {
        auto const found = table.find(name);
        if (found == table.end())
            reject_name(name, table);
        return found->second;
    }
    template <class Table>
    typename Table::mapped_type const & find_in(Table const & table) const
    {
        return find(table, utf8());
    }

private:
    Json const & expect(bool isSo, char const * what) const
    {
        if (!isSo)
            reject_kind(what);
        return *fJson;
    }
    static std::string const & utf8(std::string const & text) { return text; }
    static std::string utf8(KelpString const & text) { return text.toUTF8(); }

    Json const * fJson;
    std::string fName;
};
