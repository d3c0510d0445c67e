#include "platform/Log.h"

#include <cstdio>

namespace pendra {

Q_LOGGING_CATEGORY(lcPendra, "pendra", QtInfoMsg)

void logLine(const QString& text) { qCInfo(lcPendra).noquote() << text; }

void installLog() {
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& message) {
    const QByteArray line = message.toUtf8() + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
    std::fflush(stderr);
  });
}

}  // namespace pendra
