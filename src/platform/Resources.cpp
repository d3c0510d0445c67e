#include "platform/Resources.h"

#include <QCoreApplication>
#include <QDir>

namespace pendra {

QString resourceFolder() {
  return QDir::cleanPath(QCoreApplication::applicationDirPath() + u"/../share/pendra");
}

}  // namespace pendra
