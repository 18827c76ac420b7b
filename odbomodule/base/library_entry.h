#pragma once
class CoreLog;

// The process's log, fetched when the library is loaded; null without one.
extern CoreLog * gCoreLog;
