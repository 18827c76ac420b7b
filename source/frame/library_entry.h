#pragma once
class CoreLog;

// The process's log, fetched when the library is loaded. Null where there is none.
extern CoreLog * gCoreLog;
