#pragma once
class CoreLog;

// The log of the process, fetched when the library is loaded. Null if the support library has none.
extern CoreLog * gCoreLog;
