#include "ui_core/HelpAnchors.h"

namespace pendra::help {

QString anchorOf(Alert::Topic topic) {
  switch (topic) {
    case Alert::Topic::VantorNotFound:
      return kVantorNotFound;
    case Alert::Topic::FirstSending:
      return kFirstSending;
    case Alert::Topic::HeldBack:
      return kHeldBack;
    case Alert::Topic::UnknownFate:
      return kUnknownFate;
    case Alert::Topic::Backups:
      return kBackups;
    case Alert::Topic::Deleting:
      return kDeleting;
    case Alert::Topic::None:
      break;
  }
  return {};
}

QString anchorOfItem(int tag, const QString& title) {
  if (tag != 0) return QString::number(tag);
  return QString(title).remove(u'…').toLower().replace(u' ', u'-');
}

}  // namespace pendra::help
