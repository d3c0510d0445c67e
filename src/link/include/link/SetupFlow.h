#pragma once
// Setup makes a document and decides for good whether it is linked or standalone. Which of the two is
// wanted is read twice while saving, because the window is the only place where it stands until then.

#include "link/ListSync.h"

namespace pendra {

/// What the setup window shows. Everything is told again after each step.
struct SetupDisplay {
  bool noneText = false;        ///< `NoneText`: Vantor is not running
  bool noFileOpen = false;      ///< `myNoFileOpenText` is shown in place of the path control
  QString noFileOpenText;       ///< what it says; empty for its own text
  bool canLookAgain = false;    ///< Vantor can be looked for once more
  QString companyFile;          ///< the path in `myCompanyFile`; empty when there is none to show
  QStringList employeeNames;    ///< the titles of `myNamePopup`
  bool linkedControls = true;   ///< the pop-up can be used
  bool ok = true;               ///< `okButton` can be pressed
  bool settingsVisible = true;  ///< `vtSettingsView`
  bool loading = false;         ///< `statusSpinner` and `statusText`
};

/// The window, as the flow needs it.
class SetupView {
 public:
  virtual ~SetupView() = default;
  virtual void showDisplay(const SetupDisplay& display) = 0;
  /// The row chosen in `standaloneRadioi`: 0 is linked.
  [[nodiscard]] virtual int selectedRow() const = 0;
  /// The title chosen in `myNamePopup`; empty when there is none.
  [[nodiscard]] virtual QString selectedName() const = 0;
  /// Setup is over: the window closes.
  virtual void finish() = 0;
};

/// The logic of the setup window. Owned by the window.
class SetupFlow {
 public:
  /// All must outlive it.
  SetupFlow(Session& session, ConnectionChecks& checks, ListSync& lists, SetupView& view)
      : session_(session), checks_(checks), lists_(lists), view_(view) {}

  /// What is shown until Vantor has been looked for.
  void showLooking();
  /// Prepares the window over a fresh connection. Throws what the channel throws; what is shown then still
  /// lets the user work standalone.
  void start();
  /// The radio group was clicked.
  void modePicked();
  /// Shows the file or folder of a piece of the company's path in the file viewer.
  void revealPiece(const QString& path) { session_.ports().workspace.reveal(path); }
  /// Asks for the place of the document, makes it, and ends the setup. Throws what the channel throws while
  /// there is no document yet. The document is read in between, which takes the window out of the session.
  void save();
  void cancel() { view_.finish(); }

  /// The mode currently chosen.
  [[nodiscard]] bool standalone() const { return standalone_; }

 private:
  void askVantor();
  void showCompany();
  void allowOk();
  [[nodiscard]] std::optional<QString> chooseFile();
  [[nodiscard]] QString proposedName() const;
  [[nodiscard]] bool makeDocument(const QString& path, bool standalone);
  void beginLinked();
  void show() { view_.showDisplay(display_); }

  Session& session_;
  ConnectionChecks& checks_;
  ListSync& lists_;
  SetupView& view_;
  SetupDisplay display_;
  std::optional<QString> company_;
  bool standalone_ = false;
};

/// What a company's document is called: the last piece of its name without its last extension, "-", the
/// employee, ".pdr"; percent-decoded as a whole. A text that cannot be decoded stays as it is.
[[nodiscard]] QString documentNameFor(const QString& company, const QString& employee);
/// The text with its percent escapes read as UTF-8; none when they are malformed.
[[nodiscard]] std::optional<QString> percentDecoded(const QString& text);

}  // namespace pendra
