#pragma once

namespace pendra {

/// How many application-modal sheets, alerts and panels run at this moment. While one runs, the display
/// tick and the periodic save do nothing: what the user is about to confirm is not settled yet.
class ModalDepth {
 public:
  /// Counts one modal run for as long as it lives.
  class [[nodiscard]] Run {
   public:
    explicit Run(ModalDepth& depth) : depth_(depth) { ++depth_.count_; }
    ~Run() { --depth_.count_; }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

   private:
    ModalDepth& depth_;
  };

  [[nodiscard]] bool isModal() const { return count_ > 0; }

 private:
  int count_ = 0;
};

}  // namespace pendra
