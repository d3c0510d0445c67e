#include "platform/Resources.h"

#include <QCoreApplication>
#include <QDir>

namespace pendra {

namespace {

QString installation() {
  const QString programs = QCoreApplication::applicationDirPath();
  return QDir::cleanPath(programs + (programs.endsWith(u"/libexec/pendra") ? u"/../.." : u"/.."));
}

}  // namespace

QString resourceFolder() { return installation() + u"/share/pendra"; }

QString helperFolder() { return installation() + u"/libexec/pendra"; }

QString translationFolder() { return resourceFolder() + u"/translations"; }

}  // namespace pendra
