#pragma once

#include <functional>

namespace pendra {

class Session;
class TimeEntry;

/// Says in the notice line what was being timed when the program ended without stopping it, and offers to
/// give it the length up to the last save or, where it is one entry, to type it: `edit` opens the entry's
/// editor. Says it once for each time that the document is read, and nothing when nothing was lost.
void postHaltedNotice(Session& session, std::function<void(TimeEntry&)> edit);

}  // namespace pendra
