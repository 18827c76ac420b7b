// report_from_json FILE [--steps]: reads a cube and reports from a JSON file such as examples/sales.json and prints
// each statement on one line and on several lines. With --steps it also prints the text after every step.
// docs/report_file.md describes the file.
#include "cube_reader.h"
#include "statements.h"

#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

namespace {

constexpr int kMaxDepth = 200;

// The text to print: all reports of the file.
std::string compose(Place const & file, bool steps)
{
    file.expect_keys({ "cube", "reports" });
    memory_cube::Cube cube = read_cube(file.at("cube"));
    Composer composer(cube);
    std::ostringstream out;
    for (Place const & report : file.at("reports").items()) {
        try {
            RefPtr const query = make_statement(composer, report);
            KelpString const line = query->getText(false);
            KelpString const lines = query->getText(true);
            out << "== " << report.at("title").utf8() << " ==\n"
                << (steps ? composer.take_steps() + "\n" : "") << line << "\n";
            if (lines != line)
                out << (lines.front() == u'\n' ? "" : "\n") << lines << "\n";
            out << "\n";
        } catch (MDXError const & error) {
            report.reject(error.getText().toUTF8());
        }
    }
    return out.str();
}

// The parser calls this for each value. The depth is limited because nested values are read recursively.
bool limit_depth(int depth, Place::Json::parse_event_t, Place::Json &)
{
    if (depth > kMaxDepth)
        throw Fault("lists and objects are nested more than " + std::to_string(kMaxDepth) + " levels deep");
    return true;
}

}

int main(int argc, char ** argv)
{
    bool const steps = argc == 3 && std::string(argv[2]) == "--steps";
    if (argc != 2 && !steps) {
        std::cerr << "usage: report_from_json FILE [--steps]\n";
        return 2;
    }
    try {
        std::ifstream file(argv[1]);
        file.peek(); // fails if the file is a folder
        if (!file)
            throw Fault("the file cannot be read");
        Place::Json const json = Place::Json::parse(file, limit_depth);
        std::cout << compose(Place(json), steps);
    } catch (Place::Json::exception const & error) {
        std::string const what = error.what();
        std::cerr << argv[1] << ": " << what.substr(what.find("] ") + 2) << "\n"; // after the number of the error
        return 1;
    } catch (std::exception const & error) { // mostly a Fault
        std::cerr << argv[1] << ": " << error.what() << "\n";
        return 1;
    }
}
