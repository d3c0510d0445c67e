#include "platform/UserDefaults.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QStringList>
#include <QUrl>
#include <cerrno>

#include "platform/Files.h"

namespace pendra {

namespace {

const QString kSection = QStringLiteral("[General]");

/// A key as it stands in the file.
QString writtenKey(const QString& key) { return QString::fromLatin1(QUrl::toPercentEncoding(key)); }

/// A text as it stands in the file, one of several in a list.
QString writtenText(const QString& text) {
  QString written;
  bool afterNumber = false;
  for (const QChar sign : text.startsWith(u'@') ? QString(u'@' + text) : text) {
    const char16_t code = sign.unicode();
    if (code < 0x20 || code == 0x7F || (afterNumber && sign.isLetterOrNumber() && code < 0x7F)) {
      written += u"\\x" + QString::number(code, 16);  // a digit after a number would belong to it
      afterNumber = true;
      continue;
    }
    if (sign == u'"' || sign == u'\\') written += u'\\';
    written += sign;
    afterNumber = false;
  }
  const bool isPlain = !written.contains(u';') && !written.contains(u',') && !written.contains(u'=') &&
                       written.trimmed() == written && written == text && !text.isEmpty();
  return isPlain ? written : u'"' + written + u'"';
}

QString writtenValue(const QVariant& value) {
  if (value.typeId() == QMetaType::Bool)
    return value.toBool() ? QStringLiteral("true") : QStringLiteral("false");
  if (value.typeId() != QMetaType::QStringList) return writtenText(value.toString());
  QStringList texts = value.toStringList();
  if (texts.isEmpty()) return QStringLiteral("@Invalid()");
  for (QString& text : texts) text = writtenText(text);
  return texts.join(QStringLiteral(", "));
}

/// Puts the key's line in the place of the one that it has, or at the end of its section.
void setLine(QStringList& lines, const QString& key, const QString& value) {
  qsizetype at = lines.indexOf(kSection);
  if (at < 0) {
    lines.prepend(kSection);
    at = 0;
  }
  const QString line = key + u'=' + value;
  for (++at; at < lines.size() && !lines[at].startsWith(u'['); ++at) {
    if (lines[at].section(u'=', 0, 0).trimmed() == key) return lines.replace(at, line);
  }
  while (lines[at - 1].trimmed().isEmpty()) --at;
  lines.insert(at, line);
}

}  // namespace

UserDefaults::UserDefaults(QString path) : path_(std::move(path)) {
  removeAbandonedDrafts(QFileInfo(path_).path());
  const QSettings file(path_, QSettings::IniFormat);
  for (const QString& key : file.allKeys()) values_[key] = file.value(key);
}

std::optional<QString> UserDefaults::text(const QString& key) const {
  if (!contains(key)) return std::nullopt;
  const QVariant value = values_[key];
  // A text with a comma is read back as a list by the INI format when it was written by hand.
  if (value.typeId() == QMetaType::QStringList) return value.toStringList().join(u", ");
  return value.toString();
}

bool UserDefaults::holdsBytes(const QString& key) const {
  return contains(key) && values_[key].typeId() == QMetaType::QByteArray;
}

void UserDefaults::write(const QString& key, const QVariant& value) {
  if (set_.isEmpty() && contains(key) && writtenValue(values_[key]) == writtenValue(value)) return;
  const Notifier::Change change(changesOf(key));
  values_[key] = value;
  set_[key] = value;
  const auto stored = store();
  if (stored) set_.clear();
  if (stored ? !failure_ : failure_ && failure_->text == stored.error().text) return;
  const Notifier::Change told(failureChanges_);
  failure_ = stored ? std::nullopt : std::optional(stored.error());
}

Result<void> UserDefaults::store() {
  QDir().mkpath(QFileInfo(path_).path());
  QFile file(path_);
  if (!file.open(QIODevice::ReadOnly) && file.exists()) return systemError(EACCES);
  QStringList lines = QString::fromUtf8(file.isOpen() ? file.readAll() : QByteArray()).split(u'\n');
  if (file.error() != QFileDevice::NoError && file.isOpen()) return systemError(EIO);
  while (!lines.isEmpty() && lines.back().isEmpty()) lines.removeLast();
  for (const auto& [key, value] : set_.asKeyValueRange()) {
    setLine(lines, writtenKey(key), writtenValue(value));
  }
  return writeWhole(path_, (lines.join(u'\n') + u'\n').toUtf8());
}

}  // namespace pendra
