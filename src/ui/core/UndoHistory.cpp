#include "ui_core/UndoHistory.h"

#include "StepTexts.h"
#include "document/DocumentClosing.h"
#include "model/Activity.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

const QString kOfferKey = QStringLiteral("undo");
const QString kLeftAloneKey = QStringLiteral("undo left alone");

/// Whether it is this name that an activity did not get back, and has none instead.
bool isWithout(const Skipped& skipped, const char* name, const void* named) {
  return QLatin1StringView(skipped.property->name) == QLatin1StringView(name) && !named;
}

/// An activity comes back without a name that a list update has taken meanwhile, and is marked as if it had
/// been there then.
void markLosses(ObjectContext& context, const std::vector<Skipped>& skipped) {
  std::ignore = context.edit(QString(), {.undoable = false}, [&] {
    for (const Skipped& one : skipped) {
      if (one.entity != &Activity::descriptor() || !one.property || !one.object) continue;
      auto& activity = static_cast<Activity&>(*one.object);
      activity.addLoss({.customer = isWithout(one, "customer", activity.customer()),
                        .job = isWithout(one, "job", activity.job()),
                        .service = isWithout(one, "service", activity.service())});
    }
  });
}

}  // namespace

UndoHistory::UndoHistory(Session& session, std::chrono::milliseconds patience) : session_(session) {
  patience_.setSingleShot(true);
  patience_.setInterval(patience);
  QObject::connect(&patience_, &QTimer::timeout, &patience_,
                   [this] { session_.notices().withdraw(kOfferKey); });
  documents_ = session.documentChanges().observe([this] { follow(); });
  follow();
}

UndoStack* UndoHistory::stack() const {
  const OpenDocument* document = session_.document();
  return document ? &document->context()->undoStack() : nullptr;
}

void UndoHistory::follow() {
  edits_ = {};
  steps_ = {};
  if (UndoStack* const steps = stack()) {
    edits_ = session_.context()->observe([this](const ChangeSet& changes) {
      sentence_ = whatWasDone(changes);
      takenAway_ = timeTakenAway(changes, session_.ports().clock.now());
      runsOn_ = whatRunsOn(changes, session_.ports().clock.now());
    });
    steps_ = steps->observe([this](UndoStack::News news) { stepsChanged(news); });
  }
  changes_.changed();
}

void UndoHistory::stepsChanged(UndoStack::News news) {
  patience_.stop();
  session_.notices().withdraw(kOfferKey);
  const QString sentence = std::exchange(sentence_, {});
  if (news == UndoStack::News::Added) {
    session_.notices().withdraw(kLeftAloneKey);
    if (!sentence.isEmpty()) offerUndo(sentence);
  }
  changes_.changed();
}

void UndoHistory::offerUndo(const QString& sentence) {
  offer(sentence, {tr("Undo"), [this] { undo(); }});
}

void UndoHistory::offer(const QString& sentence, NoticeAction action) {
  session_.notices().post(
      {.key = kOfferKey, .text = sentence, .actions = {std::move(action)}, .ofDocument = true});
  patience_.start();
}

bool UndoHistory::canUndo() const { return stack() && stack()->canUndo(); }
bool UndoHistory::canRedo() const { return stack() && stack()->canRedo(); }
QString UndoHistory::undoName() const { return stack() ? stack()->undoName() : QString(); }
QString UndoHistory::redoName() const { return stack() ? stack()->redoName() : QString(); }

void UndoHistory::undo() {
  if (!canUndo()) return;
  const QString title = formatted(tr("Undo %@"), {undoName()});
  takenAway_.clear();
  runsOn_.clear();
  go(&UndoStack::undo, title);
  QStringList said;
  if (!takenAway_.isEmpty()) said << formatted(tr("“%@” took %@ away."), {title, takenAway_});
  if (!runsOn_.isEmpty()) said << runsOn_;
  if (!said.isEmpty()) offer(said.join(u' '), {tr("Redo"), [this] { redo(); }});
}

void UndoHistory::redo() {
  if (canRedo()) go(&UndoStack::redo, formatted(tr("Redo %@"), {redoName()}));
}

void UndoHistory::go(Way way, const QString& title) {
  if (session_.ports().modals.isModal() || !finishEditing(session_)) return;
  const auto skipped = (stack()->*way)();
  markLosses(*session_.context(), skipped);
  const QStringList leftAlone = whatWasLeftAlone(skipped);
  if (leftAlone.isEmpty()) return session_.notices().withdraw(kLeftAloneKey);
  session_.notices().post({.key = kLeftAloneKey,
                           .text = formatted(tr("“%@” left alone what has been sent or changed since: %@."),
                                             {title, leftAlone.join(QStringLiteral(", "))}),
                           .actions = {},
                           .ofDocument = true});
}

}  // namespace pendra
