#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "platform/Places.h"
#include "support/Print.h"

namespace pendra {

/// Folders of the test's own, gone when it ends. Documents, caches and config exist and are empty.
class TestPlaces : public Places {
 public:
  TestPlaces() {
    documents = folder(QStringLiteral("Documents"));
    caches = folder(QStringLiteral("cache"));
    config = folder(QStringLiteral("config"));
    state = path(QStringLiteral("state"));
  }

  /// The path of a file or folder beside them.
  [[nodiscard]] QString path(const QString& name) const { return root_.filePath(name); }

 private:
  QString folder(const QString& name) {
    QDir(root_.path()).mkpath(name);
    return path(name);
  }

  QTemporaryDir root_;
};

/// The bytes of a file; none of them when there is no such file.
inline QByteArray contentsOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Writes a file anew. Whether that succeeded.
inline bool writeFile(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

}  // namespace pendra
