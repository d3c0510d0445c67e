#include "Commands.h"

#include "CommandDeeds.h"
#include "CommandTable.h"
#include "document/DocumentLoading.h"
#include "platform/GlobalKey.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "ui/FieldUndo.h"
#include "ui/TimerWindowController.h"
#include "ui_core/RunCommand.h"

namespace pendra {

namespace {

const QString kWhyNotKey = QStringLiteral("why not");

/// "Undo Start"; plain when there is no step.
QString titleOfStep(UndoWay way, const QString& step) {
  const bool undoes = way == UndoWay::Undo;
  const QString what = canUndoInField(way) ? tr("Typing") : step;
  if (what.isEmpty()) return undoes ? tr("Undo") : tr("Redo");
  return formatted(undoes ? tr("Undo %@") : tr("Redo %@"), {what});
}

/// The one place that decides it: what no menu shows cannot be done in another way either.
bool mayRun(const CommandRow& row, const CommandContext& at) {
  if (row.isShown && !row.isShown(at)) return false;
  return row.whyNot ? row.whyNot(at).isEmpty() : row.mayRun(at);
}

}  // namespace

Commands::Commands(Session& session, WindowRegistry& windows, LinkServices& link, UndoHistory& history,
                   std::function<void()> terminate, GlobalKey* key)
    : terminate_(std::move(terminate)),
      context_{session, windows, link, history, terminate_, key},
      documents_(session) {
  for (Notifier* news : {&session.documentChanges(), &session.standaloneChanges(), &history.changes(),
                         key ? &key->changes() : nullptr}) {
    if (news) observations_.push_back(news->observe([this] { menuChanges_.changed(); }));
  }
}

std::span<const Menu> Commands::menus() const { return allMenus(); }

QString Commands::titleOf(const CommandRow& row) const {
  if (row.command == Command::Undo) return titleOfStep(UndoWay::Undo, context_.history.undoName());
  if (row.command == Command::Redo) return titleOfStep(UndoWay::Redo, context_.history.redoName());
  return tr(row.title);
}

std::optional<bool> Commands::isOn(const CommandRow& row) const {
  if (row.command != Command::Favourite) return std::nullopt;
  const Activity* activity = context_.timer() ? context_.timer()->state().currentActivity() : nullptr;
  return activity && activity->favourite() == true;
}

bool Commands::isOffered(const CommandRow& row) const {
  return mayRun(row, context_) && (!row.isOffered || row.isOffered(context_));
}

void Commands::perform(Command command, QWidget* sender) {
  const CommandRow& row = rowOf(command);
  CommandContext at = context_;
  at.sender = sender;
  context_.session.notices().withdraw(kWhyNotKey);
  if (row.storesTyping && at.timer() && !at.timer()->finishEditing()) return;
  if (!mayRun(row, at)) return sayWhyNot(row);
  runCommand(context_.session, tr(row.title).remove(u'…'), [&] { row.run(at); });
}

void Commands::sayWhyNot(const CommandRow& row) {
  const QString why = whyNot(row);
  if (why.isEmpty()) return;
  context_.session.notices().post(
      {.key = kWhyNotKey, .text = why, .actions = {}, .ofDocument = true, .onlyInTimerWindow = true});
}

void Commands::openRecent(const QString& path) {
  runCommand(context_.session, path, [&] { std::ignore = documents_.open(path); });
  ensureAWindow(context_.session);
}

}  // namespace pendra
