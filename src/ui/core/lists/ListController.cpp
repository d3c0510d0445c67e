#include "ui_core/ListController.h"

#include "platform/Text.h"

namespace pendra {

ListController::ListController(Session& session, TablePort& table, ListView& view)
    : session_(session), table_(table), view_(view) {}

void ListController::start() {
  documentChanged();
  view_.standaloneChanged();
  contextChanges_ = session_.documentChanges().observe([this] { documentChanged(); });
  standaloneChanges_ = session_.standaloneChanges().observe([this] { view_.standaloneChanged(); });
}

void ListController::setSearchString(const QString& text) {
  searchString_ = text;
  if (context()) reloadData();
}

bool ListController::confirmDelete(const QString& name) {
  return session_.ports().alerts.runAlert(
             {.style = Alert::Style::Warning,
              .message = formatted(u"Delete %@?", {name}),
              .informative = {},
              .buttons = {QStringLiteral("Delete"), QStringLiteral("Cancel")}}) == kFirstButton;
}

std::optional<int> ListController::selectedRow() const {
  const int row = table_.selectedRow();
  return row >= 0 && row < source().rowCount() ? std::optional(row) : std::nullopt;
}

}  // namespace pendra
