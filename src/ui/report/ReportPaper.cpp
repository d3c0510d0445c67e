#include "ReportPaper.h"

#include <QPainter>

#include "HoursPainter.h"
#include "ReadOut.h"
#include "platform/Translation.h"
#include "ui_core/ReportTexts.h"

namespace pendra {

namespace {

// Everything is measured in these, whatever the device's points are.
constexpr double kUnitsPerInch = 96;
constexpr double kLine = 20;
constexpr double kTitle = 20;
constexpr double kFigures = 15;
constexpr double kCell = 11.5;
constexpr double kQuiet = 10;
constexpr double kChart = 230;
constexpr double kColumn = 78;
constexpr double kIndent = 16;

QFont fontOf(double units, QFont::Weight weight = QFont::Normal) {
  QFont font = Theme::cellFont();
  font.setPixelSize(qRound(units));
  font.setWeight(weight);
  return font;
}

/// For times: with a face's own signs between figures, programs that read a PDF would miss the colons.
QFont unshaped(QFont font) {
  font.setStyleStrategy(QFont::PreferNoShaping);
  return font;
}

class Printing {
 public:
  Printing(const ReportPaper& paper, QPagedPaintDevice& device, QPainter& painter)
      : paper_(paper), device_(device), painter_(painter) {
    const double scale = device.logicalDpiX() / kUnitsPerInch;
    painter_.scale(scale, scale);
    page_ = {0, 0, device.width() / scale, device.height() / scale};
  }

  bool run() {
    printHead();
    printBars();
    printTableHead();
    for (const ReportTable::Shown& shown : paper_.rows) {
      if (!makeRoom(shown.row)) return false;
      printRow(*shown.row, shown.depth, shown.depth == 0);
    }
    if (!makeRoom(nullptr)) return false;
    painter_.fillRect(QRectF(0, y_, page_.width(), 0.8), colours().quiet);
    printRow(paper_.tree.row({}), 0, true);
    printFoot();
    return true;
  }

 private:
  /// Paper is white, whatever the screen is.
  [[nodiscard]] static const Colours& colours() { return Theme::light(); }
  [[nodiscard]] const Report& report() const { return paper_.tree.report(); }

  void text(const QRectF& rect, const QFont& font, const QColor& ink, const QString& words,
            Qt::Alignment alignment = Qt::AlignLeft) {
    painter_.setFont(font);
    painter_.setPen(ink);
    painter_.drawText(rect, int(alignment | Qt::AlignVCenter) | Qt::TextSingleLine,
                      QFontMetricsF(font).elidedText(words, Qt::ElideRight, rect.width()));
  }
  /// In one piece, because figures that are set one by one are read as several words.
  void figures(const QRectF& rect, const QFont& font, const QColor& ink, const QString& words,
               Qt::Alignment alignment) {
    text(rect, unshaped(font), ink, words, alignment);
  }

  void printHead() {
    const QRectF line(0, 0, page_.width(), 28);
    text(line, fontOf(kTitle, QFont::DemiBold), colours().text, paper_.title());
    text(line, fontOf(kCell), colours().quiet, paper_.document, Qt::AlignRight);
    y_ = 38;
    const Hours& all = report().all;
    std::vector<std::pair<QString, Length>> sums{{tr("All hours"), all.total}};
    if (paper_.linked) sums.insert(sums.end(), {{tr("Sent"), all.sent}, {tr("Not sent"), all.notSent()}});
    sums.emplace_back(tr("Billable"), all.billable);
    double x = 0;
    for (const auto& [word, sum] : sums) {
      text({x, y_, 130, 14}, fontOf(kQuiet), colours().quiet, word);
      figures({x, y_ + 14, 130, 20}, fontOf(kFigures, x > 0 ? QFont::Normal : QFont::DemiBold),
              colours().text, lengthText(sum), Qt::AlignLeft);
      x += 130;
    }
    y_ += 46;
  }

  void printBars() {
    painter_.setFont(fontOf(kCell));
    drawReadOut(painter_, {0, y_, page_.width(), kLine}, legendOf(report()), colours());
    y_ += kLine;
    HoursPainter(report(),
                 {.colours = &colours(),
                  .font = fontOf(kQuiet),
                  .locale = paper_.locale,
                  .today = paper_.today,
                  .hatches = paper_.linked},
                 {0, y_, page_.width(), kChart})
        .paint(painter_);
    y_ += kChart + kLine;
  }

