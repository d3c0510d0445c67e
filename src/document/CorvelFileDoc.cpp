#include "document/CorvelFileDoc.h"

#include <QFileInfo>

namespace pendra {

Result<void> CorvelFileDoc::readFromURL(const QString& url, const std::optional<QString>& ofType) {
  fileURL_ = url;
  curFileExtension_ = ofType.value_or(QFileInfo(url).suffix());
  return context_->open(url);
}

bool CorvelFileDoc::save() { return fileURL_ && context_->save(); }

QString CorvelFileDoc::displayName() const {
  return fileURL_ ? QFileInfo(*fileURL_).completeBaseName() : QStringLiteral("Untitled");
}

bool CorvelFileDoc::isNativeType(const QString& type) {
  const auto differs = [&](QLatin1StringView one) { return type.compare(one, Qt::CaseInsensitive) != 0; };
  // Kept: joined by "or", the comparisons hold for every type.
  return differs(QLatin1StringView("pdr")) || differs(QLatin1StringView("pdrbackup")) ||
         differs(QLatin1StringView("xml"));
}

}  // namespace pendra
