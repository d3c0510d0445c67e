#pragma once

namespace pendra {

/// How many application-modal sheets, alerts, panels and calls of Vantor run at this moment. While one runs,
/// the display tick and what asks from outside wait: what the user is about to confirm is not settled yet.
class ModalDepth {
 public:
  /// What a run waits for: the user, or Vantor.
  enum class For { Answer, Vantor };

  /// Counts one modal run for as long as it lives.
  class [[nodiscard]] Run {
   public:
    explicit Run(ModalDepth& depth, For what = For::Answer)
        : count_(what == For::Vantor ? depth.calls_ : depth.questions_) {
      ++count_;
    }
    ~Run() { --count_; }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

   private:
    int& count_;
  };

  [[nodiscard]] bool isModal() const { return questions_ + calls_ > 0; }
  /// Whether a call of Vantor goes on.
  [[nodiscard]] bool asksVantor() const { return calls_ > 0; }

 private:
  int questions_ = 0;
  int calls_ = 0;
};

}  // namespace pendra
