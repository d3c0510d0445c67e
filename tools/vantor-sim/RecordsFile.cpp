#include "RecordsFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <QDateTime>
#include <QJsonDocument>
#include <QJsonObject>
#include <cerrno>
#include <cmath>
#include <cstring>

#include "platform/Clock.h"

namespace pendra {

Result<RecordsFile> RecordsFile::open(const QString& path) {
  RecordsFile records;
  if (path.isEmpty()) return records;
  records.file_ =
      Descriptor(::open(path.toLocal8Bit().constData(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644));
  if (records.file_.get() < 0)
    return Error{QStringLiteral("POSIX"), errno, QString::fromLocal8Bit(std::strerror(errno))};
  return records;
}

void RecordsFile::append(const QString& text) {
  if (file_.get() < 0) return;
  const double seconds = SystemClock().now().seconds + kUnixToReference;
  const auto received = QDateTime::fromMSecsSinceEpoch(std::llround(seconds * 1000), Qt::UTC);
  const QJsonObject record{{QStringLiteral("received"), received.toString(Qt::ISODateWithMs)},
                           {QStringLiteral("text"), text}};
  const QByteArray line = QJsonDocument(record).toJson(QJsonDocument::Compact) + '\n';
  // A record that is not kept must not be answered as if it were.
  if (write(file_.get(), line.constData(), static_cast<std::size_t>(line.size())) != line.size() ||
      fsync(file_.get()) != 0)
    qFatal("could not keep a record: %s", std::strerror(errno));
}

}  // namespace pendra
