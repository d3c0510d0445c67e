#include "EmptyState.h"

#include <QVBoxLayout>

#include "ui/Buttons.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr int kSentenceWidth = 420;

void showTitle(QPushButton& button, const QString& title) {
  button.setText(title);
  button.setAccessibleName(title);
  button.setVisible(!title.isEmpty());
}

}  // namespace

EmptyState::EmptyState(QWidget* parent)
    : QWidget(parent),
      sentence_(new QLabel(this)),
      button_(new QPushButton(this)),
      helpButton_(new QPushButton(this)) {
  sentence_->setTextFormat(Qt::PlainText);
  sentence_->setForegroundRole(QPalette::PlaceholderText);
  sentence_->setAlignment(Qt::AlignCenter);
  sentence_->setWordWrap(true);
  sentence_->setFixedWidth(kSentenceWidth);
  auto* column = new QVBoxLayout(this);
  column->setSpacing(metrics::kSide);
  column->addWidget(sentence_, 0, Qt::AlignCenter);
  column->addWidget(button_, 0, Qt::AlignCenter);
  column->addWidget(helpButton_, 0, Qt::AlignCenter);
  makeQuiet(*helpButton_);
}

void EmptyState::say(const QString& sentence, const QString& buttonTitle, const QString& helpTitle) {
  sentence_->setText(sentence);
  sentence_->setFont(Theme::cellFont());
  showTitle(*button_, buttonTitle);
  showTitle(*helpButton_, helpTitle);
}

}  // namespace pendra
