#pragma once
#include <odbomodule/host/core_log.h>
#include <odbomodule/odbomodule.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

using Strings = std::vector<std::string>;

// What the log gets within a scope, as "code level module/part: text" with the code in hexadecimal.
struct LogLines {
    Strings fAll;

    LogLines() { support_dll::getLogObject()->setSink(take_line, this); }
    ~LogLines() { support_dll::getLogObject()->setSink(nullptr, nullptr); }
    Strings take() { return std::exchange(fAll, {}); }
    static void take_line(
        void * lines, std::uint32_t code, std::int32_t level, KelpString const & module, KelpString const & part, KelpString const & line)
    {
        static_cast<LogLines *>(lines)->fAll.push_back(
            KelpString(format_text("%x %d %s/%s: %s", code, level, module, part, line)).toUTF8());
    }
};

// How a line names an object.
inline std::string address_of(support::RefCount const * object)
{
    return KelpString(format_text("%x", reinterpret_cast<std::uintptr_t>(object))).toUTF8();
}

// A level of the log within a scope.
struct ScopedLevel {
    CoreLog::VerbosityType & fLevel;

    ScopedLevel(char const * module, KelpString const & part, std::int32_t level)
        : fLevel(*support_dll::getLogObject()->getModuleVerbosity(module, part))
    {
        fLevel = level;
    }
    ~ScopedLevel() { fLevel = 0; }
};
