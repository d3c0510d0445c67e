#pragma once

#include <sys/types.h>

namespace pendra {

/// Counts the answers that Vantor still owes to calls with an effect that were given up. Nothing in an answer
/// says which call it answers, but Vantor answers in order: while so many are owed, so many answers are of
/// the calls before. A Vantor that was started anew owes nothing.
class OwedAnswers {
 public:
  [[nodiscard]] int count() const { return count_; }

  /// Something has come from that process.
  void heardFrom(pid_t process) {
    if (process_ != 0 && process != process_) count_ = 0;
    process_ = process;
  }
  /// An answer has come; whether it was an owed one.
  [[nodiscard]] bool settle() { return count_ > 0 && count_-- > 0; }
  /// A call was given up before its answer came.
  void owe() { ++count_; }

 private:
  pid_t process_ = 0;  ///< the Vantor that owes them; 0 while none was heard of
  int count_ = 0;
};

}  // namespace pendra
