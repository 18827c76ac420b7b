#include "json_place.h"

#include <limits>
#include <map>
#include <nlohmann/json.hpp>

namespace {

// In characters.
constexpr std::size_t kLongestQuote = 80;
constexpr std::size_t kLongestReason = 1000; // the list of known names can be long

}

std::string shortened(std::string const & utf8, std::size_t most)
{
    std::size_t characters = 0;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        bool const isStart = (static_cast<unsigned char>(utf8[i]) & 0xC0) != 0x80;
        if (isStart && ++characters > most)
            return utf8.substr(0, i) + "...";
    }
    return utf8;
}

std::string in_quotes(std::string const & utf8)
{
    return "\"" + shortened(utf8, kLongestQuote) + "\"";
}

Place Place::item(Json const & json, std::size_t index) const
{
    return Place(json, fName + "[" + std::to_string(index) + "]");
}

Place Place::entry(Json const & json, std::string const & key) const
{
    return Place(json, fName + (fName.empty() ? "" : ".") + shortened(key, kLongestQuote));
}

void Place::reject(std::string const & why) const
{
    throw Fault((fName.empty() ? "the file" : fName) + ": " + shortened(why, kLongestReason));
}

void Place::reject_kind(std::string const & expected) const
{
    reject("expected " + expected + ", found " +
           (is_object()    ? "an object"
               : is_list() ? "a list"
               : is_text() ? in_quotes(fJson->get<std::string>())
                           : shortened(fJson->dump(), kLongestQuote)));
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

bool Place::is_whole_number() const
{
    return fJson->is_number_integer();
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
    return is_number() ? KelpString(fJson->dump()) : text();
}

bool Place::flag() const
{
    return expect(is_flag(), "true or false").get<bool>();
}

double Place::real() const
{
    return expect(is_number(), "a number").get<double>();
}

std::int64_t Place::whole_number() const
{
    Json const & number = expect(is_whole_number(), "a whole number");
    if (number.is_number_unsigned() && number.get<std::uint64_t>() > std::numeric_limits<std::int64_t>::max())
        reject("the number is out of range");
    return number.get<std::int64_t>();
}

std::int32_t Place::number() const
{
    using Limits = std::numeric_limits<std::int32_t>;
    std::int64_t const number = whole_number();
    if (number < Limits::min() || number > Limits::max())
        reject("the number is out of range");
    return static_cast<std::int32_t>(number);
}

std::vector<Place> Place::items() const
{
    std::vector<Place> items;
    for (Json const & json : expect(is_list(), "a list"))
        items.push_back(item(json, items.size()));
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
        entries.emplace_back(key, entry(value, key));
    return entries;
}

bool Place::has(std::string const & key) const
{
    return expect(is_object(), "an object").contains(key);
}

Place Place::at(std::string const & key) const
{
    if (!has(key))
        reject(in_quotes(key) + " is missing");
    return entry(fJson->at(key), key);
}
