#include "ui/IntroSheet.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/HelpPlace.h"
#include "ui/Theme.h"
#include "ui_core/HelpAnchors.h"

namespace pendra {

IntroSheet::IntroSheet(QWidget* window) : QDialog(window) {
  setAttribute(Qt::WA_DeleteOnClose);
  setHelpAnchor(*this, help::kFirstDay);
  setWindowTitle(tr("Your First Timer"));
  auto* words = new QLabel(
      tr("An activity says for whom and what you work: a customer, perhaps a job, and a service item.\n\n"
         "Add one, and its timer starts. Press the round button, or Ctrl+T, to stop and start it. Several "
         "timers may "
         "run at once.\n\n"
         "What you timed stands in the log below, where you can correct it."));
  words->setTextFormat(Qt::PlainText);
  words->setWordWrap(true);
  words->setFixedWidth(Theme::wide(400));
  auto* begin = new QPushButton(tr("Begin"));
  begin->setDefault(true);
  connect(begin, &QPushButton::clicked, this, [this] { endIntro(); });
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(metrics::kGrid * 3, metrics::kGrid * 3, metrics::kGrid * 3, metrics::kSide);
  column->setSpacing(metrics::kGrid * 3);
  column->addWidget(words);
  column->addWidget(begin, 0, Qt::AlignRight);
}

}  // namespace pendra
