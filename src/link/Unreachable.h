#pragma once

#include "channel/ChannelFailure.h"
#include "link/RemoteServer.h"
#include "link/VantorFailure.h"

namespace pendra {

/// What stands in for Vantor when there is no channel: it answers nothing, and no record reaches it.
class Unreachable final : public RemoteServer {
 public:
  std::optional<QString> companyFileName() override { return std::nullopt; }
  QStringList employeeNames() override { return {}; }
  std::optional<std::vector<VantorItem>> services() override { return std::nullopt; }
  std::optional<std::vector<VantorItem>> customers() override { return std::nullopt; }
  std::optional<std::vector<VantorItem>> jobs() override { return std::nullopt; }
  bool canTalkToPendra() override { return false; }
  void submitTime(const QString&) override {
    throw VantorFailure(kVTIPCSend, QStringLiteral("there is no channel to Vantor"),
                        VantorFailure::Fate::NeverLeft);
  }
};

}  // namespace pendra
