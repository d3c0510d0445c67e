#include "platform/Resources.h"

#include <QCoreApplication>
#include <QDir>

namespace pendra {

QString resourceFolder() {
  return QDir::cleanPath(QCoreApplication::applicationDirPath() + u"/../share/pendra");
}

QString translationFolder() { return resourceFolder() + u"/translations"; }

}  // namespace pendra
