#include <gtest/gtest.h>

#include <QApplication>
#include <memory>

#include "ui/Accessibility.h"
#include "ui/Theme.h"

namespace {

/// The one application of all tests of this folder, in the light look.
class Application final : public testing::Environment {
 public:
  void SetUp() override {
    application_ = std::make_unique<QApplication>(argc_, argv_);
    pendra::Theme::install(*application_);
    pendra::installComboBoxAccessibility();
    pendra::Theme::force(pendra::Appearance::Light);
  }
  void TearDown() override { application_.reset(); }

 private:
  char name_[5] = "test";
  char* argv_[2] = {name_, nullptr};
  int argc_ = 1;
  std::unique_ptr<QApplication> application_;
};

[[maybe_unused]] const auto* const kApplication = testing::AddGlobalTestEnvironment(new Application);

}  // namespace
