#pragma once

#include "support/CellText.h"
#include "support/Rows.h"
#include "support/SilentDisplay.h"
#include "support/TestSession.h"

namespace pendra {

/// A time log over an open document that is linked, at 2026-11-24 10:00 in Berlin.
class TimeLog : public testing::Test {
 protected:
  TimeLog() {
    test.openDocument(false);
    design = &test.addService("Design");
  }

  Activity& activityOf(const QString& customer, const QString& job = {}) {
    const auto named = queries::customersNamed(*test.session.context(), customer);
    Customer& found = named.empty() ? test.addCustomer(customer) : *named[0];
    return test.addActivity(&found, design, job.isEmpty() ? nullptr : &test.addJob(found, job));
  }
  /// The column's texts, from the first row to the last.
  QStringList column(const char* identifier) {
    QStringList texts;
    const auto& rows = log.rows();
    for (int row = 0; row < rows.rowCount(); ++row) {
      texts << cellText(rows, QString::fromLatin1(identifier), row);
    }
    return texts;
  }
  void pickCustomer(const QString& name) {
    log.customerPopup.selectTitle(name);
    log.customerPicked(log.customerPopup);
  }

  TestSession test;
  SilentDisplay display;
  TimerState window{test.session, display, QLocale::c()};
  LogController& log = window.log();
  Service* design = nullptr;
};

}  // namespace pendra
