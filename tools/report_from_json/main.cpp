// report_from_json FILE [--steps]: reads a cube and reports from a JSON file such as examples/sales.json and prints
// each statement on one line and on several lines. With --steps it also prints the text after every step.
// docs/report_file.md describes the file.
#include "cube_reader.h"
#include "json_file.h"
#include "statements.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <new>
#include <nlohmann/json.hpp>
#include <string>

namespace {

// The text to print: all reports of the file.
std::string compose(Place const & file, bool steps)
{
    file.expect_keys({ "cube", "reports" });
    memory_cube::Cube cube = read_cube(file.at("cube"));
    Composer composer(cube, steps);
    std::string out;
    for (Place const & report : file.at("reports").items()) {
        try {
            RefPtr const query = make_statement(composer, report);
            KelpString const line = query->getText(false);
            KelpString const lines = query->getText(true);
            out += "== " + report.at("title").utf8() + " ==\n";
            if (steps)
                out += composer.take_recorded() + "\n";
            out += line.toUTF8() + "\n";
            if (lines != line)
                out += (lines.front() == u'\n' ? "" : "\n") + lines.toUTF8() + "\n";
            out += "\n";
        } catch (MDXError const & error) {
            report.reject(error.getText().toUTF8());
        }
    }
    return out;
}

// Returns the exit status. File names and messages may hold any bytes, so they are made valid UTF-8 without control
// characters.
int fail(std::string const & message)
{
    KelpString text = message;
    auto const isControl = [](char16_t each) { return each < u' ' || (each >= 0x7F && each < 0xA0); };
    std::replace_if(text.begin(), text.end(), isControl, u'\uFFFD');
    std::cerr << text << "\n";
    return 1;
}

// Ends the program when memory runs out. An exception would not do: the destructor of a JSON value allocates memory
// and terminates the program if that fails.
[[noreturn]] void end_without_memory()
{
    std::fputs("Out of memory.\n", stderr);
    std::_Exit(1);
}

}

int main(int argc, char ** argv)
{
    bool const steps = argc == 3 && std::string(argv[2]) == "--steps";
    if (argc != 2 && !steps) {
        std::cerr << "usage: report_from_json FILE [--steps]\n";
        return 2;
    }
    std::set_new_handler(end_without_memory);
    std::string const path = argv[1];
    try {
        std::string const text = compose(Place(read_json(path)), steps);
        if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0)
            return fail("The output could not be written.");
    } catch (std::exception const & error) { // mostly a Fault
        return fail(path + ": " + error.what());
    }
}
