#include "EntrySplit.h"
#include "platform/Translation.h"

#include <algorithm>

namespace pendra {

namespace {

/// What a name may be followed by.
enum Sign : unsigned { Comma = 1, Colon = 2, Dash = 4 };

const NameList& noNames() {
  static const NameList none;
  return none;
}

class Splitting {
 public:
  Splitting(const QString& text, const NameIndex& index, const DayReader& days)
      : text_(text), index_(index), days_(days) {}

  EntrySplit split() {
    readNames();
    if (takeDash()) split_.notes = readName(noNames(), 0);
    split_.timesAt = at_;
    split_.times = readTimes(QStringView(text_).sliced(at_), days_);
    if (split_.times.fault) split_.times.fault->at += at_;
    if (!split_.fault) split_.fault = split_.times.fault;
    return std::move(split_);
  }

 private:
  void readNames() {
    split_.customer = readName(index_.customers(), Comma | Colon | Dash);
    if (take(u',')) {
      const QStringList called = index_.customers().called(split_.customer.text);
      const NameList& jobs = called.size() == 1 ? index_.jobs(called.front()) : noNames();
      split_.job = readName(jobs, Colon | Dash);
    }
    if (take(u':')) split_.service = readName(index_.services(), Dash);
  }

  void skipBlanks() {
    while (at_ < text_.size() && text_[at_].isSpace()) ++at_;
  }

  bool take(QChar sign) {
    skipBlanks();
    if (at_ >= text_.size() || text_[at_] != sign) return false;
    ++at_;
    return true;
  }

  /// A dash between blanks; one before a digit is a time.
  [[nodiscard]] bool isDash(qsizetype at) const {
    const bool dash = text_[at] == u'-' || text_[at] == u'–' || text_[at] == u'—';
    return dash && (at == 0 || text_[at - 1].isSpace()) &&
           (at + 1 == text_.size() || text_[at + 1].isSpace());
  }

  bool takeDash() {
    skipBlanks();
    if (at_ >= text_.size() || !isDash(at_)) return false;
    ++at_;
    return true;
  }

  [[nodiscard]] bool isSign(qsizetype at, unsigned signs) const {
    return ((signs & Comma) && text_[at] == u',') || ((signs & Colon) && text_[at] == u':') ||
           ((signs & Dash) && isDash(at));
  }

  [[nodiscard]] bool beginsWord(qsizetype at) const {
    return !text_[at].isSpace() && (at == 0 || text_[at - 1].isSpace());
  }

  [[nodiscard]] TimesSaid timesIn(qsizetype from, qsizetype to) const {
    return readTimes(QStringView(text_).sliced(from, to - from), days_);
  }

  /// Where "@9" stands, from which on nothing else can follow; at the end where there is none.
  [[nodiscard]] qsizetype clockAt() const {
    qsizetype at = at_;
    while (at < text_.size() && !(beginsWord(at) && beginsClock(QStringView(text_).sliced(at)))) ++at;
    return at;
  }

  /// Whether nothing but times stands from there to the end. In a note a day alone is a word like others.
  [[nodiscard]] bool areTimes(qsizetype at, bool inNotes) const {
    const TimesSaid times = timesIn(at, text_.size());
    return !times.fault && (times.saysWhenOrHowLong() || (!inNotes && at > at_));
  }

  [[nodiscard]] std::vector<qsizetype> beginningsOfTimes(bool inNotes) const {
    std::vector<qsizetype> found;
    const qsizetype clock = clockAt();
    for (qsizetype at = at_; at < text_.size() && at <= clock; ++at) {
      if (!beginsWord(at)) continue;
      const bool begin =
          clock < text_.size() ? at == clock || !timesIn(at, clock).fault : areTimes(at, inNotes);
      if (begin) found.push_back(at);
    }
    return found;
  }

  [[nodiscard]] QString upTo(qsizetype end) const { return text_.mid(at_, end - at_).trimmed(); }

  /// Everywhere that a name which begins here may end.
  struct Ends {
    std::vector<qsizetype> all;  ///< the farthest first
    qsizetype times;             ///< where the times begin, unless a name reaches further
    qsizetype usual;             ///< where it ends that is no name yet
  };
  [[nodiscard]] Ends endsOfName(unsigned signs) const {
    Ends ends{.all = beginningsOfTimes(signs == 0), .times = text_.size(), .usual = text_.size()};
    if (!ends.all.empty()) ends.times = ends.usual = ends.all.front();
    for (qsizetype at = at_; at < text_.size(); ++at) {
      if (!isSign(at, signs)) continue;
      ends.all.push_back(at);
      ends.usual = std::min(ends.usual, at);
    }
    ends.all.push_back(text_.size());
    std::sort(ends.all.begin(), ends.all.end(), std::greater());
    return ends;
  }

  WrittenName readName(const NameList& names, unsigned signs) {
    skipBlanks();
    if (at_ < text_.size() && text_[at_] == u'"') return readQuoted();
    const Ends ends = endsOfName(signs);
    const auto isWhole = [&](qsizetype end) { return names.holds(upTo(end)); };
    const auto isBegun = [&](qsizetype end) {
      return end > ends.usual && end <= ends.times && names.holdsBeginning(upTo(end));
    };
    auto end = std::find_if(ends.all.begin(), ends.all.end(), isWhole);
    if (end == ends.all.end()) end = std::find_if(ends.all.begin(), ends.all.end(), isBegun);
    const QString name = upTo(end == ends.all.end() ? ends.usual : *end);
    const qsizetype at = std::exchange(at_, end == ends.all.end() ? ends.usual : *end);
    return {.text = name, .at = at, .length = name.size()};
  }

  WrittenName readQuoted() {
    WrittenName name{.at = at_, .isQuoted = true};
    for (++at_; at_ < text_.size(); ++at_) {
      if (text_[at_] == u'"') {
        if (at_ + 1 >= text_.size() || text_[at_ + 1] != u'"') break;
        ++at_;
      }
      name.text += text_[at_];
    }
    if (at_ < text_.size()) {
      ++at_;
    } else if (!split_.fault) {
      split_.fault = TextFault{name.at, at_ - name.at, tr("The quote is not closed.")};
    }
    name.length = at_ - name.at;
    return name;
  }

  const QString& text_;
  const NameIndex& index_;
  const DayReader& days_;
  qsizetype at_ = 0;
  EntrySplit split_;
};

}  // namespace

EntrySplit splitEntry(const QString& text, const NameIndex& index, const DayReader& days) {
  return Splitting(text, index, days).split();
}

}  // namespace pendra
