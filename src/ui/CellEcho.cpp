#include "CellEcho.h"

#include <QPainter>
#include <QVBoxLayout>

#include "ui/EchoLine.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr int kWidest = 420;
constexpr int kGap = 4;
constexpr int kShadow = 4;
constexpr int kInner = 11;

QFont fontOf(Echo::Tone tone) {
  QFont font = tone == Echo::Tone::Result ? Theme::controlFont() : Theme::quietFont();
  if (tone == Echo::Tone::Result) font.setWeight(QFont::DemiBold);
  return font;
}

}  // namespace

class CellEcho::Plate final : public QWidget {
 public:
  explicit Plate(QWidget* window) : QWidget(window), column_(new QVBoxLayout(this)) {
    setObjectName(QStringLiteral("cellEcho"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    column_->setContentsMargins(kInner, kInner - 2, kInner, kInner - 2 + kShadow);
    column_->setSpacing(kGap / 2);
    setMaximumWidth(kWidest);
  }

  void say(const std::vector<Echo>& echoes) {
    while (lines_.size() < echoes.size()) {
      lines_.push_back(new EchoLine(this));
      lines_.back()->setWordWrap(true);
      column_->addWidget(lines_.back());
    }
    for (std::size_t line = 0; line < lines_.size(); ++line) {
      const Echo echo = line < echoes.size() ? echoes[line] : Echo{};
      lines_[line]->setFont(fontOf(echo.tone));
      lines_[line]->showEcho(echo);
    }
    fit(echoes);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    const Colours& colours = Theme::colours(palette());
    const QRectF plate = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5 - kShadow);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (int depth = kShadow; depth > 0; --depth) {
      painter.setBrush(QColor(0, 0, 0, 10));
      painter.drawRoundedRect(plate.translated(0, depth), metrics::kGrid, metrics::kGrid);
    }
    painter.setPen(colours.dayLine);
    painter.setBrush(colours.base);
    painter.drawRoundedRect(plate, metrics::kGrid, metrics::kGrid);
  }

 private:
  /// As wide as its longest line, up to the widest, where lines are broken.
  void fit(const std::vector<Echo>& echoes) {
    int wide = 0;
    for (const Echo& echo : echoes) {
      constexpr int kSignRoom = 24;
      wide = std::max(wide, QFontMetrics(fontOf(echo.tone)).horizontalAdvance(echo.text) + kSignRoom);
    }
    const int width = std::min(wide + 2 * kInner, kWidest);
    layout()->activate();
    resize(width, layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(width) : sizeHint().height());
  }

  QVBoxLayout* column_;
  std::vector<EchoLine*> lines_;
};

CellEcho::~CellEcho() {
  if (plate_) plate_->deleteLater();
  if (plate_) plate_->hide();
}

void CellEcho::show(const std::vector<Echo>& echoes) {
  if (!plate_) plate_ = new Plate(field_.window());
  plate_->say(echoes);
  place();
}

void CellEcho::giveWay(bool gives) {
  givesWay_ = gives;
  place();
}

void CellEcho::place() {
  if (!plate_) return;
  const QWidget& window = *plate_->parentWidget();
  const QPoint under = field_.mapTo(&window, QPoint(field_.width() / 2, field_.height() + kGap));
  const int above = under.y() - field_.height() - 2 * kGap - plate_->height() + kShadow;
  const bool fits = under.y() + plate_->height() <= window.height();
  const int left = std::clamp(under.x() - plate_->width() / 2, metrics::kGrid,
                              std::max(metrics::kGrid, window.width() - plate_->width() - metrics::kGrid));
  plate_->move(left, fits ? under.y() : std::max(0, above));
  plate_->setVisible(!givesWay_ && field_.parentWidget()->rect().contains(field_.geometry().center()));
  plate_->raise();
}

}  // namespace pendra
