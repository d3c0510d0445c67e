#include "EmptyState.h"

#include <QVBoxLayout>

#include "ui/Theme.h"

namespace pendra {

namespace {
constexpr int kSentenceWidth = 420;
}

EmptyState::EmptyState(QWidget* parent)
    : QWidget(parent), sentence_(new QLabel(this)), button_(new QPushButton(this)) {
  sentence_->setForegroundRole(QPalette::PlaceholderText);
  sentence_->setAlignment(Qt::AlignCenter);
  sentence_->setWordWrap(true);
  sentence_->setFixedWidth(kSentenceWidth);
  auto* column = new QVBoxLayout(this);
  column->setSpacing(metrics::kSide);
  column->addWidget(sentence_, 0, Qt::AlignCenter);
  column->addWidget(button_, 0, Qt::AlignCenter);
}

void EmptyState::say(const QString& sentence, const QString& buttonTitle) {
  sentence_->setText(sentence);
  sentence_->setFont(Theme::cellFont());
  button_->setText(buttonTitle);
  button_->setAccessibleName(buttonTitle);
  button_->setVisible(!buttonTitle.isEmpty());
}

}  // namespace pendra
