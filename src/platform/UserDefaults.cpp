#include "platform/UserDefaults.h"

#include <QSettings>
#include <QStringList>

namespace pendra {

UserDefaults::UserDefaults(const QString& path)
    : settings_(std::make_unique<QSettings>(path, QSettings::IniFormat)) {}
UserDefaults::~UserDefaults() = default;

bool UserDefaults::contains(const QString& key) const { return settings_->contains(key); }

std::optional<QString> UserDefaults::text(const QString& key) const {
  if (!contains(key)) return std::nullopt;
  const QVariant value = settings_->value(key);
  // A text with a comma is read back as a list by the INI format when it was written by hand.
  if (value.typeId() == QMetaType::QStringList) return value.toStringList().join(u", ");
  return value.toString();
}

QStringList UserDefaults::texts(const QString& key) const { return settings_->value(key).toStringList(); }

bool UserDefaults::boolean(const QString& key) const { return settings_->value(key, false).toBool(); }

bool UserDefaults::dataForKey(const QString& key) const {
  return contains(key) && settings_->value(key).typeId() == QMetaType::QByteArray;
}

template <class Value>
void UserDefaults::write(const QString& key, const Value& value) {
  const Notifier::Change change(changesOf(key));
  settings_->setValue(key, value);
  settings_->sync();
}

void UserDefaults::setText(const QString& key, const QString& value) { write(key, value); }
void UserDefaults::setTexts(const QString& key, const QStringList& values) { write(key, values); }
void UserDefaults::setBoolean(const QString& key, bool value) { write(key, value); }

Notifier& UserDefaults::changesOf(const QString& key) { return notifiers_[key]; }

}  // namespace pendra
