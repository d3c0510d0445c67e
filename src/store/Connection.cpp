#include "Connection.h"

#include <sqlite3.h>

#include <QFileInfo>
#include <cerrno>

#include "platform/Files.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

const QString kDomain = QStringLiteral("SQLite");
constexpr int kPrimaryCode = 0xFF;
constexpr int kStepsAtOnce = 100'000;
constexpr qint64 kStepsOfAByte = 10;  // a row takes about forty, and has more than forty bytes

QString reasonOf(const SQLite::Exception& failure, int systemCode) {
  switch (failure.getErrorCode()) {
    case SQLITE_FULL:
      return systemError(ENOSPC).text;
    case SQLITE_READONLY:
      return tr("the file may not be written to");
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      return tr("the file is damaged");
    case SQLITE_INTERRUPT:
      return tr("the file is damaged: reading it does not come to an end");
    case SQLITE_BUSY:
      return tr("another program is using the file");
    case SQLITE_IOERR:
    case SQLITE_CANTOPEN:
      if (systemCode) return systemError(systemCode).text;
      break;
    default:
      break;
  }
  return QString::fromUtf8(failure.what());
}

Error errorOf(const SQLite::Exception& failure, int systemCode) {
  return {kDomain, failure.getExtendedErrorCode(), reasonOf(failure, systemCode)};
}

void trustOnlyRows(sqlite3* database) {
  sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
  sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
  sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
}

}  // namespace

Connection::Connection(const QString& path, int openFlags, int patience)
    : database_(path.toUtf8().constData(), openFlags | SQLite::OPEN_NOMUTEX, patience) {
  trustOnlyRows(database_.getHandle());
  allowReadingAll();
  sqlite3_progress_handler(database_.getHandle(), kStepsAtOnce, &countSteps, this);
}

Result<std::unique_ptr<Connection>> Connection::open(const QString& path, int openFlags, int patience) {
  try {
    return std::make_unique<Connection>(path, openFlags, patience);
  } catch (const SQLite::Exception& failure) {
    return errorOf(failure, 0);
  }
}

void Connection::allowReadingAll() {
  const QString name = QString::fromStdString(database_.getFilename());
  const auto number = [&](const char* query) { return database_.execAndGet(query).getInt64(); };
  const qint64 size = name.startsWith(u':') ? number("PRAGMA page_count") * number("PRAGMA page_size")
                                            : QFileInfo(name).size();
  allow(kStepsOfARow + kStepsOfAByte * size);
}

int Connection::countSteps(void* connection) {
  Connection& counted = *static_cast<Connection*>(connection);
  counted.allowed_ -= kStepsAtOnce;
  return counted.allowed_ < 0 || counted.stop_.stop_requested() ? 1 : 0;
}

Error Connection::errorFrom(const SQLite::Exception& failure) const {
  return errorOf(failure, sqlite3_system_errno(database_.getHandle()));
}

bool isDamaged(const Error& error) {
  const int code = error.code & kPrimaryCode;
  return error.domain == kDomain && (code == SQLITE_CORRUPT || code == SQLITE_NOTADB);
}

void throwDamaged() { throw SQLite::Exception("the file is damaged", SQLITE_CORRUPT); }

}  // namespace pendra
