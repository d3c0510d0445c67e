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

/// What the channel throws, and nothing else does. The code above lets it pass up to its command, which logs
/// it as its name, a colon, a blank and its reason.
class ChannelFailure : public std::exception {
 public:
  ChannelFailure(QString name, QString reason) : name_(std::move(name)), reason_(std::move(reason)) {}

  [[nodiscard]] const QString& name() const { return name_; }
  [[nodiscard]] const QString& reason() const { return reason_; }
  [[nodiscard]] const char* what() const noexcept override { return "a failure of the channel to Vantor"; }

 private:
  QString name_;
  QString reason_;
};

}  // namespace pendra
