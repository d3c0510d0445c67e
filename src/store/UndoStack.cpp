#include "store/UndoStack.h"

#include <unordered_set>

#include "Editing.h"
#include "StepBack.h"
#include "store/ObjectContext.h"

namespace pendra {

std::vector<Skipped> UndoStack::undo() { return apply(done_, undone_); }
std::vector<Skipped> UndoStack::redo() { return apply(undone_, done_); }

std::vector<Skipped> UndoStack::apply(std::deque<EditRecord>& from, std::deque<EditRecord>& to) {
  if (from.empty()) return {};
  EditRecord step = std::move(from.back());
  from.pop_back();
  StepBack back(context_, step);
  EditRecord inverse = context_.editing_->runBack(step.name, [&] { back.run(); });
  inverse.isIndivisible = step.isIndivisible;
  if (!inverse.isEmpty()) to.push_back(std::move(inverse));
  std::deque<EditRecord> rest;
  rest.push_back(std::move(step));  // with what stays out for good
  drop(std::move(rest));
  observers_.tell(News::Changed);
  return back.skipped();
}

void UndoStack::push(EditRecord record) {
  drop(std::exchange(undone_, {}));
  done_.push_back(std::move(record));
  if (done_.size() > kMostSteps) {
    std::deque<EditRecord> oldest;
    oldest.push_back(std::move(done_.front()));
    done_.pop_front();
    drop(std::move(oldest));
  }
  observers_.tell(News::Added);
}

void UndoStack::clear() {
  drop(std::exchange(undone_, {}));
  drop(std::exchange(done_, {}));
  observers_.tell(News::Changed);
}

void UndoStack::drop(std::deque<EditRecord> steps) {
  std::vector<OwnedObject> gone;
  for (EditRecord& step : steps)
    std::move(step.deleted.begin(), step.deleted.end(), std::back_inserter(gone));
  steps.clear();
  context_.destroy(std::move(gone));
}

void UndoStack::forget(const std::vector<OwnedObject>& gone) {
  std::unordered_set<const ManagedObject*> objects;
  for (const auto& object : gone) objects.insert(object.get());
  std::size_t stepsGone = 0;
  for (auto* steps : {&done_, &undone_}) {
    for (EditRecord& step : *steps) {
      std::erase_if(step.changes, [&](const auto& change) { return objects.contains(change.object); });
      std::erase_if(step.inserted, [&](const ManagedObject* object) { return objects.contains(object); });
    }
    stepsGone += std::erase_if(*steps, [](const EditRecord& step) { return step.isEmpty(); });
  }
  if (stepsGone > 0) observers_.tell(News::Changed);
}

}  // namespace pendra
