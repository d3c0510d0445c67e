#pragma once

#include "model/Queries.h"
#include "platform/Translation.h"
#include "ui_core/ChangedObjects.h"
#include "ui_core/ListController.h"
#include "ui_core/ListSteps.h"

namespace pendra::lists {

inline const QString kCheckbox = QStringLiteral("checkbox");

/// A column of names; where there is a name, it can be typed over in a standalone document.
template <class Row>
Column<Row> nameColumn(const Session& session, const QString& identifier, const QString& title,
                       QString (*textOf)(const Row&)) {
  return {.head = {.identifier = identifier, .title = title, .sortable = false, .weight = 3},
          .text = textOf,
          .editable = [&session, textOf](const Row& row) {
            return session.isStandalone() && !textOf(row).isEmpty();
          }};
}

/// The column of check boxes.
template <class Row>
Column<Row> shownColumn(bool (*isShown)(const Row&)) {
  return {.head = {.identifier = kCheckbox,
                   .title = tr("Shown"),
                   .alignment = Alignment::Center,
                   .kind = CellKind::Check,
                   .sortable = false},
          .checked = isShown};
}

/// What a list writes into everything that the user adds.
template <class Named>
Named& insertLocal(ObjectContext& context, const QString& name) {
  auto& made = context.insert<Named>();
  makeLocal(made, name).setShown(true);
  return made;
}

/// Names what a row shows. Customers and jobs are numbered apart; the last bit tells them apart. 0: none.
inline quint64 identityOf(const ManagedObject* named) {
  if (!named) return 0;
  return static_cast<quint64>(named->objectID()) * 2 + (&named->entity() == &Job::descriptor() ? 1 : 0);
}

/// Sorts by name, by code unit; of equal names the one that was inserted first comes first.
template <class Named>
void sortByName(std::vector<Named*>& objects) {
  std::stable_sort(objects.begin(), objects.end(), [](const Named* a, const Named* b) {
    return queries::compareNames(a->name(), b->name()) < 0;
  });
}

/// Moves what was added to the front, the newest first.
template <class Named, class WasAdded>
void putAddedFirst(std::vector<Named*>& objects, const WasAdded& wasAdded) {
  const auto end =
      std::stable_partition(objects.begin(), objects.end(), [&](const Named* one) { return wasAdded(*one); });
  std::sort(objects.begin(), end,
            [](const Named* a, const Named* b) { return a->objectID() > b->objectID(); });
}

}  // namespace pendra::lists
