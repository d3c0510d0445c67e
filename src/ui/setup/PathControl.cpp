#include "ui/PathControl.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "ui/Buttons.h"
#include "ui/Labels.h"

namespace pendra {

namespace {

constexpr qsizetype kPiecesAtMost = 4;

/// Shortens what the button says in its middle, until it is as narrow as `width`.
void shorten(QPushButton& button, int width) {
  const int excess = button.sizeHint().width() - width;
  if (excess <= 0) return;
  const QFontMetrics metrics = button.fontMetrics();
  const int room = std::max(0, metrics.horizontalAdvance(button.text()) - excess);
  button.setText(metrics.elidedText(button.text(), Qt::ElideMiddle, room));
}

}  // namespace

PathControl::PathControl(QWidget* parent) : QWidget(parent), row_(new QHBoxLayout(this)) {
  row_->setContentsMargins(0, 0, 0, 0);
  row_->setSpacing(0);
  row_->setSizeConstraint(QLayout::SetNoConstraint);  // the pieces follow the width, not the other way round
  row_->addStretch();
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void PathControl::setPath(const QString& path) {
  path_ = path;
  setAccessibleDescription(path);
  setToolTip(path);
  showPieces();
}

void PathControl::resizeEvent(QResizeEvent*) { showPieces(); }

/// The last pieces that have room, but the very last in any case.
void PathControl::showPieces() {
  while (row_->count() > 1) {
    const std::unique_ptr<QLayoutItem> item(row_->takeAt(0));
    item->widget()->hide();
    item->widget()->deleteLater();
  }
  const QStringList pieces = path_.split(u'/', Qt::SkipEmptyParts);
  int room = width();
  for (qsizetype at = pieces.size() - 1; at >= 0; --at) {
    const bool isLast = at + 1 == pieces.size();
    auto* piece = makePiece(pieces[at], u'/' + pieces.first(at + 1).join(u'/'));
    auto* arrow = isLast ? nullptr : makeLabel(QStringLiteral(" › "), {.isQuiet = true});
    auto* rest = makeLabel(QStringLiteral("… › "), {.isQuiet = true});
    if (isLast) shorten(*piece, room - rest->sizeHint().width());
    room -= piece->sizeHint().width() + (arrow ? arrow->sizeHint().width() : 0);
    const bool fits = room >= (at > 0 ? rest->sizeHint().width() : 0) && pieces.size() - at <= kPiecesAtMost;
    if (isLast || fits) {
      if (arrow) row_->insertWidget(0, arrow);
      row_->insertWidget(0, piece);
      delete rest;
      continue;
    }
    row_->insertWidget(0, rest);
    delete piece;
    delete arrow;
    return;
  }
}

QPushButton* PathControl::makePiece(const QString& title, const QString& path) {
  auto* piece = new QPushButton(QString(title).replace(u'&', QStringLiteral("&&")));
  piece->setAccessibleName(title);
  piece->setToolTip(path);
  piece->setAutoDefault(false);
  makeQuiet(*piece);
  connect(piece, &QPushButton::clicked, this, [this, path] { Q_EMIT pieceClicked(path); });
  return piece;
}

}  // namespace pendra
