#pragma once

namespace pendra {

/// A call of Vantor that goes on, on the channel's thread, as the thread of the interface sees it.
class PendingCall {
 public:
  virtual ~PendingCall() = default;
  /// A descriptor that becomes readable when the call is over; it is for watching only.
  [[nodiscard]] virtual int finished() const = 0;
  /// Asks for the end of the call, and of every later one of this connection. It is over within moments; a
  /// call of which something had left is in doubt then.
  virtual void cancel() = 0;
};

/// How the thread of the interface waits for a call of Vantor. Called by the connection; whoever implements
/// it may run an event loop, in which nothing may begin another call or close the connection.
class WaitPort {
 public:
  virtual ~WaitPort() = default;
  /// A call is about to begin. What has to be on the screen while it goes on is drawn here.
  virtual void prepare() = 0;
  /// Returns when the call is over. Returning earlier is no fault; the rest is waited for without events.
  virtual void wait(PendingCall& call) = 0;
};

}  // namespace pendra
