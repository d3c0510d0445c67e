#include "support/LogCapture.h"

#include <QLoggingCategory>
#include <cstring>
#include <mutex>

#include "platform/Log.h"

namespace pendra {

namespace {

/// What a message handler, a plain function, can reach.
struct Captured {
  std::mutex mutex;
  QStringList lines;
  QtMessageHandler previous = nullptr;
};

Captured& captured() {
  static Captured instance;
  return instance;
}

void capture(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (context.category == nullptr || std::strcmp(context.category, lcPendra().categoryName()) != 0) {
    if (captured().previous) captured().previous(type, context, message);
    return;
  }
  const std::scoped_lock lock(captured().mutex);
  captured().lines << message;
}

}  // namespace

LogCapture::LogCapture() {
  captured().lines.clear();
  captured().previous = qInstallMessageHandler(capture);
}

LogCapture::~LogCapture() { qInstallMessageHandler(captured().previous); }

QStringList LogCapture::lines() const {
  const std::scoped_lock lock(captured().mutex);
  return captured().lines;
}

}  // namespace pendra
