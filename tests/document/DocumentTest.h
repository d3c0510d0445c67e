#pragma once

#include <gmock/gmock.h>

#include <QCoreApplication>

#include "document/DocumentClosing.h"
#include "document/DocumentFiles.h"
#include "document/Documents.h"
#include "document/Launch.h"
#include "document/RunningTimers.h"
#include "document/Saving.h"
#include "platform/Preferences.h"
#include "store/UndoStack.h"
#include "support/Rows.h"
#include "support/TestSession.h"

namespace pendra {

/// A session in which documents come and go.
class DocumentTest : public testing::Test, protected TestSession {
 protected:
  static void SetUpTestSuite() {
    static int argc = 0;
    static const QCoreApplication application(argc, nullptr);  // for the timers
  }
  [[nodiscard]] QString path(const char* name) const {
    return places.documents + u'/' + QString::fromUtf8(name);
  }
  /// What lies in a folder, hidden drafts too, but for the lock of the document that is open.
  [[nodiscard]] QStringList files(const QString& folder) const {
    QStringList names = QDir(folder).entryList(QDir::Files | QDir::Hidden);
    names.removeIf([](const QString& name) { return name.endsWith(u".lock"); });
    return names;
  }
  [[nodiscard]] QString inFolder(const char* name) const {
    return documentFolder(places) + u'/' + QString::fromUtf8(name);
  }
  /// A document with that customer, kept by its owner.
  void write(const QString& at, const char* customer = "Acme", bool standalone = true) {
    auto made = OpenDocument::read(at, testModel(), clock, calendar);
    ASSERT_TRUE(made);
    ObjectContext& context = *made.value()->context();
    context.fill([&] {
      made.value()->settings().identity()->setEmployeeName(QStringLiteral("Me"));
      made.value()->settings().setStandalone(standalone);
      context.insert<Customer>().setName(QString::fromUtf8(customer));
    });
    ASSERT_TRUE(context.save());
  }
  /// What the file at a path holds; none when it cannot be read, as when it is held.
  [[nodiscard]] std::unique_ptr<ObjectContext> stored(const QString& at) const {
    auto context = std::make_unique<ObjectContext>(testModel(), clock, calendar);
    return context->open(at) ? std::move(context) : nullptr;
  }
  [[nodiscard]] QString customer() const {
    return session.document() ? queries::nameOf(session.context()->all<Customer>()[0]) : QString();
  }
  void open(const char* name) {
    ASSERT_TRUE(loadDocument(session, path(name)));
    windows.show(WindowKind::Timer);
    windows.forget();
  }
  /// "Work.pdr", in its window, with a timer that has run for a minute.
  Activity& openWithRunningTimer() {
    write(path("Work.pdr"));
    open("Work.pdr");
    Activity* activity = nullptr;
    std::ignore =
        session.context()->edit({}, [&] { (activity = &addActivity(nullptr, nullptr))->startEntry(); });
    clock.advance(60);
    return *activity;
  }
  [[nodiscard]] QStringList notices() {
    QStringList texts;
    for (const Notice& notice : session.notices().standing()) texts << notice.text;
    return texts;
  }
};

}  // namespace pendra
