#include "document/OpenDocument.h"

#include <QFileInfo>

namespace pendra {

Result<void> OpenDocument::read(const QString& url) {
  path_ = url;
  return context_->open(url);
}

bool OpenDocument::save() { return path_ && context_->save(); }

QString OpenDocument::displayName() const {
  return path_ ? QFileInfo(*path_).completeBaseName() : QStringLiteral("Untitled");
}

}  // namespace pendra
