#include "json_file.h"

#include <cstddef>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>
#include <vector>

namespace {

constexpr std::size_t kMaxDepth = 200; // because nested values are read recursively
constexpr std::size_t kLongestMessage = 300;

// The callback of the parser. Rejects duplicate keys, which the parsed value no longer has, and deep nesting.
class Checker {
public:
    bool operator()(int, Place::Json::parse_event_t event, Place::Json & parsed)
    {
        using Event = Place::Json::parse_event_t;
        switch (event) {
        case Event::object_start: open(false); break;
        case Event::array_start: open(true); break;
        case Event::key: take_key(parsed.get<std::string>()); break;
        case Event::value: end_value(); break;
        case Event::object_end:
        case Event::array_end:
            fOpen.pop_back();
            end_value();
            break;
        }
        return true;
    }

private:
    struct Open {
        bool isList;
        std::size_t index = 0; // in a list: the index of the item that is being read
        std::string key{};     // in an object: the key of the entry that is being read
        std::set<std::string> keys{};
    };

    void open(bool isList)
    {
        if (fOpen.size() == kMaxDepth)
            throw Fault("lists and objects are nested more than " + std::to_string(kMaxDepth) + " levels deep");
        fOpen.push_back({ isList });
    }
    void take_key(std::string const & key)
    {
        if (!fOpen.back().keys.insert(key).second)
            place().reject(in_quotes(key) + " is given twice");
        fOpen.back().key = key;
    }
    void end_value()
    {
        if (!fOpen.empty() && fOpen.back().isList)
            ++fOpen.back().index;
    }
    // The object or list that is being read.
    Place place() const
    {
        static Place::Json const none;
        Place place(none);
        for (std::size_t i = 0; i + 1 < fOpen.size(); ++i)
            place = fOpen[i].isList ? place.item(none, fOpen[i].index) : place.entry(none, fOpen[i].key);
        return place;
    }

    std::vector<Open> fOpen; // from the outside in
};

}

Place::Json read_json(std::string const & path)
{
    std::ifstream file(path, std::ios::binary);
    file.peek(); // fails if the file is a folder
    if (!file)
        throw Fault("the file cannot be read");
    std::string const text(std::istreambuf_iterator<char>(file), {});
    if (std::size_t const at = text.find('\0'); at != text.npos) // where the parser would stop
        throw Fault("the file has a zero byte at offset " + std::to_string(at));
    try {
        return Place::Json::parse(text, Checker());
    } catch (Place::Json::exception const & error) {
        std::string const what = error.what();
        throw Fault(
            shortened(what.substr(what.find("] ") + 2), kLongestMessage)); // without the number of the error
    }
}
