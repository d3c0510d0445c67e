#pragma once
// What Pendra can ask of Vantor: the interface as both sides need it, and seven typed functions for the side
// that asks. The class of the rows is not known here; it only needs the members that the wire carries.

#include <QStringList>
#include <concepts>
#include <optional>
#include <vector>

#include "IPC/IPCMgr.h"

namespace pendra {

/// The interface that Vantor serves. No operation is void or one-way.
extern const Protocol PDToVTProtocol;

/// The rows of Vantor's lists, as they go over the wire. Each of the three fields is a text or nil.
extern const ArchiveClass kNameAndRecNumberClass;

/// The classes permitted on the channel between Pendra and Vantor.
SupportedClasses supportedClassesOfPDToVT();

/// A row class: aggregates with these members, in this order.
template <class Row>
concept NamedRow = requires(Row row) {
  { row.name } -> std::convertible_to<std::optional<QString>>;
  { row.vtObjectID } -> std::convertible_to<std::optional<QString>>;
  { row.parentObjectID } -> std::convertible_to<std::optional<QString>>;
};

/// A row as it is sent.
template <NamedRow Row>
ArchiveValue archivedRow(const Row& row) {
  const auto field = [](const std::optional<QString>& text) {
    return text ? ArchiveValue(*text) : ArchiveValue();
  };
  return ArchiveRecord{&kNameAndRecNumberClass,
                       {field(row.name), field(row.vtObjectID), field(row.parentObjectID)}};
}

/// What the typed functions below are made of. An answer of another kind than promised is thrown as
/// "VTIPCUnArchiverFailure".
namespace answers {
std::optional<ArchiveValue::Array> array(const ArchiveValue& answer);
std::optional<QString> text(const ArchiveValue& answer);
const ArchiveRecord& record(const ArchiveValue& answer);
}  // namespace answers

/// Vantor as its caller sees it. Throws what the channel throws.
template <NamedRow Row>
class PDToVTProxy {
 public:
  explicit PDToVTProxy(IPCMgr& channel) : channel_(channel) {}

  /// The path of the open company file, or a link; none when no company is open.
  [[nodiscard]] std::optional<QString> companyFileName() { return answers::text(call(u"companyFileName")); }
  /// The lists are none when Vantor answers nil, which is another thing than an empty list.
  [[nodiscard]] std::optional<QStringList> getEmployeeNamesArray() {
    const auto elements = answers::array(call(u"getEmployeeNamesArray"));
    if (!elements) return {};
    QStringList names;
    for (const ArchiveValue& name : *elements) names.push_back(answers::text(name).value_or(QString()));
    return names;
  }
  [[nodiscard]] std::optional<std::vector<Row>> getServicesArray() { return rows(call(u"getServicesArray")); }
  [[nodiscard]] std::optional<std::vector<Row>> getCustomersArray() {
    return rows(call(u"getCustomersArray"));
  }
  [[nodiscard]] std::optional<std::vector<Row>> getJobsArray() { return rows(call(u"getJobsArray")); }
  /// Whether Vantor accepts this version of Pendra.
  [[nodiscard]] bool canTalkToPendra() { return !call(u"canTalkToPendra").isNil(); }
  /// Vantor's answer for one time record; nil when it has none.
  ArchiveValue submitTime(const QString& record) { return call(u"submitTime:", {record}); }

 private:
  ArchiveValue call(QStringView selector, const QList<ArchiveValue>& arguments = {}) {
    return channel_.forwardInvocation(selector, arguments);
  }

  static std::optional<std::vector<Row>> rows(const ArchiveValue& answer) {
    const auto records = answers::array(answer);
    if (!records) return {};
    std::vector<Row> rows;
    rows.reserve(static_cast<std::size_t>(records->size()));
    for (const ArchiveValue& value : *records) {
      const auto& fields = answers::record(value).fields;
      rows.push_back(Row{answers::text(fields[0]), answers::text(fields[1]), answers::text(fields[2])});
    }
    return rows;
  }

  IPCMgr& channel_;
};

}  // namespace pendra
