#pragma once

#include "CompanyFile.h"
#include "Fault.h"
#include "RecordsFile.h"
#include "channel/ServingEnd.h"

namespace pendra {

/// Thrown out of a call that is not to be answered, or has been answered otherwise.
struct Unanswered {};

/// Performs Pendra's calls on a company file, with one fault if one is wanted.
class VantorServer {
 public:
  VantorServer(CompanyFile company, RecordsFile records, Fault fault)
      : company_(std::move(company)), records_(std::move(records)), fault_(std::move(fault)) {}

  void setCompany(CompanyFile company) { company_ = std::move(company); }
  /// The endpoint that performs calls by this object, and where its client listens: what a faulty answer
  /// needs.
  void setChannel(ServingEnd& channel, const QString& clientPath);

  ArchiveValue perform(const Operation& operation, const ArchiveValue::Array& arguments);

 private:
  ArchiveValue answer(QStringView operation, const ArchiveValue::Array& arguments);
  bool isFaulty(QStringView operation);
  void misbehave(QStringView operation, const ArchiveValue& answer);
  void drip(QByteArrayView archive, qsizetype most) const;

  CompanyFile company_;
  RecordsFile records_;
  Fault fault_;
  int calls_ = 0;
  ServingEnd* channel_ = nullptr;
  SocketAddress client_;
};

}  // namespace pendra
