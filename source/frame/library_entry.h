#pragma once
class CoreLog;

// The log of the process, fetched when the library is loaded. Null before that.
extern CoreLog * gCoreLog;
