#pragma once
#include "host/core_log.h"

#include <atomic>
#include <cstdint>
#include <string_view>

namespace support {

// What the objects of one class share: their name, the number of the next one, and the levels that the log has for
// them, which the first object looks up. Each class that derives from
// RefCount itself has one, in its source file.
struct ObjectClass {
    std::u16string_view name;
    std::atomic<std::int32_t> nextId{ 0 };
    std::atomic<CoreLog::VerbosityType *> interfaceVerbosity{ nullptr };
    std::atomic<CoreLog::VerbosityType *> memoryVerbosity{ nullptr };
};

}
