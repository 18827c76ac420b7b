#include "fixture.h"
#include "machine.h"

#include <chrono>
#include <filesystem>
#include <thread>
#include <vector>

namespace fs = std::filesystem;

namespace {

using Timer = MDXQueryLog::MDXQueryTimer;

char const kKey[] = R"(Software\Quarry Lane\Fieldstone 11.0\Tideline\BRIM(o)\Log\Modules\ODBOMODULE)";

class QueryLog : public testing::Test {
protected:
    QueryLog() : query(static_cast<MDXSelectQuery *>(f.generator->GenerateQuery(MDXQuery::QT_SELECT, nullptr)))
    {
        query->AddAxisSpecification(0, f.set, {}, MDXSelectQuery::NES_ALL);
    }

    // A generator that finds the log turned on, to a file of that name, and the clock as it was set before.
    std::unique_ptr<MDXQueryGenerator> logging_to(std::string const & file)
    {
        machine.set(kKey, "MDX Query Log", file);
        return std::unique_ptr<MDXQueryGenerator>(createMSOLAP7QueryGenerator("[Sales]", false));
    }
    template <class Value>
    void set_clock(Value value)
    {
        machine.set(kKey, "MDX Query Clock", value);
    }

    Fixture f;
    RefPtr<MDXSelectQuery> query; // {A} on the columns
    Machine machine;
};

}

TEST_F(QueryLog, SettingIsReadOnceForAGenerator)
{
    EXPECT_EQ(nullptr, f.generator->GetMDXQueryLog());
    auto const later = logging_to("first.txt");
    EXPECT_EQ(nullptr, f.generator->GetMDXQueryLog());
    MDXQueryLog * const log = later->GetMDXQueryLog();
    ASSERT_NE(nullptr, log);
    logging_to("second.txt");
    EXPECT_EQ(log, later->GetMDXQueryLog());
    EXPECT_TRUE(fs::exists(machine.temporary_folder() / "first.txt"));
    EXPECT_FALSE(fs::exists(machine.temporary_folder() / "second.txt"));
}

TEST_F(QueryLog, WithoutAClockThereIsNoTimer)
{
    for (char const * const clock : { "none", "off", "a text" }) {
        if (clock == std::string("off"))
            set_clock(0u);
        else if (clock == std::string("a text"))
            set_clock("1");
        auto const made = logging_to("log.txt");
        MDXQueryLog * const log = made->GetMDXQueryLog();
        ASSERT_NE(nullptr, log);
        Timer own;
        Timer * timer = &own;
        log->timeQuery(&timer);
        EXPECT_EQ(&own, timer) << clock;
    }
}

TEST_F(QueryLog, EntriesAndDurations)
{
    using Clock = std::chrono::steady_clock;
    std::vector<double> least, most;
    set_clock(1u);
    for (int run = 0; run < 2; ++run) { // the second adds to what the first has written
        auto const made = logging_to((machine.folder() / "log.txt").string());
        MDXQueryLog * const log = made->GetMDXQueryLog();
        ASSERT_NE(nullptr, log);
        log->timeQuery(nullptr);
        Timer * timer = nullptr;
        auto const before = Clock::now();
        log->timeQuery(&timer);
        auto const started = Clock::now();
        ASSERT_NE(nullptr, timer);
        // The timer stays with its holder when nothing is written.
        log->logQuery(nullptr, timer);
        RefPtr<MDXQuery> const broken(made->GenerateQuery(MDXQuery::QT_DROP, nullptr));
        EXPECT_EQ(raises(MDX_ERR_NOTHING_TO_DROP), error_of([&] { log->logQuery(broken.get(), timer); }));
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        least.push_back(std::chrono::duration<double>(Clock::now() - started).count());
        log->logQuery(query.get(), timer);
        most.push_back(std::chrono::duration<double>(Clock::now() - before).count());
        log->logMessage("a message");
        log->logQuery(query.get(), nullptr);
    }
    // The durations vary: each is cut out of the text and looked at by itself.
    std::string text = text_of(machine.folder() / "log.txt");
    std::string const opening = "Query duration: ";
    std::size_t entry = 0;
    for (std::size_t at = text.find(opening); at != std::string::npos; at = text.find(opening, at + 1)) {
        at += opening.size();
        std::string const digits = text.substr(at, text.find(' ', at) - at);
        EXPECT_EQ(4u, digits.size() - digits.find('.')) << text;
        ASSERT_LT(entry, least.size());
        EXPECT_GE(std::stod(digits), least[entry] - 0.002); // the clock goes on while the process waits
        EXPECT_LE(std::stod(digits), most[entry] + 0.002);
        ++entry;
        text.replace(at, digits.size(), "?");
    }
    std::string const run = "[Sales]: \nSELECT \n       {A} ON COLUMNS \nFROM [Sales] \nQuery duration: ? seconds\na message\n"
                            "[Sales]: \nSELECT \n       {A} ON COLUMNS \nFROM [Sales] \n";
    EXPECT_EQ(run + run, text);
}

TEST_F(QueryLog, ClosedLogDoesNothing)
{
    set_clock(1u);
    auto const made = logging_to((machine.folder() / "no such folder/log.txt").string());
    EXPECT_EQ(nullptr, made->GetMDXQueryLog());
    fs::create_directory(machine.folder() / "no such folder");
    EXPECT_EQ(nullptr, made->GetMDXQueryLog());

    MDXQueryLog log("[Sales]");
    EXPECT_FALSE(log.open("Software\\Quarry Lane"));
    log.logMessage("lost");
    Timer own; // stays with its holder
    log.logQuery(query.get(), &own);
    EXPECT_TRUE(fs::is_empty(machine.folder() / "no such folder"));
}
