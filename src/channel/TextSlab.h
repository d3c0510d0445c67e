#pragma once

#include <QString>
#include <algorithm>

namespace pendra {

/// Makes texts of which many have their characters in one block, because a list of customers is nothing but
/// short texts and a block for each would be most of what reading it costs. Each text holds its block as any
/// implicitly shared copy would: it may outlive the slab, and whoever changes it gets a copy of its own.
class TextSlab {
 public:
  /// A text of so many characters, which `fill(char16_t*)` has to write.
  template <class Fill>
  QString text(qsizetype length, const Fill& fill) {
    if (length > kLongest || length == 0) {
      QString text(length, Qt::Uninitialized);
      fill(reinterpret_cast<char16_t*>(text.data()));
      return text;
    }
    if (left_ <= length) begin();
    char16_t* const at = next_;
    fill(at);
    at[length] = u'\0';
    next_ += length + 1;
    left_ -= length + 1;
    auto* const block = block_.data_ptr().d_ptr();
    block->ref();
    return QString(QString::DataPointer(block, at, length));
  }

 private:
  // A text that is kept keeps its block alive, so blocks are small. What stays free at the end of one is less
  // than the overhead that a text of its own would have.
  static constexpr qsizetype kFirstBlock = 100;
  static constexpr qsizetype kGreatestBlock = 2000;
  static constexpr qsizetype kLongest = 64;

  void begin() {
    left_ = block_.isEmpty() ? kFirstBlock : std::min(2 * block_.size(), kGreatestBlock);
    block_ = QString(left_, Qt::Uninitialized);
    next_ = reinterpret_cast<char16_t*>(block_.data());
  }

  QString block_;
  char16_t* next_ = nullptr;
  qsizetype left_ = 0;
};

}  // namespace pendra
