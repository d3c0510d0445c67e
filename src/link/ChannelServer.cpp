#include "link/ChannelServer.h"

#include "channel/PDToVTProtocol.h"

namespace pendra {

namespace {

/// Vantor at the other end of a channel.
class ChannelServer final : public RemoteServer {
 public:
  explicit ChannelServer(std::unique_ptr<IPCMgr> channel) : channel_(std::move(channel)), proxy_(*channel_) {}
  ~ChannelServer() override { channel_->invalidate(); }

  std::optional<QString> companyFileName() override { return proxy_.companyFileName(); }
  QStringList getEmployeeNamesArray() override {
    return proxy_.getEmployeeNamesArray().value_or(QStringList());
  }
  std::optional<std::vector<NameAndRecNumber>> getServicesArray() override {
    return proxy_.getServicesArray();
  }
  std::optional<std::vector<NameAndRecNumber>> getCustomersArray() override {
    return proxy_.getCustomersArray();
  }
  std::optional<std::vector<NameAndRecNumber>> getJobsArray() override { return proxy_.getJobsArray(); }
  bool canTalkToPendra() override { return proxy_.canTalkToPendra(); }
  void submitTime(const QString& record) override {
    // A late answer to a record given up must not vouch for this one.
    channel_->discardInput();
    proxy_.submitTime(record);
  }

 private:
  std::unique_ptr<IPCMgr> channel_;
  PDToVTProxy<NameAndRecNumber> proxy_;
};

}  // namespace

ConnectToVantor connectOverChannel(const IPCTimeLimits& limits) {
  return [limits](const QString& serverPath, const QString& clientPath) -> std::unique_ptr<RemoteServer> {
    auto made = IPCMgr::initForPath(serverPath, PDToVTProtocol, clientPath, supportedClassesOfPDToVT());
    if (!made) return nullptr;  // why is not reported
    made.value()->setTimeLimits(limits);
    return std::make_unique<ChannelServer>(std::move(made).value());
  };
}

}  // namespace pendra
