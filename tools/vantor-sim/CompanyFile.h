#pragma once

#include <QJsonArray>
#include <QString>

#include "channel/ArchiveValue.h"
#include "platform/Result.h"

namespace pendra {

/// What Vantor has open: a JSON file, in the form in which the answers leave.
struct CompanyFile {
  ArchiveValue companyFileName;  ///< nil when no company is open
  ArchiveValue::Array employees;
  ArchiveValue::Array services;
  ArchiveValue::Array customers;
  ArchiveValue::Array jobs;
  bool accepts = true;  ///< whether this version of Pendra may talk to it

  static Result<CompanyFile> read(const QString& path);
};

}  // namespace pendra
