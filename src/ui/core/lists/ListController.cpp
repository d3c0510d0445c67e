#include "ui_core/ListController.h"

#include "ListColumns.h"
#include "link/AffectedActivities.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

ListController::ListController(Session& session, ListView& view) : session_(session), view_(view) {}

void ListController::start() {
  followDocument();
  view_.standaloneChanged();
  documentChanges_ = session_.documentChanges().observe([this] { followDocument(); });
  standaloneChanges_ = session_.standaloneChanges().observe([this] { view_.standaloneChanged(); });
}

void ListController::followDocument() {
  news_ = {};
  added_.clear();
  if (context()) {
    news_ = context()->observe([this](const ChangeSet& changes) { documentEdited(changes); });
  }
  rebuild();
}

void ListController::setSearchString(const QString& text) {
  searchString_ = text;
  added_.clear();
  rebuild();
}

bool ListController::rename(int row, const QString& name) { return name.isEmpty() || takeName(row, name); }

void ListController::setShown(int row, bool shown) {
  if (!context() || row < 0 || row >= table().rowCount()) return;
  edit(formatted(shown ? tr("Show %@") : tr("Hide %@"), {nameInRow(row)}), [&] { markShown(row, shown); });
}

void ListController::markAllShown() { markAll(tr("Mark All Shown"), true); }

void ListController::markNoneShown() { markAll(tr("Mark None Shown"), false); }

void ListController::markAll(const QString& name, bool shown) {
  if (!context()) return;
  edit(name, [&] {
    for (int row = 0; row < table().rowCount(); ++row) markShown(row, shown);
  });
}

ObjectContext* ListController::context() const { return session_.context().get(); }

void ListController::edit(const QString& name, const std::function<void()>& work) const {
  std::ignore = context()->edit(name, work);  // such work cannot fail
}

bool ListController::confirmDelete(const QString& name, const QString& whatGoes) const {
  return session_.ports().alerts.runAlert({.style = Alert::Style::Critical,
                                           .message = formatted(tr("Delete %@?"), {name}),
                                           .informative = whatGoes,
                                           .buttons = {tr("Delete"), tr("Cancel")},
                                           .topic = Alert::Topic::Deleting}) == kFirstButton;
}

void ListController::deleteNamed(ManagedObject& named, const QString& name) const {
  edit(formatted(tr("Delete of %@"), {name}), [&] {
    const NamesBefore before(*context());
    context()->deleteObject(named);
    std::ignore = before.noteLosses();  // the question has said it
  });
}

void ListController::add(const QString& name, const std::function<ManagedObject*()>& make) {
  const ManagedObject* made = nullptr;
  edit(name, [&] {
    added_.emplace_back(make());
    made = added_.back().get();
  });
  selection().selectRow(table().rowWith(lists::identityOf(made)).value_or(-1));
}

bool ListController::wasAdded(const ManagedObject& object) const {
  return std::any_of(added_.begin(), added_.end(), [&](const auto& added) { return added == &object; });
}

void ListController::settleAdded() {
  if (added_.empty()) return;
  added_.clear();
  rebuild();
}

}  // namespace pendra
