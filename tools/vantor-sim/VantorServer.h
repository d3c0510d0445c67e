#pragma once

#include "CompanyFile.h"
#include "Fault.h"
#include "RecordsFile.h"
#include "channel/IPCMgr.h"

namespace pendra {

/// Thrown out of a call that is not to be answered, or has been answered otherwise.
struct Unanswered {};

/// Performs Pendra's calls on a company file, with one fault if one is wanted.
class VantorServer final : public VendedObject {
 public:
  VantorServer(CompanyFile company, RecordsFile records, Fault fault)
      : company_(std::move(company)), records_(std::move(records)), fault_(std::move(fault)) {}

  void setCompany(CompanyFile company) { company_ = std::move(company); }
  /// The endpoint that vends this object, and where its client listens: what a faulty answer needs.
  void setChannel(IPCMgr& channel, const QString& clientPath);

  [[nodiscard]] const ProtocolMethod* methodSignatureForSelector(QStringView selector) const override;
  ArchiveValue perform(const ProtocolMethod& method, const QList<ArchiveValue>& arguments) override;

 private:
  ArchiveValue answer(QStringView selector, const QList<ArchiveValue>& arguments);
  bool isFaulty(QStringView selector);
  void misbehave(QStringView selector, const ArchiveValue& answer);
  void sendHalf(QByteArrayView archive) const;

  CompanyFile company_;
  RecordsFile records_;
  Fault fault_;
  int calls_ = 0;
  IPCMgr* channel_ = nullptr;
  IPCAddress client_;
};

}  // namespace pendra
