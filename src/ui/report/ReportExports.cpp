#include "ReportExports.h"

#include <QBuffer>
#include <QFileInfo>
#include <QPageLayout>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>

#include "document/SavingElsewhere.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "ui_core/ReportCsv.h"

namespace pendra {

namespace {

const QString kNoticeKey = QStringLiteral("report");
constexpr int kResolution = 300;  // points an inch; letters are drawn as shapes at any
const QMarginsF kMargins(15, 15, 15, 12);

/// A letter sheet where inches are usual, else A4.
QPageSize pageSizeOf(const QLocale& locale) {
  return QPageSize(locale.measurementSystem() == QLocale::ImperialUSSystem ? QPageSize::Letter
                                                                           : QPageSize::A4);
}

void sayFailed(Session& session, const QString& text) {
  session.notices().post({.key = kNoticeKey, .text = text, .actions = {}});
}

/// What stood at the chosen path stands there until all of the bytes are on the disk.
void save(Session& session, const MakePaper& paper, const QString& type,
          const std::function<QByteArray(const ReportPaper&)>& bytes) {
  const QString title = paper().title();
  const auto path =
      session.ports().panels.runSavePanel({.title = {},
                                           .proposedName = formatted(tr("Report %@.%@"), {title, type}),
                                           .folder = {},
                                           .requiredType = type});
  if (!path) return;
  const OpenDocument* document = session.document();
  const bool isDocument = document && document->isAt(*path);
  const auto written = isDocument ? Result<void>(Error{{}, 0, tr("it is the document that is open")})
                                  : writeWhole(*path, bytes(paper()));
  if (written) return sayWritten(session, kNoticeKey, *path);
  sayFailed(session, formatted(tr("The report could not be written to “%@”: %@."),
                               {QFileInfo(*path).fileName(), written.error().text}));
}

QByteArray pdfOf(const ReportPaper& paper) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter pdf(&buffer);
  pdf.setResolution(kResolution);
  pdf.setPageSize(pageSizeOf(paper.locale));
  pdf.setPageMargins(kMargins, QPageLayout::Millimeter);
  pdf.setTitle(paper.title());
  pdf.setCreator(QStringLiteral("Pendra"));
  std::ignore = paper.print(pdf);  // a buffer takes everything
  return bytes;
}

}  // namespace

void savePdf(Session& session, const MakePaper& paper) { save(session, paper, QStringLiteral("pdf"), pdfOf); }

void saveCsv(Session& session, const MakePaper& makePaper) {
  save(session, makePaper, QStringLiteral("csv"), [&session](const ReportPaper& paper) {
    std::vector<const ReportRow*> innermost;
    for (std::size_t at = 0; at < paper.rows.size(); ++at) {
      const bool isUnfolded = at + 1 < paper.rows.size() && paper.rows[at + 1].depth > paper.rows[at].depth;
      if (!isUnfolded) innermost.push_back(paper.rows[at].row);
    }
    return reportCsv(innermost, session.ports().calendar, paper.locale, paper.linked);
  });
}

void printReport(Session& session, const MakePaper& paper, QWidget& window) {
  QPrinter printer(QPrinter::HighResolution);
  printer.setPageSize(pageSizeOf(window.locale()));
  printer.setPageMargins(kMargins, QPageLayout::Millimeter);
  printer.setDocName(paper().title());
  QPrintDialog dialog(&printer, &window);
  dialog.setObjectName(QStringLiteral("printReport"));
  const ModalDepth::Run run(session.ports().modals);  // nothing ticks meanwhile
  if (dialog.exec() == QDialog::Accepted && !paper().print(printer))
    sayFailed(session, tr("The report could not be printed."));
}

}  // namespace pendra
