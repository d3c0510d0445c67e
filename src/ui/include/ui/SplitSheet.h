#pragma once

#include <QDialog>
#include <memory>

#include "model/TimeEntry.h"

class QLineEdit;

namespace pendra {

class EchoLine;
class Session;

/// The window "Split Entry" asks where an entry is cut in two, and says how long the parts will be.
class SplitSheet final : public QDialog {
  Q_OBJECT
 public:
  /// All must outlive it; nothing is done when the entry goes meanwhile.
  SplitSheet(Session& session, TimeEntry& entry, QWidget* window);

  /// Asks until there is an answer, and cuts the entry.
  void run();

 private:
  void build();
  void showReading();
  void finish();

  Session& session_;
  Ref<TimeEntry> entry_;
  std::optional<Instant> at_;
  QLineEdit* time_;
  EchoLine* echo_;
};

}  // namespace pendra
