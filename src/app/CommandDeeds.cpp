#include "CommandDeeds.h"

#include <QApplication>
#include <QMetaObject>

#include "document/DocumentClosing.h"
#include "document/DocumentLoading.h"
#include "platform/GlobalKey.h"
#include "platform/Preferences.h"
#include "platform/Resources.h"
#include "platform/Translation.h"
#include "ui/EarlierSheet.h"
#include "ui/HelpPlace.h"
#include "ui/LogPaneView.h"
#include "ui/SearchField.h"
#include "ui/TimerWindowController.h"
#include "ui_core/PanelState.h"
#include "ui_core/ShellCommands.h"

namespace pendra {

namespace deeds {

namespace {

bool isAsked(const CommandContext& at) {
  return QApplication::activeModalWidget() || at.session.ports().modals.isModal();
}

/// Who only asks whether something can be done is in front.
const QWidget* windowOf(const CommandContext& at) {
  return at.sender ? at.sender->window() : QApplication::activeWindow();
}

}  // namespace

void quit(const CommandContext& at) {
  if (finishEditing(at.session)) at.terminate();
}

void closeWindow(const CommandContext& at) {
  if (at.sender) at.sender->window()->close();
}

void quickEntry(const CommandContext& at) {
  if (isAsked(at)) return;
  showTimerWindow(at.session);
  if (TimerWindowController* timer = at.timer()) timer->quickEntry();
}

void help(const CommandContext& at) {
  const QWidget* focus = QApplication::focusWidget();
  const bool isInside = at.sender && focus && at.sender->isAncestorOf(focus);
  showHelp(helpAnchorOf(isInside ? focus : at.sender), at.session.ports().workspace, resourceFolder());
}

bool offersKeys(const CommandContext& at) { return at.key && at.key->isOffered(); }

void chooseKey(const CommandContext& at) {
  at.session.ports().defaults.setBoolean(preferences::kGlobalKey, true);
  at.key->choose(whatTheKeyDoes());
}

void sendAllTime(const CommandContext& at) {
  if (TimerWindowController* timer = at.timer()) at.link.sendAllTime(*timer);
}

void sendSelectedTime(const CommandContext& at) {
  if (TimerWindowController* timer = at.timer()) at.link.sendSelectedTime(*timer);
}

void invokeInFocus(const char* slot) {
  if (QWidget* focus = QApplication::focusWidget()) QMetaObject::invokeMethod(focus, slot);
}

bool canFind(const CommandContext& at) {
  const QWidget* window = windowOf(at);
  return window && searchFieldIn(*window);
}

void find(const CommandContext& at) {
  const QWidget* window = windowOf(at);
  TimerWindowController* timer = at.timer();
  if (timer && window == timer->log().window()) return timer->find();
  beginSearch(*searchFieldIn(*window));
}

bool canDelete(const CommandContext& at) {
  TimerWindowController* timer = at.timer();
  bool answer = !timer || timer->state().log().selectedCount() > 0 || timer->state().selectedActivity();
  if (const ListEditor* customers = at.customers()) answer = customers->canDelete();
  if (const ListEditor* services = at.services()) answer = services->canDelete();
  return answer;
}

void deleteSelected(const CommandContext& at) {
  // Kept: promised to those who keep the lists: an open list takes the command, also from behind, and asks.
  if (ListEditor* customers = at.customers()) return customers->deleteRow();
  if (ListEditor* services = at.services()) return services->deleteRow();
  if (TimerWindowController* timer = at.timer()) timer->deleteActivity();
}

template <EarlierDeed Deed>
void askEarlier(const CommandContext& at) {
  if (TimerWindowController* timer = at.timer()) {
    askWhenEarlier(at.session, timer->state().currentActivity(), Deed, timer->log().window());
  }
}

/// Also while something is asked, because a step that is made then is news of the menus only once.
template <UndoWay Way>
bool canStep(const CommandContext& at) {
  return canUndoInField(Way) || (Way == UndoWay::Undo ? at.history.canUndo() : at.history.canRedo());
}

template <UndoWay Way>
void step(const CommandContext& at) {
  if (canUndoInField(Way)) return undoInField(Way);
  if (isAsked(at)) return;
  Way == UndoWay::Undo ? at.history.undo() : at.history.redo();
}

template <Correction What>
QString whyNot(const CommandContext& at) {
  if (TimerWindowController* timer = at.timer()) return pendra::whyNot(What, timer->state().log());
  return tr("No document is open.");
}

template <QString (&Correct)(LogController&)>
void andOfferUndo(const CommandContext& at) {
  const QString sentence = Correct(at.timer()->state().log());
  if (!sentence.isEmpty()) at.history.offerUndo(sentence);
}

void startAgain(const CommandContext& at) { startSelectedAgain(at.timer()->state().log()); }

template QString whyNot<Correction::Split>(const CommandContext&);
template QString whyNot<Correction::Duplicate>(const CommandContext&);
template QString whyNot<Correction::Merge>(const CommandContext&);
template QString whyNot<Correction::StartAgain>(const CommandContext&);
template void andOfferUndo<duplicateSelected>(const CommandContext&);
template void andOfferUndo<mergeSelected>(const CommandContext&);

template void askEarlier<EarlierDeed::Start>(const CommandContext&);
template void askEarlier<EarlierDeed::Stop>(const CommandContext&);
template bool canStep<UndoWay::Undo>(const CommandContext&);
template bool canStep<UndoWay::Redo>(const CommandContext&);
template void step<UndoWay::Undo>(const CommandContext&);
template void step<UndoWay::Redo>(const CommandContext&);

}  // namespace deeds

}  // namespace pendra
