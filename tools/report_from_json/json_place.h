#pragma once
#include <odbomodule/host/kelp_string.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <nlohmann/json_fwd.hpp>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

// An error in a report file. The message names the place, except for a file that cannot be read or is nested too
// deeply.
struct Fault : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The text, or its first `most` characters and "..." if it is longer.
std::string shortened(std::string const & utf8, std::size_t most);
// The text in quotes, shortened for a message.
std::string in_quotes(std::string const & utf8);

// A value in a JSON file and its place, such as reports[0].axes[1]. A value of the wrong kind throws a Fault.
class Place {
public:
    using Json = nlohmann::ordered_json;

    explicit Place(Json const & json, std::string name = "") : fJson(&json), fName(std::move(name)) {}
    // The place of an item or entry of this list or object. `json` is its value.
    Place item(Json const & json, std::size_t index) const;
    Place entry(Json const & json, std::string const & key) const;

    std::string const & name() const { return fName; }

    [[noreturn]] void reject(std::string const & why) const;
    [[noreturn]] void reject_kind(std::string const & expected) const;
    // `known` are tables whose keys are the names that are allowed here.
    template <class Name, class... Tables>
    [[noreturn]] void reject_name(Name const & name, Tables const &... known) const
    {
        std::string names;
        auto const add = [&names](auto const & entry) { names += (names.empty() ? "" : ", ") + utf8(entry.first); };
        (std::for_each(known.begin(), known.end(), add), ...);
        reject(in_quotes(utf8(name)) + " is unknown here; known: " + names);
    }

    bool is_text() const;
    bool is_number() const;
    bool is_whole_number() const;
    bool is_flag() const;
    bool is_list() const;
    bool is_object() const;

    std::string utf8() const;
    KelpString text() const { return utf8(); }
    KelpString number_or_text() const;
    bool flag() const;
    double real() const;
    std::int64_t whole_number() const;
    std::int32_t number() const;

    std::vector<Place> items() const;
    std::vector<KelpString> texts() const;

    // Rejects an object with an entry that is not one of these.
    void expect_keys(std::initializer_list<char const *> known) const;
    std::vector<std::pair<KelpString, Place>> entries() const;
    bool has(std::string const & key) const;
    Place at(std::string const & key) const;

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
    Json const & expect(bool isSo, char const * what) const;
    static std::string const & utf8(std::string const & text) { return text; }
    static std::string utf8(KelpString const & text) { return text.toUTF8(); }

    Json const * fJson;
    std::string fName;
};
