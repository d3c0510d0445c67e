#pragma once

#include <QString>
#include <exception>

namespace pendra {

/// A call of Vantor that was not answered: what a `RemoteServer` throws, and nothing else does. The code
/// above lets it pass up to its command, which logs it as its name, a colon, a blank and its reason.
class VantorFailure : public std::exception {
 public:
  /// What became of the call. In doubt is every call of which something has left: whether Vantor performed it
  /// cannot be known.
  enum class Fate { NeverLeft, InDoubt };

  VantorFailure(QString name, QString reason, Fate fate = Fate::InDoubt)
      : name_(std::move(name)), reason_(std::move(reason)), fate_(fate) {}

  [[nodiscard]] const QString& name() const { return name_; }
  [[nodiscard]] const QString& reason() const { return reason_; }
  [[nodiscard]] Fate fate() const { return fate_; }
  [[nodiscard]] bool wasCancelled() const;
  /// Why it failed, as half a sentence for a person who knows nothing of channels.
  [[nodiscard]] QString plainReason() const;
  [[nodiscard]] const char* what() const noexcept override { return "a call of Vantor failed"; }

 private:
  QString name_;
  QString reason_;
  Fate fate_;
};

}  // namespace pendra
