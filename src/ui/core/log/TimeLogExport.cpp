#include "ui_core/TimeLogExport.h"

#include <QFileInfo>

#include "document/OpenDocument.h"
#include "document/RunningTimers.h"
#include "document/SavingElsewhere.h"
#include "model/DurationText.h"
#include "model/Queries.h"
#include "platform/DateTexts.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "ui_core/LogController.h"

namespace pendra {

namespace {

const QString kNoticeKey = QStringLiteral("export");
constexpr qsizetype kChunk = 1 << 20;
constexpr std::size_t kRowsBetweenQuestions = 256;
constexpr QByteArrayView kHeader =
    "Start Date Time\tCustomer\tJob\tService\tDuration\tDate Submitted\tActivity Notes\tMemo\tEmployee\n";

QString timeText(std::optional<Instant> instant) { return instant ? universalDateTime(*instant) : QString(); }

/// Gathers the file's bytes and hands them on in large pieces.
class RecordWriter {
 public:
  RecordWriter(Draft& file, const QString& employee) : file_(file), employee_(employee.toUtf8()) {
    bytes_.reserve(kChunk + kChunk / 4);
    bytes_ += kHeader;
  }

  /// Fails once the file takes no more.
  Result<void> add(const TimeEntry& entry, const Activity& activity) {
    if (!std::exchange(isFirst_, false)) bytes_ += '\n';
    field(timeText(entry.start()).toLatin1());
    next(queries::nameOf(activity.customer()).toUtf8());
    next(queries::nameOf(activity.job()).toUtf8());
    next(queries::nameOf(activity.service()).toUtf8());
    next(durationText(entry.storedDuration()).toLatin1());
    next(entry.wasSent() ? timeText(entry.dateSubmitted()).toLatin1() : QByteArray());
    next(activity.notes().value_or(QString()).toUtf8());
    next(entry.notes().value_or(QString()).toUtf8());
    next(employee_);
    return bytes_.size() < kChunk ? Result<void>() : flush();
  }
  Result<void> flush() {
    auto written = file_.write(bytes_);
    bytes_.resize(0);
    return written;
  }

 private:
  void field(const QByteArray& text) {
    bytes_ += '"';
    bytes_ += text;
    bytes_ += '"';
  }
  void next(const QByteArray& text) {
    bytes_ += '\t';
    field(text);
  }

  Draft& file_;
  QByteArray employee_;
  QByteArray bytes_;
  bool isFirst_ = true;
};

/// Whether the rows were written and not ended by the user; or why they could not be.
Result<bool> writeRows(Draft& file, const std::vector<LogRow>& rows, const QString& employee,
                       ExportProgress& progress) {
  RecordWriter writer(file, employee);
  for (std::size_t index = 0; index < rows.size(); ++index) {
    const TimeEntry* entry = rows[index].entry.get();
    const Activity* activity = rows[index].activity();
    if (!entry || !activity) continue;
    if (auto added = writer.add(*entry, *activity); !added) return added.error();
    const std::size_t done = index + 1;
    if (done % kRowsBetweenQuestions == 0 && !progress.goOn(done, rows.size())) return false;
  }
  if (auto written = writer.flush(); !written) return written.error();
  return true;
}

void sayFailed(Notices& notices, const QString& path, const QString& reason) {
  notices.post({.key = kNoticeKey,
                .text = formatted(tr("The time log could not be exported to “%@”: %@."),
                                  {QFileInfo(path).fileName(), reason}),
                .actions = {}});
}

/// What stood at the path stands there until all rows are on the disk.
Result<bool> writeFile(const QString& path, const std::vector<LogRow>& rows, const QString& employee,
                       Existing existing, ExportProgress& progress) {
  Draft file(path);
  if (auto opened = file.open(); !opened) return opened.error();
  auto written = writeRows(file, rows, employee, progress);
  if (!written || !written.value()) return written;
  if (auto finished = file.finish(existing); !finished) return finished.error();
  return true;
}

/// The open document must not be written over, whatever the user has answered to the panel.
bool isOpenDocument(const Session& session, const QString& path) {
  const OpenDocument* document = session.document();
  return document && isSameFile(path, document->path());
}

class NobodyWatches final : public ExportProgress {
 public:
  bool goOn(std::size_t, std::size_t) override { return true; }
};

QString proposedName(const std::optional<QString>& employee, const QString& date) {
  if (!employee || *employee == u"Me") return formatted(u"Time Log %@.txt", {date});
  return formatted(u"%@ %@.txt", {*employee, date});
}

}  // namespace

void exportTimeLog(LogController& log, ExportProgress& progress) {
  Session& session = log.session();
  if (!session.context()) return;
  const Identity* identity = queries::firstIdentity(*session.context());
  const std::optional<QString> employee = identity ? identity->employeeName() : std::nullopt;
  const Ports& ports = session.ports();
  const QString today = shortDate(ports.clock.now(), ports.calendar);
  const auto path = ports.panels.runSavePanel(
      {.title = {}, .proposedName = proposedName(employee, today), .folder = {}, .requiredType = {}});
  if (!path) return;
  if (isOpenDocument(session, *path))
    return sayFailed(session.notices(), *path, tr("it is the document that is open"));
  if (!checkForRunningTimers(session)) return;
  const auto written =
      writeFile(*path, log.consideredRows(), employee.value_or(QString()), Existing::Replace, progress);
  if (!written) return sayFailed(session.notices(), *path, written.error().text);
  if (written.value()) return sayWritten(session, kNoticeKey, *path);
  session.notices().withdraw(kNoticeKey);
}

Result<std::size_t> exportAll(const ObjectContext& context, const QString& path) {
  std::vector<LogRow> rows;
  for (Activity* activity : context.all<Activity>()) {
    for (TimeEntry* entry : activity->entries()) {
      LogRow& row = rows.emplace_back();
      row.entry = entry;
      row.of = activity;
    }
  }
  const Identity* identity = queries::firstIdentity(context);
  const QString employee = identity ? identity->employeeName().value_or(QString()) : QString();
  NobodyWatches progress;
  const auto written = writeFile(path, rows, employee, Existing::Keep, progress);
  if (!written) return written.error();
  return rows.size();
}

}  // namespace pendra
