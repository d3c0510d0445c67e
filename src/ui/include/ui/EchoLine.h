#pragma once

#include <QLabel>

#include "ui_core/EntryEchoes.h"

namespace pendra {

/// The text beside a field that says what OK will make of it. Hidden while there is nothing to say.
class EchoLine final : public QLabel {
  Q_OBJECT
 public:
  explicit EchoLine(QWidget* parent = nullptr);
  void showEcho(const Echo& echo);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void colour();

  Echo echo_;
};

/// Makes what stands beside a field its accessible description, empty texts left out.
void describeField(QWidget& field, const std::initializer_list<Echo>& echoes);

}  // namespace pendra
