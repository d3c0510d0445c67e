#pragma once
// Observers of one key. The order will-change, change, did-change holds even when the change throws,
// because the announcement is a scope: see Notifier::Change.

#include <functional>
#include <memory>
#include <vector>

namespace pendra {

/// Announces the changes of one observed key; named after it by its owner.
class Notifier {
  struct Observer {
    std::function<void()> willChange;
    std::function<void()> didChange;
  };

 public:
  /// Keeps an observation alive. It may outlive its notifier.
  class Subscription {
   public:
    Subscription() = default;

   private:
    friend class Notifier;
    explicit Subscription(std::shared_ptr<Observer> observer) : observer_(std::move(observer)) {}
    std::shared_ptr<Observer> observer_;
  };

  /// Announces will-change now and did-change when it ends.
  class [[nodiscard]] Change {
   public:
    explicit Change(Notifier& notifier) : notifier_(notifier) { notifier_.announce(&Observer::willChange); }
    ~Change() { notifier_.announce(&Observer::didChange); }
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;

   private:
    Notifier& notifier_;
  };

  /// Observers are told in the order in which they came. Either function may be empty.
  [[nodiscard]] Subscription observe(std::function<void()> didChange, std::function<void()> willChange = {});
  /// Announces a change that has no extent.
  void changed() { const Change change(*this); }

 private:
  void announce(std::function<void()> Observer::*moment);

  std::vector<std::weak_ptr<Observer>> observers_;
};

}  // namespace pendra
