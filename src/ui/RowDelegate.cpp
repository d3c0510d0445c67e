#include "RowDelegate.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <cmath>

#include "CellEditor.h"
#include "ui/OneLine.h"
#include "ui/RowTableView.h"
#include "ui/Symbols.h"
#include "ui/TabularText.h"
#include "ui/Theme.h"
#include "ui_core/TableModel.h"

namespace pendra {

namespace {

constexpr int kSign = 18;
constexpr int kBox = 16;
constexpr int kWarning = 15;
constexpr double kStar = 5.5;        // from its middle to its points
constexpr double kStarMiddle = 4.5;  // behind where its column begins
constexpr int kCurrentBar = 2;
constexpr int kNarrowestEditor = 64;
/// The part of a cell in which its content stands.
QRect contentRect(const QStyleOptionViewItem& option, const QModelIndex& index) {
  return static_cast<const RowTableView*>(option.widget)->contentRect(option.rect, index.column());
}

const auto kNoTime = QStringLiteral("00:00:00");

/// What the cells of one row have in common.
struct RowLook {
  const Colours& colours;
  bool selected;
  bool inFront;  ///< in the window that has the keyboard
  bool running;
  bool hovered;
  bool quiet;

  [[nodiscard]] QColor background() const {
    if (selected) return inFront ? colours.selection : colours.line;
    if (running) return hovered ? mixed(colours.runningRow, colours.running, 0.06) : colours.runningRow;
    return hovered ? colours.hover : colours.base;
  }
  [[nodiscard]] QColor words() const { return quiet ? ink(colours.quiet) : colours.text; }
  [[nodiscard]] QColor ink(const QColor& colour) const {
    return Theme::readable(colour, background(), colours.text);
  }
  /// What acts on a row shows where the person is, and leaves the other rows calm.
  [[nodiscard]] bool showsActions() const { return selected || hovered; }
};

InGroup placeOf(const QModelIndex& index) {
  return static_cast<InGroup>(index.data(TableModel::kGroupRole).toInt());
}

/// The line under a row; a stronger one where the next group begins.
QColor lineUnder(const QModelIndex& index, const RowLook& look) {
  const QModelIndex below = index.siblingAtRow(index.row() + 1);
  if (below.isValid() && placeOf(below) == InGroup::First) return look.colours.dayLine;
  return look.running && !look.selected ? look.colours.runningLine : look.colours.line;
}

void drawBackground(QPainter& painter, const QRect& cell, const RowLook& look, const QColor& line,
                    bool withBar) {
  painter.fillRect(cell, look.background());
  painter.fillRect(QRect(cell.left(), cell.bottom(), cell.width(), 1), line);
  if (withBar && look.selected) {
    painter.fillRect(QRect(cell.left(), cell.top(), kCurrentBar, cell.height()), look.colours.link);
  }
}

/// The letters that were looked for, in bold; the others as ever.
void drawFound(QPainter& painter, const QRect& content, const QString& text,
               const std::vector<FoundLetters>& found) {
  const QFont plain = painter.font();
  QFont bold = plain;
  bold.setWeight(QFont::Bold);
  QRectF rest = content;
  const auto draw = [&](const QFont& font, const QString& letters) {
    painter.setFont(font);
    const QString shown =
        painter.fontMetrics().elidedText(letters, Qt::ElideRight, static_cast<int>(rest.width()));
    painter.drawText(rest, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown);
    rest.setLeft(rest.left() + QFontMetricsF(font).horizontalAdvance(letters));
  };
  qsizetype at = 0;
  for (const FoundLetters& letters : found) {
    draw(plain, text.sliced(at, letters.at - at));
    draw(bold, text.sliced(letters.at, letters.length));
    at = letters.at + letters.length;
  }
  draw(plain, text.sliced(at));
}

void drawPlain(QPainter& painter, const QRect& content, const QModelIndex& index, const QColor& ink) {
  const QString text = oneLine(index.data().toString(), painter.fontMetrics(), content.width());
  painter.setPen(ink);
  painter.drawText(content, index.data(Qt::TextAlignmentRole).toInt() | Qt::TextSingleLine, text);
}

void drawWords(QPainter& painter, const QRect& content, const QModelIndex& index, const QColor& ink) {
  const QString text = seenOf(index.data().toString());
  const auto* model = static_cast<const TableModel*>(index.model());
  const bool isSearched = model->head(index.column()).alignment == Alignment::Left;
  const auto found = isSearched ? model->searchText().foundIn(text) : std::vector<FoundLetters>();
  if (found.empty()) return drawPlain(painter, content, index, ink);
  painter.setPen(ink);
  drawFound(painter, content, text, found);
}

/// The sign of a marked cell at its left; the words give way to it.
QRect drawWarning(QPainter& painter, const QRect& content, const RowLook& look) {
  QRectF sign(content.left(), 0, kWarning, kWarning);
  sign.moveCenter(QPointF(sign.center().x(), QRectF(content).center().y()));
  drawSymbol(painter, sign, Symbol::Warning, look.ink(look.colours.warning));
  return content.adjusted(kWarning + metrics::kGrid, 0, 0, 0);
}

void drawTwoLines(QPainter& painter, const QRect& content, const QModelIndex& index, const RowLook& look) {
  const QStringList lines = index.data().toString().split(u'\n');
  const int middle = content.center().y() + 1;
  const std::array rects{QRect(content.left(), content.top(), content.width(), middle - content.top()),
                         QRect(content.left(), middle, content.width(), content.bottom() - middle)};
  const std::array places{Qt::AlignLeft | Qt::AlignBottom, Qt::AlignLeft | Qt::AlignTop};
  painter.setFont(Theme::quietFont());
  if (lines.size() < 2) return drawWords(painter, content, index, look.ink(look.colours.quiet));
  for (const std::size_t line : {0u, 1u}) {
    painter.setPen(line == 0 ? look.words() : look.ink(look.colours.quiet));
    painter.drawText(rects[line], static_cast<int>(places[line]) | Qt::TextSingleLine,
                     oneLine(lines[static_cast<qsizetype>(line)], painter.fontMetrics(), content.width()));
  }
}

/// Figures that will stand there once what is typed in another cell has been stored.
void drawFollowing(QPainter& painter, const QRect& content, const QModelIndex& index, const RowLook& look) {
  QFont font = painter.font();
  font.setWeight(QFont::DemiBold);
  painter.setFont(font);
  painter.setPen(look.ink(look.colours.link));
  drawTabular(painter, content, Qt::Alignment(index.data(Qt::TextAlignmentRole).toInt()),
              index.data().toString());
}

void drawTime(QPainter& painter, const QRect& content, const QModelIndex& index, const RowLook& look,
              const QColor& stopped) {
  QFont font = painter.font();
  if (look.running) font.setWeight(QFont::DemiBold);
  painter.setFont(font);
  const QString text = index.data().toString();
  const QColor still = text == kNoTime ? look.colours.quiet : stopped;
  painter.setPen(look.ink(look.running ? look.colours.running : still));
  drawTabular(painter, content, Qt::Alignment(index.data(Qt::TextAlignmentRole).toInt()), text);
}

QRectF signRect(const QRect& content, qreal size) {
  QRectF sign(content.left() + (kSign - size) / 2, 0, size, size);
  sign.moveCenter(QPointF(sign.center().x(), QRectF(content).center().y()));
  return sign;
}

void drawSign(QPainter& painter, const QRect& content, const RowLook& look, bool under) {
  const QRectF sign = signRect(content, kSign);
  const QColor still = under ? look.colours.text : look.colours.quiet;
  drawSymbol(painter, sign, look.running ? Symbol::Pause : Symbol::Play,
             look.ink(look.running ? look.colours.running : still));
}

/// Filled for a favourite; for another row an outline, where the person is.
void drawStar(QPainter& painter, const QRect& content, const QModelIndex& index, const RowLook& look,
              bool under) {
  const bool isOn = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
  if (!isOn && !look.hovered && !under) return;
  const QPointF middle(content.left() + kStarMiddle, QRectF(content).center().y() + 0.5);
  QPolygonF star;
  for (int point = 0; point < 10; ++point) {
    const double angle = M_PI * (point / 5.0 - 0.5);
    const double radius = point % 2 == 0 ? kStar : kStar * 0.42;
    star << middle + QPointF(std::cos(angle), std::sin(angle)) * radius;
  }
  const QColor ink = look.ink(under ? look.colours.text : look.colours.quiet);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(ink, 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(isOn ? QBrush(ink) : QBrush(Qt::NoBrush));
  painter.drawPolygon(star);
  painter.setBrush(Qt::NoBrush);
}

/// A sign of what the row is marked with; where the person is, the one of what a press does.
void drawState(QPainter& painter, const QRect& content, const QModelIndex& index, const RowLook& look,
               bool under) {
  const auto sign = static_cast<RowSign>(index.data(TableModel::kSignRole).toInt());
  const bool canPress = !index.data().toString().isEmpty();
  const bool showsPress = under || (look.hovered && sign == RowSign::None);
  if (look.running || (canPress && showsPress)) return drawSign(painter, content, look, under);
  if (sign == RowSign::Warning) {
    drawSymbol(painter, signRect(content, kWarning), Symbol::Warning, look.ink(look.colours.warning));
  }
  if (sign == RowSign::Waiting) {
    drawSymbol(painter, signRect(content, kWarning), Symbol::Away, look.ink(look.colours.notice));
  }
}

/// What matters more than the cell's own words, before them; answers the room that is left.
QRect drawRemark(QPainter& painter, const QRect& content, const QModelIndex& index, const RowLook& look) {
  const QString remark = index.data(TableModel::kRemarkRole).toString();
  if (remark.isEmpty()) return content;
  const auto sign = static_cast<RowSign>(index.data(TableModel::kSignRole).toInt());
  const QFontMetrics letters = painter.fontMetrics();
  painter.setPen(look.ink(sign == RowSign::Waiting ? look.colours.notice : look.colours.warning));
  painter.drawText(content, Qt::AlignVCenter | Qt::TextSingleLine,
                   letters.elidedText(remark, Qt::ElideRight, content.width()));
  return content.adjusted(letters.horizontalAdvance(remark) + metrics::kGrid, 0, 0, 0);
}

void drawMoment(QPainter& painter, const QRect& content, const QModelIndex& index, const RowLook& look,
                bool isOpen) {
  painter.setPen(isOpen && look.running ? look.ink(look.colours.quiet) : look.words());
  drawTabular(painter, content, Qt::Alignment(index.data(Qt::TextAlignmentRole).toInt()),
              index.data().toString());
}

void drawCheck(QPainter& painter, const QRect& content, const QModelIndex& index, const RowLook& look) {
  const bool on = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
  QRectF box(0, 0, kBox, kBox);
  box.moveCenter(QRectF(content).center());
  const int alignment = index.data(Qt::TextAlignmentRole).toInt();
  if (alignment & Qt::AlignLeft) box.moveLeft(content.left());
  if (alignment & Qt::AlignRight) box.moveRight(content.left() + content.width());
  drawSymbol(painter, box, on ? Symbol::CheckOn : Symbol::CheckOff,
             look.ink(on ? look.colours.link : look.colours.quiet));
}

void drawLink(QPainter& painter, const QRect& content, const QModelIndex& index, const RowLook& look,
              bool under) {
  QFont font = painter.font();
  font.setUnderline(under);
  painter.setFont(font);
  drawPlain(painter, content, index, look.ink(look.colours.link));
}

void drawContent(QPainter& painter, const QRect& content, const QModelIndex& index, const RowLook& look,
                 bool under) {
  if (index.data(TableModel::kFollowsRole).toBool()) return drawFollowing(painter, content, index, look);
  switch (RowDelegate::kindOf(index)) {
    case CellKind::Text:
      return drawWords(painter, content, index, look.words());
    case CellKind::TwoLines:
      return drawTwoLines(painter, content, index, look);
    case CellKind::Secondary:
      return drawWords(painter, drawRemark(painter, content, index, look), index,
                       look.ink(look.colours.quiet));
    case CellKind::Day:
      return drawPlain(painter, content, index,
                       placeOf(index) == InGroup::Further ? look.ink(look.colours.quiet) : look.words());
    case CellKind::Moment:
    case CellKind::OpenMoment:
      return drawMoment(painter, content, index, look, RowDelegate::kindOf(index) == CellKind::OpenMoment);
    case CellKind::State:
      return drawState(painter, content, index, look, under);
    case CellKind::Time:
      return drawTime(painter, content, index, look, look.words());
    case CellKind::SecondaryTime:
      return drawTime(painter, content, index, look, look.colours.quiet);
    case CellKind::StartStop:
      return drawSign(painter, content, look, under);
    case CellKind::Star:
      return drawStar(painter, content, index, look, under);
    case CellKind::Link:
      if (look.showsActions()) drawLink(painter, content, index, look, under);
      return;
    case CellKind::Check:
      return drawCheck(painter, content, index, look);
  }
}

}  // namespace

static QWidget* makeCellEditor(QWidget& parent, const TableModel& model, const QModelIndex& index) {
  const auto read = [&model, cell = QPersistentModelIndex(index)](const QString& text) {
    return model.read(text, cell);
  };
  return new CellEditor(&parent, read);
}

CellKind RowDelegate::kindOf(const QModelIndex& index) {
  return static_cast<CellKind>(index.data(TableModel::kKindRole).toInt());
}

int RowDelegate::naturalWidth(CellKind kind, const QString& text, const QFont& font) {
  QFont heavy = font;
  heavy.setWeight(QFont::DemiBold);
  switch (kind) {
    case CellKind::StartStop:
    case CellKind::State:
      return kSign;
    case CellKind::Star:
      return kBox;
    case CellKind::Check:
      return kBox;
    case CellKind::Time:
    case CellKind::SecondaryTime:
      return static_cast<int>(
          std::ceil(tabularWidth(heavy, text.isEmpty() ? QStringLiteral("000:00:00") : text)));
    case CellKind::Moment:
    case CellKind::OpenMoment:
      return static_cast<int>(std::ceil(tabularWidth(font, text)));
    default:
      return static_cast<int>(std::ceil(QFontMetricsF(font).horizontalAdvance(text))) + 1;
  }
}

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
  const RowLook look{Theme::colours(option.palette),
                     bool(option.state & QStyle::State_Selected),
                     option.widget->isActiveWindow(),
                     index.data(TableModel::kRunningRole).toBool(),
                     hovered_.isValid() && hovered_.row() == index.row(),
                     index.data(TableModel::kQuietRole).toBool()};
  painter->save();
  painter->setClipRect(option.rect);
  // A view is called active while it has the keyboard itself: the bar says where keys go.
  const bool withBar = option.rect.left() == 0 && bool(option.state & QStyle::State_Active);
  drawBackground(*painter, option.rect, look, lineUnder(index, look), withBar);
  QFont font = option.font;
  if (index.data(TableModel::kSumRole).toBool()) font.setWeight(QFont::DemiBold);
  painter->setFont(font);
  QRect content = contentRect(option, index);
  if (kindOf(index) != CellKind::State && !index.data(TableModel::kWarningRole).toString().isEmpty())
    content = drawWarning(*painter, content, look);
  // Where no row is selected the ring is the whole table's.
  const bool hasFocus = bool(option.state & QStyle::State_HasFocus) && actsOnPress(kindOf(index)) &&
                        static_cast<const RowTableView*>(option.widget)->selectionModel()->hasSelection();
  drawContent(*painter, content, index, look, hovered_ == index || hasFocus);
  if (hasFocus) {
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(look.colours.link, 2));
    painter->drawRoundedRect(QRectF(option.rect).adjusted(3, 3, -3, -4), metrics::kRadius, metrics::kRadius);
  }
  painter->restore();
}

void RowDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  auto* cell = qobject_cast<CellEditor*>(editor);
  if (!cell) return QStyledItemDelegate::setEditorData(editor, index);
  cell->begin(index.data(Qt::EditRole).toString());
}

/// Within the lines of its row, and never too narrow for a time of day.
void RowDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                       const QModelIndex& index) const {
  if (!qobject_cast<CellEditor*>(editor))
    return QStyledItemDelegate::updateEditorGeometry(editor, option, index);
  QRect place = option.rect.adjusted(0, 2, 0, -3);
  const int missing = kNarrowestEditor - place.width();
  if (missing > 0) place.setLeft(place.left() - missing);
  editor->setGeometry(place);
}

/// Return hands the text in at once. The base class does so a turn later, by when the next key may have
/// closed the editor and thrown the text away.
bool RowDelegate::eventFilter(QObject* watched, QEvent* event) {
  if (qobject_cast<CellEditor*>(watched)) return false;  // it knows its own keys, and when it is left
  auto* editor = qobject_cast<QLineEdit*>(watched);
  const bool isKey = editor && event->type() == QEvent::KeyPress;
  const int key = isKey ? static_cast<QKeyEvent*>(event)->key() : 0;
  if (key != Qt::Key_Return && key != Qt::Key_Enter) return QStyledItemDelegate::eventFilter(watched, event);
  Q_EMIT commitData(editor);
  if (!editor->isHidden()) Q_EMIT closeEditor(editor, SubmitModelCache);
  return true;
}

QWidget* RowDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const {
  const auto* model = dynamic_cast<const TableModel*>(index.model());
  if (model && !model->shouldEdit(index)) return nullptr;
  QWidget* editor = model && model->readsTyping() ? makeCellEditor(*parent, *model, index)
                                                  : QStyledItemDelegate::createEditor(parent, option, index);
  if (!editor) return nullptr;
  editor->setFont(option.font);
  if (auto* line = qobject_cast<QLineEdit*>(editor)) {
    line->setFrame(true);
    // The words stay where they stood; a field with a frame adds seven points of its own.
    const QRect content = contentRect(option, index);
    const int alignment = index.data(Qt::TextAlignmentRole).toInt();
    line->setAlignment(Qt::Alignment(alignment));
    line->setTextMargins(content.left() - option.rect.left() - 7, 0,
                         alignment & Qt::AlignRight ? option.rect.right() - content.right() - 7 : 0, 0);
  }
  editor->setAccessibleName(
      index.model()->headerData(index.column(), Qt::Horizontal, Qt::AccessibleTextRole).toString());
  return editor;
}

}  // namespace pendra
