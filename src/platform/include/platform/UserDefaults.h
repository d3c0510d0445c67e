#pragma once
// A preference that was never written is absent, which differs from false and from "".

#include <QString>
#include <QVariantMap>
#include <map>
#include <optional>

#include "platform/Notifier.h"
#include "platform/Result.h"

namespace pendra {

/// The user's preferences: one INI file, keys exactly as named, leading blanks included. Every value that
/// changes is on the disk when its setter returns; the file is then the old one or the new one, whatever
/// happens meanwhile, and its other lines stay as they are.
class UserDefaults {
 public:
  /// Reads the file at `path`, which may be missing.
  explicit UserDefaults(QString path);
  UserDefaults(const UserDefaults&) = delete;
  UserDefaults& operator=(const UserDefaults&) = delete;

  [[nodiscard]] bool contains(const QString& key) const { return values_.contains(key); }
  /// The text under the key; none when it was never written.
  [[nodiscard]] std::optional<QString> text(const QString& key) const;
  [[nodiscard]] QStringList texts(const QString& key) const { return values_.value(key).toStringList(); }
  /// The boolean under the key; false when it was never written.
  [[nodiscard]] bool boolean(const QString& key) const { return values_.value(key, false).toBool(); }
  /// Whether a data value stands under the key. A stored boolean or text is not one.
  [[nodiscard]] bool holdsBytes(const QString& key) const;

  void setText(const QString& key, const QString& value) { write(key, value); }
  void setTexts(const QString& key, const QStringList& values) { write(key, values); }
  void setBoolean(const QString& key, bool value) { write(key, value); }

  /// Announces the changes of one key that are made through this object.
  Notifier& changesOf(const QString& key) { return notifiers_[key]; }

  [[nodiscard]] const QString& path() const { return path_; }
  /// Why the file lacks what was set; none when it has everything.
  [[nodiscard]] const std::optional<Error>& failure() const { return failure_; }
  /// Announces that the file lacks something, and that it has everything again.
  [[nodiscard]] Notifier& failureChanges() { return failureChanges_; }

 private:
  void write(const QString& key, const QVariant& value);
  /// Brings every value that was set to the file.
  Result<void> store();

  QString path_;
  QVariantMap values_;
  QVariantMap set_;  ///< what the file lacks
  std::optional<Error> failure_;
  Notifier failureChanges_;
  std::map<QString, Notifier> notifiers_;
};

}  // namespace pendra
