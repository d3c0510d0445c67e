#pragma once

#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/Result.h"

namespace pendra {

/// An item of one of Vantor's lists.
struct VantorItem {
  std::optional<QString> name{};
  std::optional<QString> id{};      ///< the record's identifier
  std::optional<QString> parent{};  ///< of a job: the identifier of its customer
};

/// Vantor, as it can be asked. Every operation blocks until its answer is there; without one it throws a
/// `VantorFailure`.
class RemoteServer {
 public:
  virtual ~RemoteServer() = default;
  /// Path of the company file that is open, or a link that begins with "vtmac://"; none when none is open.
  [[nodiscard]] virtual std::optional<QString> companyFileName() = 0;
  [[nodiscard]] virtual QStringList employeeNames() = 0;
  /// None when Vantor has no such list to give, which is not an empty one.
  [[nodiscard]] virtual std::optional<std::vector<VantorItem>> services() = 0;
  [[nodiscard]] virtual std::optional<std::vector<VantorItem>> customers() = 0;
  /// The jobs; each names its customer as its parent.
  [[nodiscard]] virtual std::optional<std::vector<VantorItem>> jobs() = 0;
  /// Whether Vantor accepts this version of Pendra.
  [[nodiscard]] virtual bool canTalkToPendra() = 0;
  /// Hands over one time record. Returning means that Vantor has answered; what it answered is of no use.
  virtual void submitTime(const QString& record) = 0;
};

/// Makes the channel between two socket paths, Vantor's and ours. The error says what a person can mend.
using ConnectToVantor = std::function<Result<std::unique_ptr<RemoteServer>>(const QString& serverPath,
                                                                            const QString& clientPath)>;

}  // namespace pendra
