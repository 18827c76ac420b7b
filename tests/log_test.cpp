#include "fixture.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

using Timer = MDXQueryLog::MDXQueryTimer;

char const kEntry[] = "[Sales]: \nSELECT \n       {A} ON COLUMNS \nFROM [Sales] \n";

// A machine of its own, whose settings and temporary folder stand in a new folder; all is as before at the end.
class QueryLog : public testing::Test {
protected:
    void SetUp() override
    {
        std::string pattern = (fs::temp_directory_path() / "query-log-XXXXXX").string();
        ASSERT_NE(nullptr, ::mkdtemp(pattern.data()));
        fFolder = pattern;
        for (char const * const name : { "XDG_CONFIG_HOME", "HOME", "TMPDIR" }) {
            if (char const * const old = std::getenv(name))
                fOld[name] = old;
            fs::create_directories(fFolder / name / "odbomodule");
            ::setenv(name, (fFolder / name).c_str(), 1);
        }
        query = Held<MDXSelectQuery>(static_cast<MDXSelectQuery *>(f.generator->GenerateQuery(MDXQuery::QT_SELECT, nullptr)));
        query->AddAxisSpecification(0, f.set.get(), {}, MDXSelectQuery::NES_ALL);
    }
    void TearDown() override
    {
        for (char const * const name : { "XDG_CONFIG_HOME", "HOME", "TMPDIR" })
            if (auto const old = fOld.find(name); old != fOld.end())
                ::setenv(name, old->second.c_str(), 1);
            else
                ::unsetenv(name);
        fs::remove_all(fFolder);
    }

    // Turns the log on, to a file of that name, with more values behind.
    void turn_on(std::string const & file, std::string const & values = "") const
    {
        std::ofstream(fFolder / "XDG_CONFIG_HOME/odbomodule/registry.reg") << "Windows Registry Editor Version 5.00\n\n"
                                                                           << "[HKEY_LOCAL_MACHINE\\Software\\Quarry Lane\\Fieldstone 11.0\\Tideline\\BRIM(o)\\Log\\Modules\\"
                                                                              "ODBOMODULE]\n\"MDX Query Log\"=\""
                                                                           << file << "\"\n"
                                                                           << values;
    }
    std::string read(char const * file) const
    {
        std::ostringstream bytes;
        bytes << std::ifstream(fFolder / file, std::ios::binary).rdbuf();
        return bytes.str();
    }
    static std::unique_ptr<MDXQueryGenerator> generator() { return std::unique_ptr<MDXQueryGenerator>(createMSOLAP7QueryGenerator("[Sales]", false)); }

    Fixture f;
    Held<MDXSelectQuery> query; // {A} on the columns
    fs::path fFolder;
    std::map<std::string, std::string> fOld;
};

}

TEST_F(QueryLog, SettingIsReadOnceForAGenerator)
{
    EXPECT_EQ(nullptr, f.generator->GetMDXQueryLog());
    turn_on("first.txt");
    EXPECT_EQ(nullptr, f.generator->GetMDXQueryLog());
    auto const later = generator();
    MDXQueryLog * const log = later->GetMDXQueryLog();
    ASSERT_NE(nullptr, log);
    turn_on("second.txt");
    EXPECT_EQ(log, later->GetMDXQueryLog());
    EXPECT_TRUE(fs::exists(fFolder / "TMPDIR/first.txt"));
    EXPECT_FALSE(fs::exists(fFolder / "TMPDIR/second.txt"));
}

TEST_F(QueryLog, WithoutAClockThereIsNoTimer)
{
    for (char const * const clock : { "", "\"MDX Query Clock\"=dword:00000000\n", "\"MDX Query Clock\"=\"1\"\n" }) {
        turn_on("log.txt", clock);
        fs::remove(fFolder / "TMPDIR/log.txt");
        auto const made = generator();
        MDXQueryLog * const log = made->GetMDXQueryLog();
        ASSERT_NE(nullptr, log);
        Timer own;
        Timer * timer = &own;
        log->timeQuery(&timer);
        EXPECT_EQ(&own, timer);
        log->timeQuery(nullptr);
        log->logQuery(query.get(), nullptr);
        EXPECT_EQ(kEntry, read("TMPDIR/log.txt")) << clock;
    }
}

