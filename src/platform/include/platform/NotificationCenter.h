#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace pendra {

/// Hands named notifications to whoever listens, at once and in the order of listening.
/// A notification carries one pair of texts, or none.
class NotificationCenter {
 public:
  using UserInfo = std::pair<QString, QString>;
  using Handler = std::function<void(const UserInfo&)>;

  /// Ends the listening when it dies. It may outlive the centre.
  using Subscription = std::shared_ptr<void>;

  [[nodiscard]] Subscription observe(const QString& name, Handler handler);
  void post(const QString& name, const UserInfo& info = {});

 private:
  struct Listener {
    QString name;
    Handler handler;
  };
  std::vector<std::weak_ptr<Listener>> listeners_;
};

}  // namespace pendra
