#include "document/Backups.h"

#include <sys/stat.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QTemporaryDir>
#include <cerrno>

#include "document/HaltedEntries.h"
#include "document/Session.h"
#include "model/Queries.h"
#include "platform/Files.h"
#include "platform/Preferences.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "store/PersistentStore.h"
#include "store/StateTransfer.h"

namespace pendra {

namespace {

constexpr std::size_t kLastKept = 10;
constexpr qint64 kDaysKept = 30;
constexpr int kKeyDigits = 12;
const QString kNotice = QStringLiteral("backups");
const QString kSuffix = QStringLiteral(".pdrbackup");
const QString kStamp = QStringLiteral("yyyy-MM-dd HHmmss");

struct ReasonTexts {
  BackupReason reason;
  QStringView inName;
  const char* title;
};
constexpr ReasonTexts kReasons[] = {
    {BackupReason::Daily, u"daily", QT_TRANSLATE_NOOP("pendra", "Daily")},
    {BackupReason::Restoring, u"restore", QT_TRANSLATE_NOOP("pendra", "Before restoring")},
    {BackupReason::UpdatingLists, u"lists", QT_TRANSLATE_NOOP("pendra", "Before updating the lists")},
    {BackupReason::Upgrading, u"upgrade", QT_TRANSLATE_NOOP("pendra", "Before upgrading")},
};

const ReasonTexts& textsOf(BackupReason reason) {
  return *std::find_if(std::begin(kReasons), std::end(kReasons),
                       [&](const ReasonTexts& one) { return one.reason == reason; });
}

// ---- names and places

/// Makes the folder and those above it that are missing, for the user alone.
Result<void> makeFolder(const QString& folder) {
  if (QFileInfo(folder).isDir()) return {};
  if (auto made = makeFolder(QFileInfo(folder).path()); !made) return made;
  if (::mkdir(QFile::encodeName(folder).constData(), S_IRWXU) != 0 && errno != EEXIST)
    return systemError(errno);
  return {};
}

/// The folder that the user has chosen; empty when none was.
QString chosenFolder(const Session& session) {
  return session.ports().defaults.text(preferences::kBackupFolder).value_or(QString());
}

Result<void> makeFolderOf(const Session& session) {
  // Where a disk was taken out nothing is made in its place.
  const QString chosen = chosenFolder(session);
  if (!chosen.isEmpty() && !QFileInfo(chosen).isDir()) return systemError(ENOENT);
  return makeFolder(backupFolderOf(session));
}

/// What the name tells; none when it is not one that is given here.
std::optional<BackupFile> backupNamed(const QFileInfo& file, const Calendar& calendar) {
  const QString name = file.fileName();
  const qsizetype words = kStamp.size() + 1;
  if (!file.isFile() || file.isSymLink() || !name.endsWith(kSuffix) || name.size() < words) return {};
  const QDateTime made = QDateTime::fromString(name.left(kStamp.size()), kStamp);
  for (const ReasonTexts& one : kReasons) {
    if (!made.isValid() || name.mid(kStamp.size()) != u' ' + one.inName + kSuffix) continue;
    return BackupFile{file.filePath(), calendar.instant(made.date(), made.time()), one.reason};
  }
  return {};
}

/// A free name for this moment; of several in one second each later one is a second late.
QString freePath(const Session& session, BackupReason reason) {
  const Ports& ports = session.ports();
  const QString folder = backupFolderOf(session);
  for (double late = 0;; ++late) {
    const QString stamp = ports.calendar.local(ports.clock.now() + late).toString(kStamp);
    const QDir dir(folder);
    if (dir.entryList({stamp + u" *"}, QDir::Files | QDir::Hidden | QDir::System).isEmpty()) {
      return folder + u'/' + stamp + u' ' + textsOf(reason).inName + kSuffix;
    }
  }
}

// ---- what has changed

/// A sign of life is no change that anybody made.
bool countsForNothing(const PropertyDescriptor& property) {
  return QLatin1StringView(property.name) == u"aliveAt";
}

bool isSame(const ObjectContext& one, const ObjectContext& other) {
  return StateTransfer::isSameState(one, other, countsForNothing);
}

bool hasContent(const ObjectContext& context) {
  return !context.all<Activity>().empty() || !context.all<TimeEntry>().empty() ||
         !context.all<Customer>().empty() || !context.all<Service>().empty();
}

/// Whether the newest backup holds what the document holds; looked up where nobody knows.
bool isBackedUp(const Session& session) {
  std::optional<bool>& known = session.document()->isBackedUp;
  if (known) return *known;
  const auto backups = backupsOf(session);
  if (backups.empty()) return false;
  const auto newest = readBackup(session, backups.front().path);
  known = newest && isSame(*newest.value(), *session.context());
  return *known;
}

// ---- making one

/// A file that has just been made, read with nothing changed in it.
Result<void> readBack(const Session& session, const QString& path) {
  ObjectContext copy(session.objectModel(), session.ports().clock, session.ports().calendar);
  if (auto opened = copy.open(path); !opened) return opened;
  if (isSame(copy, *session.context())) return {};
  return Error{QStringLiteral("document"), 0, tr("what was read back is not what was written")};
}

void removeSuperfluous(const Session& session, const QString& justMade) {
  const Ports& ports = session.ports();
  const QDate today = ports.calendar.day(ports.clock.now());
  for (const BackupFile& old : superfluous(backupsOf(session), today, ports.calendar)) {
    if (old.path != justMade) QFile::remove(old.path);
  }
}

Result<void> write(const Session& session, BackupReason reason) {
  if (auto made = makeFolderOf(session); !made) return made;
  const QString path = freePath(session, reason);
  const ObjectContext& context = *session.context();
  auto written = context.store()->writeCopy(context, path, Existing::Keep);
  if (!written && written.error().code == EEXIST) return written;  // somebody else's
  QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
  if (written) written = readBack(session, path);
  if (!written) {
    QFile::remove(path);  // it may have its name and not be on the disk
    return written;
  }
  removeSuperfluous(session, path);
  return {};
}

void say(Session& session, const Error& error) {
  QString& told = session.document()->told.noBackup;
  if (std::exchange(told, error.text) == error.text) return;
  session.notices().post(
      {.key = kNotice,
       .text = formatted(tr("No backup of “%@” could be made in “%@”: %@. Your document "
                            "itself is not affected."),
                         {session.document()->displayName(), backupFolderOf(session), error.text}),
       .actions = {}});
}

Result<void> told(Session& session, Result<void> made) {
  if (!made) {
    say(session, made.error());
    return made;
  }
  session.document()->told.noBackup.clear();
  session.notices().withdraw(kNotice);
  return made;
}

}  // namespace

QString titleOf(BackupReason reason) { return tr(textsOf(reason).title); }

QString backupFolderOf(const Session& session) {
  const OpenDocument& document = *session.document();
  const Identity* identity = document.settings().identity();
  QCryptographicHash key(QCryptographicHash::Sha256);
  for (const QString& part :
       {realPath(document.path()), identity ? identity->companyFileName().value_or(QString()) : QString(),
        identity ? identity->employeeName().value_or(QString()) : QString()}) {
    key.addData(part.toUtf8());
    key.addData(QByteArrayView("\0", 1));
  }
  const QString chosen = chosenFolder(session);
  const QString root = chosen.isEmpty() ? session.ports().places.backupFolder() : chosen;
  return root + u'/' + document.displayName() + u' ' +
         QString::fromLatin1(key.result().toHex().left(kKeyDigits));
}

std::vector<BackupFile> backupsOf(const Session& session) {
  std::vector<BackupFile> backups;
  if (!session.document()) return backups;
  const QDir folder(backupFolderOf(session));
  for (const QFileInfo& file :
       folder.entryInfoList({u'*' + kSuffix}, QDir::Files, QDir::Name | QDir::Reversed)) {
    if (auto backup = backupNamed(file, session.ports().calendar)) backups.push_back(std::move(*backup));
  }
  return backups;
}

std::vector<BackupFile> superfluous(const std::vector<BackupFile>& backups, QDate today,
                                    const Calendar& calendar) {
  std::vector<BackupFile> found;
  QSet<QDate> kept;  // days, and of the time before them the first days of months
  for (std::size_t place = 0; place < backups.size(); ++place) {
    QDate day = calendar.day(backups[place].madeAt);
    if (day.daysTo(today) > kDaysKept) day = QDate(day.year(), day.month(), 1).addYears(-1000);
    const bool isLastOfThem = !kept.contains(day);
    kept.insert(day);
    if (place >= kLastKept && !isLastOfThem) found.push_back(backups[place]);
  }
  return found;
}

Result<void> makeBackup(Session& session, BackupReason reason) {
  if (!session.document() || !hasContent(*session.context()) || isBackedUp(session)) return {};
  auto made = told(session, write(session, reason));
  if (made) session.document()->isBackedUp = true;
  return made;
}

Result<std::shared_ptr<ObjectContext>> readBackup(const Session& session, const QString& path) {
  if (QFileInfo(path).size() == 0) return systemError(QFileInfo::exists(path) ? EIO : ENOENT);
  const QTemporaryDir aside;
  const QString copy = aside.filePath(QStringLiteral("backup.pdr"));
  if (auto copied = copyFile(path, copy, Existing::Keep); !copied) return copied.error();
  QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner);
  auto context =
      std::make_shared<ObjectContext>(session.objectModel(), session.ports().clock, session.ports().calendar);
  if (auto opened = context->open(copy); !opened) return opened.error();
  context->close();
  return context;
}

void keepLayoutCopy(Session& session) {
  const QString copy = session.context()->store()->layoutCopy();
  if (copy.isEmpty()) return;
  auto kept = makeFolderOf(session);
  const QString path = freePath(session, BackupReason::Upgrading);
  if (kept) kept = copyFile(copy, path, Existing::Keep);
  if (kept) QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
  std::ignore = told(session, std::move(kept));
}

}  // namespace pendra
