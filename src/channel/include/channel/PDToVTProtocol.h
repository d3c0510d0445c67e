#pragma once
// What Pendra can ask of Vantor: the interface as both sides need it, and seven typed functions for the side
// that asks. The class of the rows is not known here; it only needs the members that the wire carries.

#include <QStringList>
#include <concepts>
#include <optional>
#include <vector>

#include "channel/IPCMgr.h"

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
/// False when the answer of the reply is nil.
bool takeRecords(const KeyedUnarchiver& reply, RecordTaker& taker);
}  // namespace answers

/// Makes rows of the records of a list.
template <NamedRow Row>
class RowTaker final : public RecordTaker {
 public:
  void expect(qsizetype count) override { rows.reserve(static_cast<std::size_t>(count)); }
  void take(std::span<std::optional<QString>> fields) override {
    rows.push_back(Row{std::move(fields[0]), std::move(fields[1]), std::move(fields[2])});
  }

  std::vector<Row> rows;
};

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
  [[nodiscard]] std::optional<std::vector<Row>> getServicesArray() { return rows(u"getServicesArray"); }
  [[nodiscard]] std::optional<std::vector<Row>> getCustomersArray() { return rows(u"getCustomersArray"); }
  [[nodiscard]] std::optional<std::vector<Row>> getJobsArray() { return rows(u"getJobsArray"); }
  /// Whether Vantor accepts this version of Pendra.
  [[nodiscard]] bool canTalkToPendra() { return !call(u"canTalkToPendra").isNil(); }
  /// Vantor's answer for one time record; nil when it has none.
  ArchiveValue submitTime(const QString& record) { return call(u"submitTime:", {record}); }

 private:
  ArchiveValue call(QStringView selector, const QList<ArchiveValue>& arguments = {}) {
    return channel_.forwardInvocation(selector, arguments);
  }

  std::optional<std::vector<Row>> rows(QStringView selector) {
    RowTaker<Row> taker;
    if (!answers::takeRecords(*channel_.replyToInvocation(selector, {}), taker)) return {};
    return std::move(taker.rows);
  }

  IPCMgr& channel_;
};

}  // namespace pendra
