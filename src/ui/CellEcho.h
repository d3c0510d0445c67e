#pragma once

#include <QPointer>
#include <QWidget>
#include <vector>

#include "ui_core/EntryEchoes.h"

namespace pendra {

/// The plate under a cell that is being typed over, or above it where there is no room. It lies over the
/// window, takes no keys and no clicks, and is read as the description of the cell's field.
class CellEcho final {
 public:
  /// The field must outlive it.
  explicit CellEcho(QWidget& field) : field_(field) {}
  ~CellEcho();
  CellEcho(const CellEcho&) = delete;
  CellEcho& operator=(const CellEcho&) = delete;

  void show(const std::vector<Echo>& echoes);
  /// Where the field is now; hidden while its cell is scrolled out of the table.
  void place();
  /// Keeps out of sight as long as something else stands under the cell.
  void giveWay(bool gives);

 private:
  class Plate;

  QWidget& field_;
  QPointer<Plate> plate_;
  bool givesWay_ = false;
};

}  // namespace pendra
