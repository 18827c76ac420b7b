#include "json_file.h"

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>
#include <vector>

namespace {

using Json = Place::Json;

constexpr std::size_t kMaxDepth = 200; // because nested values are read recursively
constexpr std::size_t kLongestMessage = 300;
constexpr char kOutOfRange[] = "a number is out of range";

// Builds the value that the parser reads. Rejects duplicate keys and deep nesting. The parser's own builder drops
// duplicates, and the time that it takes grows with the square of the number of keys.
class Builder : public nlohmann::json_sax<Json> {
public:
    Json take_result() { return std::move(fResult); }

    bool null() override { return add(nullptr); }
    bool boolean(bool flag) override { return add(flag); }
    bool number_integer(std::int64_t number) override { return add(number); }
    bool number_unsigned(std::uint64_t number) override { return add(number); }
    bool number_float(double number, std::string const & text) override
    {
        if (text.find_first_of(".eE") == text.npos) // a whole number of more than 64 bits
            place().reject(kOutOfRange);
        return add(number);
    }
    bool string(std::string & text) override { return add(text); }
    bool binary(Json::binary_t &) override { return false; } // which JSON does not have

    bool start_object(std::size_t) override { return open(Json::object()); }
    bool start_array(std::size_t) override { return open(Json::array()); }
    bool key(std::string & key) override
    {
        if (!fOpen.back().keys.insert(key).second)
            place().reject(in_quotes(key) + " is given twice");
        fOpen.back().key = key;
        return true;
    }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }

    bool parse_error(std::size_t, std::string const &, Json::exception const & error) override
    {
        if (dynamic_cast<Json::out_of_range const *>(&error) != nullptr) // a real that is too large
            place().reject(kOutOfRange);
        std::string const what = error.what();
        throw Fault(
            shortened(what.substr(what.find("] ") + 2), kLongestMessage)); // without the number of the error
    }

private:
    // A list or object that is being read.
    struct Open {
        Json * json;
        std::string key{}; // in an object: the key of the last entry
        std::set<std::string> keys{};
    };

    bool open(Json empty)
    {
        if (fOpen.size() == kMaxDepth)
            throw Fault("lists and objects are nested more than " + std::to_string(kMaxDepth) + " levels deep");
        fOpen.push_back({ &insert(std::move(empty)) });
        return true;
    }
    bool close()
    {
        fOpen.pop_back();
        return true;
    }
    bool add(Json value)
    {
        insert(std::move(value));
        return true;
    }
    Json & insert(Json value)
    {
        if (fOpen.empty())
            return fResult = std::move(value);
        Open const & in = fOpen.back();
        if (in.json->is_array())
            return in.json->emplace_back(std::move(value));
        // Unlike operator[], emplace_back() does not search the object for the key.
        return in.json->get_ref<Json::object_t &>().emplace_back(in.key, std::move(value)).second;
    }
    // The list or object that is being read.
    Place place() const
    {
        Place place(fResult);
        for (std::size_t i = 1; i < fOpen.size(); ++i) {
            Open const & outer = fOpen[i - 1];
            Json const & json = *fOpen[i].json;
            place = outer.json->is_array() ? place.item(json, outer.json->size() - 1)
                                           : place.entry(json, outer.key);
        }
        return place;
    }

    Json fResult;
    std::vector<Open> fOpen; // from the outside in
};

}

Json read_json(std::string const & path)
{
    std::ifstream file(path, std::ios::binary);
    file.peek(); // fails if the file is a folder
    if (!file)
        throw Fault("the file cannot be read");
    std::string const text(std::istreambuf_iterator<char>(file), {});
    if (std::size_t const at = text.find('\0'); at != text.npos) // where the parser would stop
        throw Fault("the file has a zero byte at offset " + std::to_string(at));
    Builder builder;
    Json::sax_parse(text, &builder);
    return builder.take_result();
}
