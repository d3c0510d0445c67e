#pragma once
// Timing must be halted before anything that copies, sends or closes the document. Stopping (the guard)
// gives the running entries their lengths; halting (at reading) does not, because nobody knows them.

namespace pendra {

class ObjectContext;
class Session;

/// Whether any activity is being timed.
[[nodiscard]] bool isTimeRunning(const ObjectContext& context);

/// True when no timer runs, or when the user agreed and all were stopped; false when the user cancelled.
[[nodiscard]] bool checkForRunningTimers(Session& session);

/// Stops every activity of the open document, in one step that can be taken back; nothing without one.
void stopAllActivities(Session& session);

}  // namespace pendra
