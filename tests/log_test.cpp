#include "fixture.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>
#include <tuple>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

using Timer = MDXQueryLog::MDXQueryTimer;

char const kClock[] = "\"MDX Query Clock\"=dword:00000001\n";

// A machine of its own, whose settings and temporary folder stand in a new folder; all is as before at the end.
class QueryLog : public testing::Test {
protected:
    void SetUp() override
    {
        std::string pattern = (fs::temp_directory_path() / "query-log-XXXXXX").string();
        ASSERT_NE(nullptr, ::mkdtemp(pattern.data()));
        fFolder = pattern;
        for (char const * const name : { "XDG_CONFIG_HOME", "HOME", "TMPDIR" }) {
            char const * const old = std::getenv(name);
            fOld.emplace_back(name, old != nullptr, old != nullptr ? old : "");
            fs::create_directories(fFolder / name / "odbomodule");
            ::setenv(name, (fFolder / name).c_str(), 1);
        }
        query.reset(static_cast<MDXSelectQuery *>(f.generator->GenerateQuery(MDXQuery::QT_SELECT, nullptr)));
        query->AddAxisSpecification(0, f.set.get(), {}, MDXSelectQuery::NES_ALL);
    }
    void TearDown() override
    {
        for (auto const & [name, wasSet, old] : fOld)
            wasSet ? ::setenv(name, old.c_str(), 1) : ::unsetenv(name);
        fs::remove_all(fFolder);
    }

    // A generator that finds the log turned on, to a file of that name, with more values behind.
    std::unique_ptr<MDXQueryGenerator> logging_to(std::string const & file, std::string const & values = "") const
    {
        char const key[] = R"([HKEY_LOCAL_MACHINE\Software\Quarry Lane\Fieldstone 11.0\Tideline\BRIM(o)\Log\Modules\ODBOMODULE])";
        std::ofstream settings(fFolder / "XDG_CONFIG_HOME/odbomodule/registry.reg");
        settings << "Windows Registry Editor Version 5.00\n\n" << key << "\n\"MDX Query Log\"=\"" << file << "\"\n" << values;
        return std::unique_ptr<MDXQueryGenerator>(createMSOLAP7QueryGenerator("[Sales]", false));
    }
    std::string read(char const * file) const
    {
        std::ostringstream bytes;
        bytes << std::ifstream(fFolder / file, std::ios::binary).rdbuf();
        return bytes.str();
    }

    Fixture f;
    Held<MDXSelectQuery> query; // {A} on the columns
    fs::path fFolder;
    std::vector<std::tuple<char const *, bool, std::string>> fOld;
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
    EXPECT_TRUE(fs::exists(fFolder / "TMPDIR/first.txt"));
    EXPECT_FALSE(fs::exists(fFolder / "TMPDIR/second.txt"));
}

TEST_F(QueryLog, WithoutAClockThereIsNoTimer)
{
    for (char const * const clock : { "", "\"MDX Query Clock\"=dword:00000000\n", "\"MDX Query Clock\"=\"1\"\n" }) {
        auto const made = logging_to("log.txt", clock);
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
    for (int run = 0; run < 2; ++run) { // the second adds to what the first has written
        auto const made = logging_to((fFolder / "log.txt").string(), kClock);
        MDXQueryLog * const log = made->GetMDXQueryLog();
        ASSERT_NE(nullptr, log);
        log->timeQuery(nullptr);
        Timer * timer = nullptr;
        log->timeQuery(&timer);
        ASSERT_NE(nullptr, timer);
        // The timer stays with its holder when nothing is written.
        log->logQuery(nullptr, timer);
        Held<MDXQuery> const broken(made->GenerateQuery(MDXQuery::QT_DROP, nullptr));
        expect_error(Raises{ MDX_ERR_NOTHING_TO_DROP }, [&] { log->logQuery(broken.get(), timer); });
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        log->logQuery(query.get(), timer);
        log->logMessage("a message");
        log->logQuery(query.get(), nullptr);
    }
    // The durations vary: each is cut out of the text and looked at by itself.
    std::string text = read("log.txt");
    std::string const opening = "Query duration: ";
    for (std::size_t at = text.find(opening); at != std::string::npos; at = text.find(opening, at + 1)) {
        at += opening.size();
        std::string const digits = text.substr(at, text.find(' ', at) - at);
        EXPECT_EQ(4u, digits.size() - digits.find('.')) << text;
        EXPECT_GE(std::stod(digits), 0.019); // the clock goes on while the process waits
        EXPECT_LT(std::stod(digits), 15);
        text.replace(at, digits.size(), "?");
    }
    std::string const run = "[Sales]: \nSELECT \n       {A} ON COLUMNS \nFROM [Sales] \nQuery duration: ? seconds\na message\n"
                            "[Sales]: \nSELECT \n       {A} ON COLUMNS \nFROM [Sales] \n";
    EXPECT_EQ(run + run, text);
}

TEST_F(QueryLog, ClosedLogDoesNothing)
{
    auto const made = logging_to((fFolder / "no such folder/log.txt").string(), kClock);
    EXPECT_EQ(nullptr, made->GetMDXQueryLog());
    fs::create_directory(fFolder / "no such folder");
    EXPECT_EQ(nullptr, made->GetMDXQueryLog());

    MDXQueryLog log("[Sales]");
    EXPECT_FALSE(log.open("Software\\Quarry Lane"));
    log.logMessage("lost");
    Timer own; // stays with its holder
    log.logQuery(query.get(), &own);
    EXPECT_TRUE(fs::is_empty(fFolder / "no such folder"));
}
