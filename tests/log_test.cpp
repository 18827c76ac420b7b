#include "allocations.h"
#include "fixture.h"
#include "machine.h"

#include <chrono>
#include <thread>

namespace {

char const kKey[] = R"(Software\Quarry Lane\Fieldstone 11.0\Tideline\BRIM(o)\Log\Modules\ODBOMODULE)";

struct QueryLog : testing::Test, Machine {
    QueryLog() { query->AddAxisSpecification(0, f.set, {}, MDXSelectQuery::NES_ALL); }

    Fixture f;
    RefPtr<MDXSelectQuery> query{ static_cast<MDXSelectQuery *>(f.generator->GenerateQuery(MDXQuery::QT_SELECT, nullptr)) };
    MDXQueryLog::MDXQueryTimer ownTimer; // the log must not delete it
    MDXQueryLog::MDXQueryTimer * timer = &ownTimer;
};

}

TEST_F(QueryLog, ReadsItsSettingsOncePerGenerator)
{
    EXPECT_EQ(nullptr, f.generator->GetMDXQueryLog());
    write_setting(kKey, "MDX Query Log", "log.txt");
    write_setting(kKey, "MDX Query Clock", "1"); // a text, so no clock
    EXPECT_EQ(nullptr, f.generator->GetMDXQueryLog());
    Fixture const later;
    Fixture const last;
    gFailAt = kAllocationsFail ? 1 : 0;
    EXPECT_EQ(kAllocationsFail ? kNoMemory : "", error_of([&] { later.generator->GetMDXQueryLog(); })); // the next call tries again
    gFailAt = 0;
    MDXQueryLog * const log = later.generator->GetMDXQueryLog();
    ASSERT_NE(nullptr, log);
    EXPECT_TRUE(std::filesystem::exists(temporary_folder() / "log.txt"));
    write_setting(kKey, "MDX Query Clock", 0u);
    last.generator->GetMDXQueryLog()->timeQuery(&timer);
    EXPECT_EQ(&ownTimer, timer) << "the clock is off";
    last.generator->GetMDXQueryLog()->logQuery(query.get(), new MDXQueryLog::MDXQueryTimer);
    EXPECT_NE(std::string::npos, text_of_file(temporary_folder() / "log.txt").find("Query duration: 0.0"))
        << "a timer that the host made is logged even if the clock is off";
    write_setting(kKey, "MDX Query Clock", 1u);
    EXPECT_EQ(log, later.generator->GetMDXQueryLog());
    log->timeQuery(&timer);
    EXPECT_EQ(&ownTimer, timer) << "the log keeps the setting that it was made with";
}

TEST_F(QueryLog, WritesStatementsMessagesAndDurations)
{
    write_setting(kKey, "MDX Query Log", (fFolder / "log.txt").string());
    write_setting(kKey, "MDX Query Clock", 1u);
    MDXQueryLog * const log = f.generator->GetMDXQueryLog();
    ASSERT_NE(nullptr, log);
    log->timeQuery(nullptr);
    auto const before = std::chrono::steady_clock::now();
    log->timeQuery(&timer);
    ASSERT_NE(&ownTimer, timer);
    // If nothing is written, the timer still belongs to the caller
    log->logQuery(nullptr, timer);
    RefPtr<MDXQuery> const broken(f.generator->GenerateQuery(MDXQuery::QT_DROP, nullptr));
    EXPECT_EQ(raises(MDX_ERR_NOTHING_TO_DROP), error_of([&] { log->logQuery(broken.get(), timer); }));
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    bool failed = true; // because memory runs out
    for (std::size_t nth = kAllocationsFail ? 1 : 0; failed; ++nth) {
        gFailAt = nth;
        failed = error_of([&] { log->logQuery(query.get(), timer); }) == kNoMemory;
        gFailAt = 0;
    }
    std::chrono::duration<double> const longest = std::chrono::steady_clock::now() - before;
    log->logMessage("a message");
    log->logQuery(query.get(), nullptr);

    std::string text = text_of_file(fFolder / "log.txt");
    std::size_t const start = text.find("duration: ") + 10; // of the number
    std::string const seconds = text.substr(start, text.find(' ', start) - start);
    text.replace(start, seconds.size(), "?");
    std::string const entry = "[Sales]: \n"
                              "SELECT \n"
                              "       {A} ON COLUMNS \n"
                              "FROM [Sales] \n";
    EXPECT_EQ(text, entry + "Query duration: ? seconds\n" + "a message\n" + entry);
    EXPECT_EQ(4u, seconds.size() - seconds.find('.')); // three decimals
    EXPECT_GE(std::stod(seconds), 0.01);               // the clock also counts while the process waits
    EXPECT_LE(std::stod(seconds), longest.count() + 0.002);
}

TEST_F(QueryLog, HasTheStatementThatAHostSends)
{
    write_setting(kKey, "MDX Query Log", "log.txt");
    write_setting(kKey, "MDX Query Clock", 1u);
    KelpString sent;
    EXPECT_EQ(42, memory_cube::logged(*f.generator, *query, [&sent](KelpString const & text) { return sent = text, 42; }));
    EXPECT_EQ(query->getText(false), sent);
    std::size_t const entry = text_of_file(temporary_folder() / "log.txt").size();
    memory_cube::logged(*f.generator, *query, [](KelpString const &) {});
    EXPECT_EQ(2 * entry, text_of_file(temporary_folder() / "log.txt").size());
    EXPECT_NE(std::string::npos, text_of_file(temporary_folder() / "log.txt").find("FROM [Sales] \nQuery duration: 0.0"));
}

TEST_F(QueryLog, WritesNothingWhileItIsClosed)
{
    std::filesystem::path const file = fFolder / "missing/log.txt";
    write_setting(kKey, "MDX Query Log", file.string());
    EXPECT_EQ(nullptr, f.generator->GetMDXQueryLog());
    char const key[] = "Software\\Log";
    MDXQueryLog log("[Sales]");
    log.timeQuery(&timer);
    EXPECT_EQ(&ownTimer, timer) << "the log was never open";
    write_setting(key, "MDX Query Log", file.string());
    write_setting(key, "MDX Query Clock", 1u);
    EXPECT_FALSE(log.open(key));
    log.timeQuery(&timer);
    EXPECT_NE(&ownTimer, timer) << "the clock is on, without a file";
    std::unique_ptr<MDXQueryLog::MDXQueryTimer> const ours(timer);
    std::filesystem::create_directory(file.parent_path());
    log.logMessage("lost");
    log.logQuery(query.get(), &ownTimer);
    EXPECT_FALSE(std::filesystem::exists(file));
    // If open() fails for a log that is open, the log is closed. An empty path is a failure
    for (char const * const path : { "", "missing/again/log.txt" }) {
        write_setting(key, "MDX Query Log", file.string());
        EXPECT_TRUE(log.open(key));
        write_setting(key, "MDX Query Log", *path == '\0' ? path : (fFolder / path).string());
        write_setting(key, "MDX Query Clock", "1"); // a text, so no clock
        EXPECT_FALSE(log.open(key));
        timer = &ownTimer;
        log.timeQuery(&timer);
        EXPECT_EQ(&ownTimer, timer) << "the clock is off again";
        log.logMessage("lost");
    }
    EXPECT_EQ("", text_of_file(file));
}
