#include "CellCompletions.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QEvent>

namespace pendra {

namespace {

constexpr int kNarrowest = 280;

}  // namespace

CellCompletions::CellCompletions(QLineEdit& field)
    : QObject(&field), field_(field), list_(new QCompleter(this)) {
  list_->setModel(&lines_);
  list_->setWidget(&field);
  list_->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
  list_->popup()->setObjectName(QStringLiteral("cellCompletions"));
  list_->popup()->setAccessibleName(tr("Completions"));
  list_->popup()->installEventFilter(this);
  const auto show = [this](const QModelIndex& index) {
    const QString text = index.isValid() ? offered_.at(index.row()) : typed_;
    if (field_.text() != text) field_.setText(text);
  };
  connect(list_, qOverload<const QModelIndex&>(&QCompleter::highlighted), this, show);
  connect(list_, qOverload<const QModelIndex&>(&QCompleter::activated), this, show);
}

void CellCompletions::offer(const QStringList& texts) {
  if (texts.isEmpty()) return close();
  offered_ = texts;
  typed_ = field_.text();
  QStringList lines;
  for (const QString& text : texts) lines << text.simplified();
  lines_.setStringList(lines);
  list_->popup()->setFont(field_.font());
  list_->setCompletionPrefix(typed_);
  list_->complete({0, 0, std::max(field_.width(), kNarrowest), field_.height()});
  list_->popup()->setCurrentIndex({});
}

bool CellCompletions::isOpen() const { return list_->popup()->isVisible(); }

void CellCompletions::close() { list_->popup()->hide(); }

bool CellCompletions::takeBack() {
  if (!isOpen()) return false;
  close();
  field_.setText(typed_);
  return true;
}

bool CellCompletions::eventFilter(QObject* watched, QEvent* event) {
  const bool opens = event->type() == QEvent::Show;
  if (opens || event->type() == QEvent::Hide) Q_EMIT openChanged(opens);
  return QObject::eventFilter(watched, event);
}

}  // namespace pendra