  [[nodiscard]] std::vector<int> columns() const {
    if (paper_.linked)
      return {ReportTree::Entries, ReportTree::Billable, ReportTree::Sent, ReportTree::NotSent,
              ReportTree::Total};
    return {ReportTree::Entries, ReportTree::Billable, ReportTree::Total};
  }
  [[nodiscard]] double nameWidth() const {
    return page_.width() - kColumn * static_cast<double>(columns().size());
  }

  void printTableHead() {
    const QFont font = fontOf(kQuiet, QFont::Medium);
    const auto head = [this](int column) {
      return paper_.tree.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    };
    text({0, y_, nameWidth(), kLine}, font, colours().quiet, head(ReportTree::Name));
    double x = nameWidth();
    for (const int column : columns()) {
      text({x, y_, kColumn, kLine}, font, colours().quiet, head(column), Qt::AlignRight);
      x += kColumn;
    }
    y_ += kLine;
    painter_.fillRect(QRectF(0, y_, page_.width(), 0.8), colours().quiet);
  }

  void printRow(const ReportRow& row, int depth, bool isHeavy) {
    const bool isAll = !row.parent;
    const QFont plain = fontOf(kCell);
    const QFont heavy = fontOf(kCell, isHeavy ? QFont::DemiBold : QFont::Normal);
    double x = depth * kIndent;
    if (depth == 0 && !isAll) {
      const QRectF swatch(0, y_ + kLine / 2 - 4, 8, 8);
      painter_.fillRect(swatch, colourOfGroup(colours(), row.place));
    }
    if (!isAll) x += kIndent;
    QString words = isAll ? tr("All") : row.name;
    if (!row.notes.isEmpty()) words += u"  " + row.notes.simplified();
    text({x, y_, nameWidth() - x - 4, kLine}, row.start ? unshaped(heavy) : heavy, colours().text, words);
    x = nameWidth();
    for (const int column : columns()) {
      figures({x, y_, kColumn, kLine}, column == ReportTree::Total ? heavy : plain,
              column == ReportTree::Entries ? colours().quiet : colours().text, paper_.tree.text(row, column),
              Qt::AlignRight);
      x += kColumn;
    }
    y_ += kLine;
    painter_.fillRect(QRectF(0, y_, page_.width(), 0.4), colours().line);
  }

  /// Goes to another page where this one is full.
  bool makeRoom(const ReportRow* next) {
    if (y_ + 3 * kLine < page_.height()) return true;
    printFoot();
    if (!device_.newPage()) return false;
    ++number_;
    y_ = 0;
    printTableHead();
    if (next) printWhatGoesOn(*next);
    return true;
  }

  /// Of whom the rows are, when what says it stands on the page before.
  void printWhatGoesOn(const ReportRow& next) {
    QStringList names;
    for (const ReportRow* up = next.parent; up && up->parent; up = up->parent) names.prepend(up->name);
    if (names.isEmpty()) return;
    text({0, y_, nameWidth(), kLine}, fontOf(kCell), colours().quiet,
         tr("%1, continued").arg(names.join(QStringLiteral(" - "))));
    y_ += kLine;
  }

  void printFoot() {
    const QRectF line(0, page_.height() - kLine, page_.width(), kLine);
    if (number_ > 1) text(line, fontOf(kQuiet), colours().quiet, paper_.title() + u"  " + paper_.document);
    text(line, fontOf(kQuiet), colours().quiet, tr("Page %1").arg(number_), Qt::AlignRight);
  }

  const ReportPaper& paper_;
  QPagedPaintDevice& device_;
  QPainter& painter_;
  QRectF page_;
  double y_ = 0;
  int number_ = 1;
};

}  // namespace

QString ReportPaper::title() const { return titleOf(tree.report().query.range, locale); }

bool ReportPaper::print(QPagedPaintDevice& device) const {
  QPainter painter;
  if (!painter.begin(&device)) return false;
  return Printing(*this, device, painter).run() && painter.end();
}

}  // namespace pendra
