#include "ui/PathControl.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "ui/Buttons.h"

namespace pendra {

namespace {

constexpr qsizetype kPiecesAtMost = 4;

QLabel* quietLabel(const QString& text) {
  auto* label = new QLabel(text);
  label->setForegroundRole(QPalette::PlaceholderText);
  return label;
}

}  // namespace

PathControl::PathControl(QWidget* parent) : QWidget(parent), row_(new QHBoxLayout(this)) {
  row_->setContentsMargins(0, 0, 0, 0);
  row_->setSpacing(0);
  row_->addStretch();
}

void PathControl::setPath(const QString& path) {
  path_ = path;
  setAccessibleDescription(path);
  setToolTip(path);
  while (row_->count() > 1) {
    const std::unique_ptr<QLayoutItem> item(row_->takeAt(0));
    item->widget()->deleteLater();
  }
  const QStringList pieces = path.split(u'/', Qt::SkipEmptyParts);
  const qsizetype first = std::max(qsizetype{0}, pieces.size() - kPiecesAtMost);
  if (first > 0) row_->insertWidget(row_->count() - 1, quietLabel(QStringLiteral("… › ")));
  for (qsizetype at = first; at < pieces.size(); ++at) {
    addPiece(pieces[at], u'/' + pieces.mid(0, at + 1).join(u'/'), at + 1 == pieces.size());
  }
}

void PathControl::addPiece(const QString& title, const QString& path, bool isLast) {
  auto* piece = new QPushButton(QString(title).replace(u'&', QStringLiteral("&&")));
  piece->setAccessibleName(title);
  piece->setToolTip(path);
  piece->setAutoDefault(false);
  makeQuiet(*piece);
  connect(piece, &QPushButton::clicked, this, [this, path] { Q_EMIT pieceClicked(path); });
  row_->insertWidget(row_->count() - 1, piece);
  if (!isLast) row_->insertWidget(row_->count() - 1, quietLabel(QStringLiteral(" › ")));
}

}  // namespace pendra
