#pragma once
// Two answers are kept: whether the user wants usage statistics, which holds unless it is taken back, and
// whether the user was told that there are any. Nothing is sent before both are there.

#include "platform/UserDefaults.h"

namespace pendra {

/// What the user knows and wants of usage statistics, as the preferences keep it.
class Consent {
 public:
  /// `defaults` outlives it.
  explicit Consent(UserDefaults& defaults) : defaults_(defaults) {}

  /// At each start of the program: who was told at an earlier one has had the time to say no.
  void programStarted();

  /// Whether the user is still to be told.
  [[nodiscard]] bool isNoticeDue() const;
  void noticeShown();
  void noticeAnswered();

  /// The user has said no.
  [[nodiscard]] bool isRefused() const;
  /// The user was told and has had the time to say no, or has said yes.
  [[nodiscard]] bool isGiven() const;
  /// Announces whatever may have changed `isGiven` without the preference being touched.
  [[nodiscard]] Notifier& noticeChanges();

 private:
  UserDefaults& defaults_;
};

}  // namespace pendra
