#include "json_place.h"

#include <limits>
#include <map>
#include <nlohmann/json.hpp>

void Place::reject(std::string const & why) const
{
    throw Fault((fName.empty() ? "the file" : fName) + ": " + why);
}

void Place::reject_kind(std::string const & expected) const
{
    reject("expected " + expected + ", found " + (fJson->is_structured() ? fJson->type_name() : fJson->dump()));
}

Place::Json const & Place::expect(bool isSo, char const * what) const
{
    if (!isSo)
        reject_kind(what);
    return *fJson;
}

bool Place::is_text() const
{
    return fJson->is_string();
}

bool Place::is_number() const
{
    return fJson->is_number();
}

bool Place::is_flag() const
{
    return fJson->is_boolean();
}

bool Place::is_list() const
{
    return fJson->is_array();
}

bool Place::is_object() const
{
    return fJson->is_object();
}

std::string Place::utf8() const
{
    return expect(is_text(), "a text").get<std::string>();
}

KelpString Place::number_or_text() const
{
    if (!is_number() && !is_text())
        reject_kind("a number or a text");
    return is_number() ? KelpString::fromUTF8(fJson->dump()) : text();
}

bool Place::flag() const
{
    return expect(is_flag(), "true or false").get<bool>();
}

double Place::real() const
{
    return expect(is_number(), "a number").get<double>();
}

std::int32_t Place::number() const
{
    using Limits = std::numeric_limits<std::int32_t>;
    double const number = expect(fJson->is_number_integer(), "a whole number").get<double>();
    if (number < Limits::min() || number > Limits::max())
        reject("the number is too large");
    return static_cast<std::int32_t>(number);
}

std::vector<Place> Place::items() const
{
    std::vector<Place> items;
    for (Json const & item : expect(is_list(), "a list"))
        items.emplace_back(item, fName + "[" + std::to_string(items.size()) + "]");
    return items;
}

std::vector<KelpString> Place::texts() const
{
    std::vector<KelpString> texts;
    for (Place const & item : items())
        texts.push_back(item.text());
    return texts;
}

void Place::expect_keys(std::initializer_list<char const *> known) const
{
    std::map<std::string, bool> names;
    for (char const * const name : known)
        names[name] = true;
    for (auto const & [key, value] : expect(is_object(), "an object").items())
        find(names, key);
}

std::vector<std::pair<KelpString, Place>> Place::entries() const
{
    std::vector<std::pair<KelpString, Place>> entries;
    for (auto const & [key, value] : expect(is_object(), "an object").items())
        entries.emplace_back(KelpString::fromUTF8(key), at(key));
    return entries;
}

bool Place::has(std::string const & key) const
{
    return expect(is_object(), "an object").contains(key);
}

Place Place::at(std::string const & key) const
{
    if (!has(key))
        reject("\"" + key + "\" is missing");
    return Place(fJson->at(key), fName + (fName.empty() ? "" : ".") + key);
}
