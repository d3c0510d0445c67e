#pragma once
// Timing must be halted before anything that copies, sends or closes the document. Stopping (the guard)
// gives the running entries their lengths; halting (after a load) does not, because nobody knows them.

namespace pendra {

class Session;

/// Sets `running` of every entry to false; no duration is written.
void haltRunningEntries(Session& session);

/// True when no timer runs, or when the user agreed and all were stopped; false when the user cancelled.
[[nodiscard]] bool checkForRunningTimers(Session& session);

/// Stops every activity of the open document; nothing without one.
void stopAllActivities(Session& session);

/// The save of every 120 seconds: the context, then the document. Running timers run on.
void periodicSave(Session& session);

}  // namespace pendra
