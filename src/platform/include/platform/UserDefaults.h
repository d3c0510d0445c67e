#pragma once
// A preference that was never written is absent, which differs from false and from "".

#include <QString>
#include <map>
#include <memory>
#include <optional>

#include "platform/Notifier.h"

class QSettings;

namespace pendra {

/// The user's preferences: one INI file, keys exactly as named, leading blanks included.
class UserDefaults {
 public:
  /// Reads the file at `path`, which may be missing.
  explicit UserDefaults(const QString& path);
  ~UserDefaults();
  UserDefaults(const UserDefaults&) = delete;
  UserDefaults& operator=(const UserDefaults&) = delete;

  [[nodiscard]] bool contains(const QString& key) const;
  /// The text under the key; none when it was never written.
  [[nodiscard]] std::optional<QString> text(const QString& key) const;
  [[nodiscard]] QStringList texts(const QString& key) const;
  /// The boolean under the key; false when it was never written.
  [[nodiscard]] bool boolean(const QString& key) const;
  /// Whether a data value stands under the key. A stored boolean or text is not one.
  [[nodiscard]] bool dataForKey(const QString& key) const;

  /// Writes go to the disk at once.
  void setText(const QString& key, const QString& value);
  void setTexts(const QString& key, const QStringList& values);
  void setBoolean(const QString& key, bool value);

  /// Announces the changes of one key that are made through this object.
  Notifier& changesOf(const QString& key);

 private:
  template <class Value>
  void write(const QString& key, const Value& value);

  std::unique_ptr<QSettings> settings_;
  std::map<QString, Notifier> notifiers_;
};

}  // namespace pendra
