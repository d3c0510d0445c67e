#include "link/ChannelServer.h"

#include "channel/CallThread.h"
#include "link/VantorFailure.h"
#include "platform/Text.h"

namespace pendra {

namespace {

/// What outlives a connection: the answers that Vantor owes, and the end at which they arrive until the next
/// connection is made.
struct Legacy {
  OwedAnswers owed;
  std::unique_ptr<CallingEnd> standingBy;
};

[[noreturn]] void raiseWrongAnswer() {
  throw VantorFailure(kVTIPCUnArchiverFailure,
                      QStringLiteral("error: the answer is of another kind than promised"));
}

[[noreturn]] void raise(const ChannelFailure& failure) {
  const bool neverLeft = failure.fate() == ChannelFailure::Fate::NeverLeft;
  throw VantorFailure(failure.name(), failure.reason(),
                      neverLeft ? VantorFailure::Fate::NeverLeft : VantorFailure::Fate::InDoubt);
}

template <class Kind>
Kind& expected(ArchiveValue& answer) {
  auto* kind = answer.as<Kind>();
  if (!kind) raiseWrongAnswer();
  return *kind;
}

QString textOrBlank(ArchiveValue& value) { return value.isNil() ? QString() : expected<QString>(value); }

/// Vantor at the other end of a channel.
class ChannelServer final : public RemoteServer, private PendingCall {
 public:
  ChannelServer(std::unique_ptr<CallingEnd> end, WaitPort* wait, std::shared_ptr<Legacy> legacy)
      : thread_(std::move(end)), wait_(wait), legacy_(std::move(legacy)) {}
  ~ChannelServer() override {
    auto end = thread_.stop();
    legacy_->owed = end->owed();
    if (end->owed().count() == 0) return;
    end->standBy();
    legacy_->standingBy = std::move(end);
  }
  Q_DISABLE_COPY_MOVE(ChannelServer)

  std::optional<QString> companyFileName() override {
    ArchiveValue answer = ask(operations::kCompanyFileName);
    return answer.isNil() ? std::nullopt : std::optional(expected<QString>(answer));
  }
  QStringList employeeNames() override {
    ArchiveValue answer = ask(operations::kEmployeeNames);
    QStringList names;
    if (answer.isNil()) return names;
    for (ArchiveValue& name : expected<ArchiveValue::Array>(answer)) names.push_back(textOrBlank(name));
    return names;
  }
  std::optional<std::vector<VantorItem>> services() override { return rows(operations::kServices); }
  std::optional<std::vector<VantorItem>> customers() override { return rows(operations::kCustomers); }
  std::optional<std::vector<VantorItem>> jobs() override { return rows(operations::kJobs); }
  bool canTalkToPendra() override { return !ask(operations::kCanTalkToPendra).isNil(); }
  void submitTime(const QString& record) override { ask(operations::kSubmitTime, {record}); }

 private:
  [[nodiscard]] int finished() const override { return thread_.finished(); }
  void cancel() override { thread_.cancel(); }

  ArchiveValue ask(const Operation& operation, const ArchiveValue::Array& arguments = {}) {
    if (wait_) wait_->prepare();
    thread_.begin({.operation = &operation, .arguments = arguments});
    if (wait_) wait_->wait(*this);
    CallOutcome outcome = thread_.take();
    if (const auto* failure = std::get_if<ChannelFailure>(&outcome)) raise(*failure);
    auto& answer = std::get<Answer>(outcome);
    // The channel may hand over an answer to another call; it is none to this one.
    if (answer.operation != operation.name) {
      throw VantorFailure(kVTIPCTimeout,
                          formatted(u"timeout waiting for return result for %@", {operation.name}));
    }
    return std::move(answer.value);
  }

  std::optional<std::vector<VantorItem>> rows(const Operation& operation) {
    ArchiveValue answer = ask(operation);
    if (answer.isNil()) return {};
    auto& elements = expected<ArchiveValue::Array>(answer);
    std::vector<VantorItem> rows;
    rows.reserve(static_cast<std::size_t>(elements.size()));
    for (ArchiveValue& element : elements) {
      auto& row = expected<ListRow>(element);
      rows.push_back({std::move(row.name), std::move(row.id), std::move(row.parent)});
    }
    return rows;
  }

  CallThread thread_;
  WaitPort* wait_;
  std::shared_ptr<Legacy> legacy_;
};

}  // namespace

ConnectToVantor connectOverChannel(const TimeLimits& limits, WaitPort* wait) {
  return [limits, wait, legacy = std::make_shared<Legacy>()](
             const QString& serverPath, const QString& clientPath) -> Result<std::unique_ptr<RemoteServer>> {
    auto made = CallingEnd::bound(serverPath, clientPath, limits);
    if (!made) return made.error();
    std::unique_ptr<CallingEnd> end = std::move(made).value();
    if (const auto earlier = std::move(legacy->standingBy)) {
      earlier->takeLateAnswers();
      legacy->owed = earlier->owed();
    }
    end->setOwed(legacy->owed);
    return std::unique_ptr<RemoteServer>(std::make_unique<ChannelServer>(std::move(end), wait, legacy));
  };
}

ConnectToVantor connectOverChannel(WaitPort* wait) { return connectOverChannel(TimeLimits(), wait); }

}  // namespace pendra
