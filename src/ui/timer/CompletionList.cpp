#include "CompletionList.h"

#include <QPainter>
#include <QStyledItemDelegate>
#include <QTextLayout>

#include "QuickReadingLabel.h"
#include "platform/Text.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr int kLineHeight = 30;
constexpr int kWordsAt = 38;
constexpr int kSignAt = 20;  // the middle of the sign
constexpr int kEdge = 12;
constexpr int kRemarkRole = Qt::UserRole;
constexpr int kFoundRole = Qt::UserRole + 1;

class Delegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
    return {0, kLineHeight};
  }

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const Colours& colours = Theme::colours(option.palette);
    const bool chosen = option.state & QStyle::State_Selected;
    const QColor ground = chosen                                   ? colours.selection
                          : option.state & QStyle::State_MouseOver ? colours.hover
                                                                   : colours.base;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(ground);
    painter->drawRoundedRect(option.rect, metrics::kRadius, metrics::kRadius);
    if (chosen) drawReturnKey(*painter, QPointF(kSignAt, option.rect.center().y() + 0.5), colours.text);
    QRect room = option.rect.adjusted(kWordsAt, 0, -kEdge, 0);
    const QString remark = index.data(kRemarkRole).toString();
    painter->setFont(Theme::quietFont());
    painter->setPen(Theme::readable(colours.quiet, ground, colours.text));
    painter->drawText(room, Qt::AlignRight | Qt::AlignVCenter, remark);
    room.setRight(room.right() - painter->fontMetrics().horizontalAdvance(remark) - kEdge);
    painter->setPen(colours.text);
    drawTitle(*painter, room, index);
    painter->restore();
  }

 private:
  static void drawTitle(QPainter& painter, const QRect& room, const QModelIndex& index) {
    QFont bold = Theme::controlFont();
    bold.setWeight(QFont::DemiBold);
    const QString whole = index.data(Qt::DisplayRole).toString();
    const QString title = QFontMetrics(bold).elidedText(whole, Qt::ElideRight, room.width());
    QTextLayout layout(title, Theme::controlFont());
    QTextCharFormat found;
    found.setFont(bold);
    QList<QTextLayout::FormatRange> formats;
    for (const QVariant& part : index.data(kFoundRole).toList()) {
      const QPoint range = part.toPoint();
      formats << QTextLayout::FormatRange{range.x(), range.y(), found};
    }
    layout.setFormats(formats);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    layout.draw(&painter, QPointF(room.left(), room.center().y() - line.height() / 2));
  }
};

QVariantList rangesOf(const std::vector<QuickCompletion::Part>& found) {
  QVariantList ranges;
  for (const QuickCompletion::Part& part : found) {
    ranges << QPoint(static_cast<int>(part.at), static_cast<int>(part.length));
  }
  return ranges;
}

}  // namespace

CompletionList::CompletionList(QWidget* parent) : QListWidget(parent) {
  setObjectName(QStringLiteral("quickEntryCompletions"));
  setAccessibleName(tr("Completions"));
  setFocusPolicy(Qt::NoFocus);
  setFrameShape(QFrame::NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setMouseTracking(true);
  viewport()->setAutoFillBackground(false);
  setItemDelegate(new Delegate(this));
}

void CompletionList::offer(std::vector<QuickCompletion> completions) {
  shown_ = std::move(completions);
  clear();
  for (const QuickCompletion& one : shown_) {
    auto* item = new QListWidgetItem(one.title, this);
    item->setData(kRemarkRole, one.remark);
    item->setData(kFoundRole, rangesOf(one.found));
    item->setData(Qt::AccessibleTextRole, formatted(u"%@, %@", {one.title, one.remark}));
  }
  updateGeometry();
}

const QuickCompletion* CompletionList::chosen() const {
  return currentRow() < 0 ? nullptr : &shown_.at(static_cast<std::size_t>(currentRow()));
}

void CompletionList::move(int by) { setCurrentRow(std::clamp(currentRow() + by, -1, count() - 1)); }

QSize CompletionList::sizeHint() const { return {kLineHeight, count() * kLineHeight}; }

}  // namespace pendra
