#pragma once

#include "document/Session.h"
#include "ui/TabularText.h"
#include "ui_core/HoursAtAGlance.h"

namespace pendra {

/// A sum with the word for it before it: "Today 05:09:49". The word is its accessible name.
class SumLabel final : public TabularLabel {
 public:
  SumLabel(const QString& objectName, const QString& word);
  [[nodiscard]] QSize sizeHint() const override;
  void show(Length sum, const QString& description = {});

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] QFont figuresFont() const;
  [[nodiscard]] int wordWidth() const;
};

/// The hours of today, of this week and not sent, in the timer window's footer.
class GlanceView final : public QWidget {
  Q_OBJECT
 public:
  /// Both must outlive it.
  GlanceView(HoursAtAGlance& hours, Session& session);

 private:
  void showHours();
  void showWhatApplies();

  HoursAtAGlance& hours_;
  Session& session_;
  SumLabel* today_;
  SumLabel* week_;
  SumLabel* notSent_;
  std::vector<Notifier::Subscription> observations_;
};

}  // namespace pendra
