#pragma once

#include <QString>
#include <exception>

namespace pendra {

/// The names of the channel's failures.
inline const QString kVTIPCArchiverFailure = QStringLiteral("VTIPCArchiverFailure");
inline const QString kVTIPCSend = QStringLiteral("VTIPCSend");
inline const QString kVTIPCTimeout = QStringLiteral("VTIPCTimeout");
inline const QString kVTIPCUnArchiverFailure = QStringLiteral("VTIPCUnArchiverFailure");
inline const QString kVTIPCNoMethod = QStringLiteral("VTIPCNoMethod");
inline const QString kVTIPCCancelled = QStringLiteral("VTIPCCancelled");

/// What the channel throws, and nothing else does. The code above lets it pass up to its command, which logs
/// it as its name, a colon, a blank and its reason.
class ChannelFailure : public std::exception {
 public:
  /// What became of the call. In doubt is every call of which something has left: whether Vantor performed it
  /// cannot be known.
  enum class Fate { NeverLeft, InDoubt };

  ChannelFailure(QString name, QString reason, Fate fate = Fate::InDoubt)
      : name_(std::move(name)), reason_(std::move(reason)), fate_(fate) {}

  [[nodiscard]] const QString& name() const { return name_; }
  [[nodiscard]] const QString& reason() const { return reason_; }
  [[nodiscard]] Fate fate() const { return fate_; }
  [[nodiscard]] const char* what() const noexcept override { return "a failure of the channel to Vantor"; }

 private:
  QString name_;
  QString reason_;
  Fate fate_;
};

}  // namespace pendra
