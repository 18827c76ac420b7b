#pragma once
#include "host/core_log.h"

#include <atomic>
#include <cstdint>
#include <string_view>

namespace support {

// What the objects of a class share: its name, the id of the next object, and the log's levels for the class, which
// the first object looks up. Each class that derives from RefCount directly has one ObjectClass, in its source
// file.
struct ObjectClass {
    std::u16string_view name;
    std::atomic<std::int32_t> nextId{ 0 };
    std::atomic<CoreLog::VerbosityType *> interfaceVerbosity{ nullptr };
    std::atomic<CoreLog::VerbosityType *> memoryVerbosity{ nullptr };
};

}
