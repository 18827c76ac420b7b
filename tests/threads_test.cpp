// What several threads may do at once. scripts/test tsan runs these tests with the thread sanitizer.
#include "fixture.h"
#include "machine.h"

#include <odbomodule/host/file.h>

#include <atomic>
#include <cstdlib>
#include <set>
#include <thread>

namespace {

void on_eight_threads(std::function<void()> const & body)
{
    std::vector<std::jthread> threads; // joined when the function returns
    for (int i = 0; i < 8; ++i)
        threads.emplace_back(body);
}

// The counts in successive log lines differ by one, whichever thread changes the count.
TEST(Threads, HoldOneObject)
{
    Fixture f;
    ScopedLevel const counts("INTERFACE", "MDXSet", 5);
    LogLines lines;
    on_eight_threads([&f] {
        for (int round = 0; round < 500; ++round)
            count_of(*f.set);
    });
    int last = 1;
    for (std::string const & line : lines.take()) {
        int const count = std::stoi(line.substr(line.rfind(' ')));
        ASSERT_EQ(1, std::abs(std::exchange(last, count) - count));
    }
    EXPECT_EQ(1, last);
    EXPECT_EQ(1, count_of(*f.set));
}

TEST(Threads, GiveEachNewObjectItsOwnNumber)
{
    Fixture f;
    LogLines lines;
    ScopedLevel const memory("MEMORY", "MDXValue", 4);
    on_eight_threads([&f] {
        for (int round = 0; round < 100; ++round)
            f.generator->GenerateValue(round)->unuse();
    });
    std::set<std::string> numbered;
    for (std::string const & line : lines.fAll)
        numbered.insert(line.substr(0, line.find(')')));
    EXPECT_EQ(1600u, lines.fAll.size()); // made and destroyed
    EXPECT_EQ(800u, numbered.size());
}

TEST(Threads, CopyOneCondition)
{
    using namespace memory_cube::conditions;
    memory_cube::Condition const shared = !(mdx("a") > 1);
    on_eight_threads([&shared] {
        memory_cube::Maker const make("[Sales]");
        for (int round = 0; round < 300; ++round)
            EXPECT_EQ("NOT( a > 1 ) OR b", make.value(memory_cube::Condition(shared) || mdx("b"))->getText());
    });
}

TEST(Threads, RaiseLevelsOfTheLog)
{
    auto const level_of = [](int part) {
        return support_dll::getLogObject()->getModuleVerbosity("MODULE", KelpString(std::to_string(part).c_str()));
    };
    on_eight_threads([level_of] {
        for (int part = 0; part < 200; ++part)
            ++*level_of(part);
    });
    for (int part = 0; part < 200; ++part)
        EXPECT_EQ(8, level_of(part)->exchange(0));
    EXPECT_NE(support_dll::getLogObject()->getModuleVerbosity("OTHER", "1"), level_of(1));
}

// Eight threads, each with an open file, replace eight processes: a lock belongs to an open file, not to a process.
TEST(Threads, AppendWholeLinesToOneFile)
{
    Machine const machine;
    std::size_t const length = 20000; // more than one page
    std::atomic<char> next = 'a';
    on_eight_threads([&] {
        std::string const line(length, next++);
        File file(FileLocator(machine.fFolder.u16string() + u"/log.txt"));
        file.open("a+");
        for (int n = 0; n < 100; ++n)
            file.writeLine(line.c_str());
    });
    std::istringstream text(text_of_file(machine.fFolder / "log.txt"));
    int lines = 0;
    for (std::string line; std::getline(text, line); ++lines)
        ASSERT_TRUE(line == std::string(length, line[0])) << line.substr(0, 20);
    EXPECT_EQ(800, lines);
}

}
