#include "platform/Resources.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace pendra {

namespace {

/// Known before there is an application, as long as an upgrade has not moved the program.
QString installation() {
  static const QString programs = QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/self/exe"))).path();
  return QDir::cleanPath(programs + (programs.endsWith(u"/libexec/pendra") ? u"/../.." : u"/.."));
}

}  // namespace

QString resourceFolder() { return installation() + u"/share/pendra"; }

QString helperFolder() { return installation() + u"/libexec/pendra"; }

QString translationFolder() { return resourceFolder() + u"/translations"; }

}  // namespace pendra
