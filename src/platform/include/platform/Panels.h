#pragma once

#include <QString>
#include <functional>
#include <optional>

namespace pendra {

/// What a save panel shows at first.
struct SavePanel {
  QString title;         ///< empty: the panel's own
  QString proposedName;  ///< the exact text, slashes included; a panel shows them as it can
  QString folder;        ///< empty: the panel's own
  QString requiredType;  ///< an extension without its dot that the chosen path always gets; empty: any
  QString unasked = {};  ///< a file that may be replaced without a question; empty: none
  bool replaces = true;  ///< whether a file at the path would be replaced, which the panel then asks about
};

/// Asks for files. A panel that is cancelled answers none.
class Panels {
 public:
  virtual ~Panels() = default;
  /// Application-modal; the path that the user chose.
  virtual std::optional<QString> runSavePanel(const SavePanel& panel) = 0;
  /// Application-modal; one existing file of any type.
  virtual std::optional<QString> runOpenPanel() = 0;
  /// Application-modal; one existing folder.
  virtual std::optional<QString> runFolderPanel() = 0;
  /// The save panel as a sheet of the window at the front; `ended` gets the path or none.
  virtual void beginSavePanel(const SavePanel& panel, std::function<void(std::optional<QString>)> ended) = 0;
};

}  // namespace pendra
