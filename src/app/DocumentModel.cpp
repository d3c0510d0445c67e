#include "DocumentModel.h"

#include <QFile>

#include "model/Model.h"
#include "platform/Resources.h"

namespace pendra {

ObjectModel loadObjectModel() {
  QFile file(resourceFolder() + u"/Corvel.momd");
  if (!file.open(QIODevice::ReadOnly)) qFatal("Unable to find DataModel in main bundle");
  return objectModel(file.readAll());
}

}  // namespace pendra