TEST_F(QueryLog, EntriesAndDurations)
{
    turn_on((fFolder / "log.txt").string(), "\"MDX Query Clock\"=dword:00000001\n");
    for (int run = 0; run < 2; ++run) {
        auto const made = generator();
        MDXQueryLog * const log = made->GetMDXQueryLog();
        ASSERT_NE(nullptr, log);
        log->timeQuery(nullptr);
        Timer * timer = nullptr;
        log->timeQuery(&timer);
        ASSERT_NE(nullptr, timer);
        log->logQuery(nullptr, timer); // the timer stays with its holder
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        log->logQuery(query.get(), timer);
        log->logMessage("a message");
    }
    KelpString stored("stored\n'x'");
    query->setQuery(stored);
    auto const made = generator();
    made->GetMDXQueryLog()->logQuery(query.get(), nullptr);

    // The durations vary: each is cut out of the text and looked at by itself.
    std::string text = read("log.txt");
    std::string const opening = "Query duration: ";
    for (std::size_t at = text.find(opening); at != std::string::npos; at = text.find(opening, at + 1)) {
        at += opening.size();
        std::string const digits = text.substr(at, text.find(' ', at) - at);
        EXPECT_EQ(4u, digits.size() - digits.find('.')) << text;
        EXPECT_GE(std::stod(digits), 0.019); // the clock goes on while the process waits
        EXPECT_LT(std::stod(digits), 60);
        text.replace(at, digits.size(), "?");
    }
    EXPECT_EQ("[Sales]: \nSELECT \n       {A} ON COLUMNS \nFROM [Sales] \n"
              "Query duration: ? seconds\na message\n"
              "[Sales]: \nSELECT \n       {A} ON COLUMNS \nFROM [Sales] \n"
              "Query duration: ? seconds\na message\n"
              "[Sales]: stored\n'x'\n",
        text);
}

TEST_F(QueryLog, DurationsShowMilliseconds)
{
    KelpString line;
    line.build("Query duration: %.3f seconds", 1234 * 0.001);
    EXPECT_EQ("Query duration: 1.234 seconds", line.toUTF8());
    line.build("Query duration: %.3f seconds", 5 * 0.001);
    EXPECT_EQ("Query duration: 0.005 seconds", line.toUTF8());
}

TEST_F(QueryLog, StatementThatThrowsWritesNothing)
{
    turn_on("log.txt", "\"MDX Query Clock\"=dword:00000001\n");
    auto const made = generator();
    MDXQueryLog * const log = made->GetMDXQueryLog();
    ASSERT_NE(nullptr, log);
    Timer * timer = nullptr;
    log->timeQuery(&timer);
    ASSERT_NE(nullptr, timer);
    Held<MDXQuery> const broken(made->GenerateQuery(MDXQuery::QT_DROP, nullptr));
    expect_error(Raises{ MDX_ERR_NOTHING_TO_DROP }, [&] { log->logQuery(broken.get(), timer); });
    EXPECT_EQ("", read("TMPDIR/log.txt"));
    delete timer;
}

TEST_F(QueryLog, ClosedLogDoesNothing)
{
    turn_on((fFolder / "no such folder/log.txt").string(), "\"MDX Query Clock\"=dword:00000001\n");
    EXPECT_EQ(nullptr, f.generator->GetMDXQueryLog());
    fs::create_directory(fFolder / "no such folder");
    EXPECT_EQ(nullptr, f.generator->GetMDXQueryLog());

    MDXQueryLog log("[Sales]");
    EXPECT_FALSE(log.open("Software\\Quarry Lane"));
    log.logMessage("lost");
    Timer own; // stays with its holder
    log.logQuery(query.get(), &own);
    Timer * timer = &own;
    log.timeQuery(&timer);
    EXPECT_EQ(&own, timer);
    EXPECT_TRUE(fs::is_empty(fFolder / "no such folder"));
}

TEST_F(QueryLog, LinkInTheTemporaryFolderIsNotFollowed)
{
    std::ofstream(fFolder / "victim.txt") << "untouched";
    fs::create_symlink(fFolder / "victim.txt", fFolder / "TMPDIR/log.txt");
    turn_on("log.txt");
    EXPECT_EQ(nullptr, f.generator->GetMDXQueryLog());
    EXPECT_EQ("untouched", read("victim.txt"));
}

TEST_F(QueryLog, ProcessesDoNotMixWithinAnEntry)
{
    constexpr int kEntries = 200;
    turn_on("log.txt");
    pid_t children[2];
    for (int child = 0; child < 2; ++child) {
        children[child] = ::fork();
        ASSERT_GE(children[child], 0);
        if (children[child] == 0) {
            auto const made = generator();
            MDXQueryLog * const log = made->GetMDXQueryLog();
            KelpString text(std::u16string(9000, child == 0 ? u'a' : u'b'));
            query->setQuery(text);
            for (int i = 0; log != nullptr && i < kEntries; ++i)
                log->logQuery(query.get(), nullptr);
            ::_exit(log == nullptr ? 1 : 0);
        }
    }
    for (pid_t const child : children) {
        int status = -1;
        ASSERT_EQ(child, ::waitpid(child, &status, 0));
        EXPECT_EQ(0, status);
    }
    std::istringstream lines(read("TMPDIR/log.txt"));
    std::map<char, int> counts;
    for (std::string line; std::getline(lines, line);) {
        ASSERT_EQ("[Sales]: " + std::string(9000, line.back()), line);
        ++counts[line.back()];
    }
    EXPECT_EQ((std::map<char, int>{ { 'a', kEntries }, { 'b', kEntries } }), counts);
}
