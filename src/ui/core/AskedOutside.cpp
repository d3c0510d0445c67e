#include "ui_core/AskedOutside.h"

#include <QCoreApplication>

#include "ui_core/RunCommand.h"

namespace pendra {

namespace {

DesktopNote noteOf(const Notice& notice) {
  DesktopNote note{.key = notice.key, .title = QStringLiteral("Pendra"), .text = notice.text, .actions = {}};
  for (const NoticeAction& action : notice.actions) note.actions << action.title;
  return note;
}

const Notice* standingIn(const Notices& notices, const QString& key) {
  const auto& standing = notices.standing();
  const auto found =
      std::find_if(standing.begin(), standing.end(), [&](const Notice& one) { return one.key == key; });
  return found == standing.end() ? nullptr : &*found;
}

}  // namespace

AskedOutside::AskedOutside(Session& session, DesktopNotes& notes, World world,
                           std::chrono::milliseconds patience)
    : session_(session), notes_(notes), world_(std::move(world)) {
  looks_.setSingleShot(true);
  looks_.setInterval(patience);
  QObject::connect(&looks_, &QTimer::timeout, &looks_, [this] { look(); });
  changes_ = session_.notices().changes().observe([this] {
    withdrawAnswered();
    looks_.start();
  });
  notes_.pressed = [this](const QString& key, int action) { press(key, action); };
}

AskedOutside::~AskedOutside() {
  notes_.pressed = [](const QString&, int) {};
  for (const DesktopNote& note : told_) notes_.withdraw(note.key);
}

void AskedOutside::look() {
  for (const Notice& notice : session_.notices().standing()) {
    if (!notice.asks) continue;
    const DesktopNote note = noteOf(notice);
    if (std::find(told_.begin(), told_.end(), note) != told_.end()) continue;
    std::erase_if(told_, [&](const DesktopNote& one) { return one.key == note.key; });
    told_.push_back(note);
    if (!world_.isSeen()) notes_.show(note);
  }
}

void AskedOutside::withdrawAnswered() {
  std::erase_if(told_, [this](const DesktopNote& note) {
    if (standingIn(session_.notices(), note.key)) return false;
    notes_.withdraw(note.key);
    return true;
  });
}

void AskedOutside::seen() {
  for (const DesktopNote& note : told_) notes_.withdraw(note.key);
}

void AskedOutside::press(const QString& key, int action) {
  const Notice* notice = standingIn(session_.notices(), key);
  if (!notice) return;
  if (action < 0 || action >= static_cast<int>(notice->actions.size())) return world_.open();
  const QString title = notice->actions[static_cast<std::size_t>(action)].title;
  if (title.endsWith(u'…')) world_.open();  // it goes on in a window
  runFromOutside(session_, world_.busyWith(), title,
                 [&] { session_.notices().press(key, static_cast<std::size_t>(action)); });
}

}  // namespace pendra
