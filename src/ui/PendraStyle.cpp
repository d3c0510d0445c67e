#include "PendraStyle.h"

#include <QAbstractSpinBox>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyleOption>
#include <QTextEdit>

#include "ui/Buttons.h"
#include "ui/Symbols.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr int kIndicator = 16;
constexpr int kAfterIndicator = 10;
constexpr int kScrollBar = 12;
constexpr int kFieldPadding = 6;
constexpr int kArrowWidth = 24;
constexpr int kListItemHeight = 26;
constexpr int kMenuPlateGap = 4;
constexpr int kTabHeight = 36;
constexpr int kTabPadding = 4;  // beside the style's own; a bold word is wider

/// What decides how a push button is drawn.
struct ButtonLook {
  bool filled;
  bool flat;
  bool enabled;
  bool hovered;
  bool pressed;

  explicit ButtonLook(const QStyleOption& option, const QWidget* widget)
      : filled(isPrimary(option, widget)),
        flat(isFlat(option)),
        enabled(option.state & QStyle::State_Enabled),
        hovered(enabled && option.state & QStyle::State_MouseOver),
        pressed(option.state & (QStyle::State_Sunken | QStyle::State_On)) {}

 private:
  static bool isPrimary(const QStyleOption& option, const QWidget* widget) {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    const bool isDefault = button && button->features & QStyleOptionButton::DefaultButton;
    const QVariant primary = widget ? widget->property(kPrimaryProperty) : QVariant();
    return primary.isValid() ? primary.toBool() : isDefault;
  }
  static bool isFlat(const QStyleOption& option) {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    return button && button->features & QStyleOptionButton::Flat;
  }
};

/// What a button that stands filled is filled with; a tenth darker under the mouse keeps its label readable.
QColor fillOf(const ButtonLook& look, const Colours& colours) {
  return look.pressed   ? colours.filled.darker(125)
         : look.hovered ? colours.filled.darker(110)
                        : colours.filled;
}

/// The face of a button that is not filled.
QColor faceOf(const ButtonLook& look, const QStyleOption& option) {
  const Colours& colours = Theme::colours(option.palette);
  if (!look.enabled) return {};
  if (look.pressed) return colours.selection;
  if (look.hovered) return colours.line;
  return Theme::isDark(option.palette) ? colours.window : colours.base;
}

void drawRounded(QPainter& painter, const QRect& rect, const QColor& fill, const QColor& line) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(fill.isValid() ? QBrush(fill) : QBrush(Qt::NoBrush));
  painter.setPen(line.isValid() ? QPen(line, 1) : QPen(Qt::NoPen));
  painter.drawRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), metrics::kRadius, metrics::kRadius);
  painter.restore();
}

void drawFocusRing(QPainter& painter, const QRect& rect, const QColor& colour) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(colour, 2));
  painter.drawRoundedRect(QRectF(rect).adjusted(1, 1, -1, -1), metrics::kRadius, metrics::kRadius);
  painter.restore();
}

/// Whether a button keeps air around itself for the ring of the focus.
bool hasRingRoom(const QStyleOption* option, const QWidget* widget) {
  return qobject_cast<const QPushButton*>(widget) && !ButtonLook(*option, widget).flat;
}

void drawButtonPanel(QPainter& painter, const QStyleOption& option, const QWidget* widget) {
  const Colours& colours = Theme::colours(option.palette);
  const ButtonLook look(option, widget);
  const int room = hasRingRoom(&option, widget) ? metrics::kFocusRing : 0;
  const QRect panel = option.rect.adjusted(room, room, -room, -room);
  const bool deletes = widget && widget->property(kDestructiveProperty).toBool();
  if (look.flat) {
    if (look.hovered || look.pressed) drawRounded(painter, panel, colours.line, {});
  } else if (look.filled && look.enabled) {
    drawRounded(painter, panel, fillOf(look, colours), {});
  } else {
    const QColor frame = !look.enabled ? colours.line : deletes ? colours.warning : colours.frame;
    drawRounded(painter, panel, faceOf(look, option), frame);
  }
  if (option.state & QStyle::State_HasFocus && option.state & QStyle::State_KeyboardFocusChange) {
    drawFocusRing(painter, option.rect, colours.link);
  }
}

void drawFieldPanel(QPainter& painter, const QStyleOption& option, const QWidget* widget) {
  const Colours& colours = Theme::colours(option.palette);
  const bool unreadable = widget && widget->property(kUnreadableProperty).toBool();
  const bool enabled = option.state & QStyle::State_Enabled;
  const auto* line = qobject_cast<const QLineEdit*>(widget);
  const bool takesText = enabled && !(line && line->isReadOnly());
  drawRounded(painter, option.rect, takesText ? colours.base : colours.window,
              unreadable ? colours.warning
              : enabled  ? colours.frame
                         : colours.line);
  if (option.state & QStyle::State_HasFocus && enabled) {
    drawFocusRing(painter, option.rect, unreadable ? colours.warning : colours.link);
  }
}

void drawIndicator(QPainter& painter, const QStyleOption& option) {
  const Colours& colours = Theme::colours(option.palette);
  const bool on = option.state & (QStyle::State_On | QStyle::State_NoChange);
  const bool enabled = option.state & QStyle::State_Enabled;
  const QColor colour = !enabled ? colours.disabled : on ? colours.link : colours.frame;
  QRectF box(0, 0, kIndicator, kIndicator);
  box.moveCenter(QRectF(option.rect).center());
  drawSymbol(painter, box, on ? Symbol::CheckOn : Symbol::CheckOff, colour);
}

void drawRadio(QPainter& painter, const QStyleOption& option) {
  const Colours& colours = Theme::colours(option.palette);
  const bool on = option.state & QStyle::State_On;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  QRectF ring(0, 0, kIndicator - 2, kIndicator - 2);
  ring.moveCenter(QRectF(option.rect).center());
  painter.setPen(QPen(on ? colours.link : colours.frame, 1.2));
  painter.setBrush(on ? colours.link : colours.base);
  painter.drawEllipse(ring);
  if (on) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(colours.base);
    painter.drawEllipse(ring.center(), 2.5, 2.5);
  }
  painter.restore();
}

/// How far a work has come, in a trough that can be seen on any ground.
void drawProgress(QPainter& painter, const QStyleOptionProgressBar& bar) {
  const Colours& colours = Theme::colours(bar.palette);
  drawRounded(painter, bar.rect, mixed(colours.window, colours.quiet, 0.25), {});
  if (bar.maximum <= bar.minimum || bar.progress <= bar.minimum) return;
  const double part = double(bar.progress - bar.minimum) / (bar.maximum - bar.minimum);
  QRect done = bar.rect;
  done.setWidth(qRound(part * bar.rect.width()));
  drawRounded(painter, done, colours.link, {});
}

/// An item of the menu bar, or what is left of the bar, over a line that runs through under all of them.
void drawMenuBarPart(QPainter& painter, const QStyleOption& option) {
  const Colours& colours = Theme::colours(option.palette);
  const QRect& rect = option.rect;
  painter.fillRect(rect, colours.window);
  if (option.state & QStyle::State_Selected)
    drawRounded(painter, rect.adjusted(0, 1, 0, -2), colours.line, {});
  painter.fillRect(QRect(rect.left(), rect.bottom(), rect.width(), 1), colours.line);
}

void drawMenuBarItem(QPainter& painter, const QStyleOptionMenuItem& item) {
  drawMenuBarPart(painter, item);
  const int flags = Qt::AlignCenter | Qt::TextHideMnemonic | Qt::TextSingleLine;
  painter.setPen(item.palette.color(QPalette::WindowText));
  painter.drawText(item.rect, flags, item.text);
}

/// What stands left of the words of a menu: a box to tick, or the desktop's own sign for a command.
void drawMenuSign(QPainter& painter, const QRect& place, const QStyleOptionMenuItem& item) {
  const Colours& colours = Theme::colours(item.palette);
  const bool enabled = item.state & QStyle::State_Enabled;
  if (item.checkType == QStyleOptionMenuItem::NotCheckable) {
    item.icon.paint(&painter, place, Qt::AlignCenter, enabled ? QIcon::Normal : QIcon::Disabled);
  } else {
    const QColor colour = !enabled ? colours.disabled : item.checked ? colours.link : colours.frame;
    drawSymbol(painter, place, item.checked ? Symbol::CheckOn : Symbol::CheckOff, colour);
  }
}

/// Words left, the key quiet at the right edge, and a plate around what would be chosen.
void drawMenuItem(QPainter& painter, const QStyleOptionMenuItem& item, bool showsLetters) {
  const Colours& colours = Theme::colours(item.palette);
  const QRect plate = item.rect.adjusted(kMenuPlateGap, 0, -kMenuPlateGap, 0);
  painter.fillRect(item.rect, colours.base);
  if (item.menuItemType == QStyleOptionMenuItem::Separator) {
    return painter.fillRect(QRect(plate.left(), plate.center().y(), plate.width(), 1), colours.dayLine);
  }
  const bool enabled = item.state & QStyle::State_Enabled;
  const bool chosen = enabled && item.state & QStyle::State_Selected;
  if (chosen) drawRounded(painter, plate, colours.selection, {});
  QRect room = plate.adjusted(metrics::kGrid, 0, -metrics::kGrid, 0);
  if (item.menuHasCheckableItems || item.maxIconWidth > 0) {
    drawMenuSign(painter, {room.left(), room.center().y() - kIndicator / 2 + 1, kIndicator, kIndicator},
                 item);
    room.setLeft(room.left() + kIndicator + metrics::kGrid);
  }
  const QStringList parts = item.text.split(u'\t');
  const int letters = showsLetters ? Qt::TextShowMnemonic : Qt::TextHideMnemonic;
  painter.setFont(item.font);
  painter.setPen(enabled ? colours.text : colours.disabled);
  painter.drawText(room, static_cast<int>(Qt::AlignVCenter) | Qt::TextSingleLine | letters, parts[0]);
  if (item.menuItemType == QStyleOptionMenuItem::SubMenu) {
    painter.save();
    painter.translate(room.right() - 2, QRectF(room).center().y());
    painter.rotate(-90);
    drawChevron(painter, {}, painter.pen().color());
    painter.restore();
  }
  if (parts.size() < 2) return;
  if (enabled && !chosen) painter.setPen(colours.quiet);
  painter.drawText(room, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, parts[1]);
}

/// A tab is a word; the one that is shown is bold over a line in the colour of where one is.
void drawTab(QPainter& painter, const QStyleOptionTab& tab) {
  const Colours& colours = Theme::colours(tab.palette);
  const bool isShown = tab.state & QStyle::State_Selected;
  const QRect& rect = tab.rect;
  if (tab.state & QStyle::State_MouseOver && !isShown) {
    drawRounded(painter, rect.adjusted(2, 4, -2, -5), colours.line, {});
  }
  if (isShown) painter.fillRect(QRect(rect.left(), rect.bottom() - 1, rect.width(), 2), colours.link);
  QFont font = painter.font();
  font.setWeight(isShown ? QFont::DemiBold : QFont::Normal);
  painter.save();
  painter.setFont(font);
  painter.setPen(isShown ? colours.text : colours.quiet);
  painter.drawText(rect, Qt::AlignCenter | Qt::TextHideMnemonic | Qt::TextSingleLine, tab.text);
  painter.restore();
  if (tab.state & QStyle::State_HasFocus && tab.state & QStyle::State_KeyboardFocusChange) {
    drawFocusRing(painter, rect.adjusted(2, 4, -2, -4), colours.link);
  }
}

void drawScrollBar(QPainter& painter, const QStyleOptionSlider& bar, const QRect& handle) {
  const Colours& colours = Theme::colours(bar.palette);
  const bool active = bar.state & (QStyle::State_MouseOver | QStyle::State_Sunken);
  painter.fillRect(bar.rect, colours.base);
  const QRect inner = handle.adjusted(3, 3, -3, -3);
  drawRounded(painter, inner, mixed(colours.base, colours.quiet, active ? 0.7 : 0.4), {});
}

bool isTextArea(const QWidget* widget) {
  return qobject_cast<const QPlainTextEdit*>(widget) || qobject_cast<const QTextEdit*>(widget);
}

}  // namespace

PendraStyle::PendraStyle() : QProxyStyle(QStringLiteral("fusion")) {}

void PendraStyle::polish(QPalette& palette) { palette = Theme::palette(palette); }

void PendraStyle::polish(QWidget* widget) {
  QProxyStyle::polish(widget);
  if (isTextArea(widget)) widget->installEventFilter(this);
}

/// A text area repaints its contents when the focus comes or goes, but not the frame that shows it.
bool PendraStyle::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
    static_cast<QWidget*>(watched)->update();
  }
  return QProxyStyle::eventFilter(watched, event);
}

void PendraStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const {
  switch (element) {
    case PE_PanelButtonCommand:
      return drawButtonPanel(*painter, *option, widget);
    case PE_PanelLineEdit: {
      const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
      if (frame && frame->lineWidth > 0) return drawFieldPanel(*painter, *option, widget);
      painter->fillRect(option->rect, option->palette.base());
      return;
    }
    case PE_FrameLineEdit:
      return drawFieldPanel(*painter, *option, widget);
    case PE_Frame:
      if (isTextArea(widget)) return drawFieldPanel(*painter, *option, widget);
      painter->setPen(Theme::colours(option->palette).dayLine);
      painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
      return;
    case PE_PanelMenu:
      return painter->fillRect(option->rect, Theme::colours(option->palette).base);
    case PE_FrameMenu:
      painter->setPen(Theme::colours(option->palette).dayLine);
      return painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    case PE_FrameDefaultButton:
      return;
    case PE_IndicatorCheckBox:
      return drawIndicator(*painter, *option);
    case PE_IndicatorRadioButton:
      return drawRadio(*painter, *option);
    case PE_FrameFocusRect:
      // A push button draws its own ring around the panel; lists show their current item by its colour.
      // Others show where the keyboard is to those who use it.
      if (!qobject_cast<const QPushButton*>(widget) && !qobject_cast<const QAbstractItemView*>(widget) &&
          option->state & State_KeyboardFocusChange) {
        drawFocusRing(*painter, option->rect, Theme::colours(option->palette).link);
      }
      return;
    default:
      QProxyStyle::drawPrimitive(element, option, painter, widget);
  }
}

void PendraStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
  const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
  if (element == CE_MenuBarItem && item) return drawMenuBarItem(*painter, *item);
  if (element == CE_MenuItem && item) {
    return drawMenuItem(*painter, *item, styleHint(SH_UnderlineShortcut, option, widget, nullptr) != 0);
  }
  const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option);
  if (element == CE_TabBarTab && tab) return drawTab(*painter, *tab);
  if (element == CE_MenuBarEmptyArea) return drawMenuBarPart(*painter, *option);
  // A bar without an end runs, and is the base style's to move.
  const auto* bar = qstyleoption_cast<const QStyleOptionProgressBar*>(option);
  if (element == CE_ProgressBar && bar && bar->maximum > bar->minimum) return drawProgress(*painter, *bar);
  const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
  if (element != CE_PushButtonLabel || !button) {
    return QProxyStyle::drawControl(element, option, painter, widget);
  }
  const Colours& colours = Theme::colours(option->palette);
  const ButtonLook look(*option, widget);
  QStyleOptionButton label = *button;
  if (look.enabled && look.filled) {
    label.palette.setColor(QPalette::ButtonText, Qt::white);
    QFont font = painter->font();
    font.setWeight(QFont::DemiBold);
    painter->setFont(font);
  } else if (look.enabled && look.flat && !widget->testAttribute(Qt::WA_SetPalette)) {
    label.palette.setColor(QPalette::ButtonText, colours.link);
  } else if (look.enabled && widget && widget->property(kDestructiveProperty).toBool()) {
    label.palette.setColor(QPalette::ButtonText, colours.warning);
  }
  QProxyStyle::drawControl(element, &label, painter, widget);
}

void PendraStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                     QPainter* painter, const QWidget* widget) const {
  if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
      bar && control == CC_ScrollBar) {
    return drawScrollBar(*painter, *bar, subControlRect(control, option, SC_ScrollBarSlider, widget));
  }
  if (control == CC_ComboBox) {
    drawFieldPanel(*painter, *option, widget);
    const Colours& colours = Theme::colours(option->palette);
    const bool enabled = option->state & State_Enabled;
    const QPointF centre(option->rect.right() - 12, QRectF(option->rect).center().y());
    return drawChevron(*painter, centre, enabled ? colours.quiet : colours.disabled);
  }
  // The arrow would stand across the end of the word: a calendar's month.
  if (const auto* tool = qstyleoption_cast<const QStyleOptionToolButton*>(option);
      tool && tool->features.testFlag(QStyleOptionToolButton::HasMenu)) {
    QStyleOptionToolButton plain = *tool;
    plain.features.setFlag(QStyleOptionToolButton::HasMenu, false);
    return QProxyStyle::drawComplexControl(control, &plain, painter, widget);
  }
  const auto* spin = qstyleoption_cast<const QStyleOptionSpinBox*>(option);
  if (control == CC_SpinBox && spin && spin->buttonSymbols == QAbstractSpinBox::NoButtons) {
    return drawFieldPanel(*painter, *option, widget);
  }
  QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect PendraStyle::subElementRect(SubElement element, const QStyleOption* option,
                                  const QWidget* widget) const {
  const QRect rect = QProxyStyle::subElementRect(element, option, widget);
  // A layout lines a button up by its panel; the ring lies in the gap between it and its neighbours.
  if (element == SE_PushButtonLayoutItem && hasRingRoom(option, widget)) {
    constexpr int kRing = metrics::kFocusRing;
    return option->rect.adjusted(kRing, kRing, -kRing, -kRing);
  }
  const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
  const bool framed = element == SE_LineEditContents && frame && frame->lineWidth > 0;
  return framed ? rect.adjusted(kFieldPadding - 2, 0, 2 - kFieldPadding, 0) : rect;
}

QRect PendraStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                  const QWidget* widget) const {
  if (control == CC_ComboBox && part == SC_ComboBoxEditField) {
    return option->rect.adjusted(kFieldPadding, 2, -kArrowWidth, -2);
  }
  if (control == CC_ComboBox && part == SC_ComboBoxArrow) {
    return {option->rect.right() - kArrowWidth, option->rect.top(), kArrowWidth + 1, option->rect.height()};
  }
  return QProxyStyle::subControlRect(control, option, part, widget);
}

QSize PendraStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                    const QWidget* widget) const {
  QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
  switch (type) {
    case CT_PushButton: {
      const ButtonLook look(*option, widget);
      size.setWidth(contents.width() + (look.flat ? metrics::kSide : 2 * metrics::kSide));
      size = size.expandedTo(
          {look.flat ? 0 : 80, look.flat ? metrics::kControlHeight - 4 : metrics::kButtonHeight});
      constexpr int kRings = 2 * metrics::kFocusRing;
      return hasRingRoom(option, widget) ? size + QSize(kRings, kRings) : size;
    }
    case CT_ComboBox:
      return QSize(contents.width() + 2 * kFieldPadding + kArrowWidth, size.height())
          .expandedTo({0, metrics::kControlHeight});
    case CT_LineEdit:
      return size.expandedTo({0, metrics::kControlHeight});
    case CT_ItemViewItem:
      return size.expandedTo({0, kListItemHeight});
    case CT_TabBarTab:
      return {contents.width() + kTabPadding, kTabHeight};
    case CT_MenuBarItem:
      return size.expandedTo({0, metrics::kControlHeight});
    case CT_MenuItem:
      return QSize(size.width() + metrics::kGrid, size.height())
          .expandedTo({0, size.height() > metrics::kGrid + 4 ? metrics::kControlHeight - 2 : 0});
    default:
      return size;
  }
}

QIcon PendraStyle::standardIcon(StandardPixmap picture, const QStyleOption* option,
                                const QWidget* widget) const {
  // Every menu bar asks for it, though hardly one is too narrow; Qt's own would have it load all its readers
  // of pictures before the first window comes.
  if (picture == SP_ToolBarHorizontalExtensionButton) return chevronIcon();
  return QProxyStyle::standardIcon(picture, option, widget);
}

int PendraStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
      return kIndicator;
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
      return kAfterIndicator;
    case PM_FocusFrameHMargin:
      return qobject_cast<const QListView*>(widget) ? kFieldPadding - 1
                                                    : QProxyStyle::pixelMetric(metric, option, widget);
    case PM_DefaultFrameWidth:
      return isTextArea(widget) ? 3 : QProxyStyle::pixelMetric(metric, option, widget);
    case PM_MenuPanelWidth:
      return 1;
    case PM_MenuVMargin:
      return kMenuPlateGap;
    case PM_ScrollBarExtent:
      return kScrollBar;
    case PM_LayoutLeftMargin:
    case PM_LayoutTopMargin:
    case PM_LayoutRightMargin:
    case PM_LayoutBottomMargin:
      return metrics::kSide;
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing:
      return metrics::kGrid;
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
      return 0;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

int PendraStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                           QStyleHintReturn* data) const {
  switch (hint) {
    case SH_FormLayoutLabelAlignment:
      return Qt::AlignRight | Qt::AlignVCenter;
    case SH_DialogButtonLayout:
      return 3;  // QDialogButtonBox::GnomeLayout: the affirmative button last
    case SH_ComboBox_Popup:
    case SH_EtchDisabledText:
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_ItemView_ActivateItemOnSingleClick:
      return 0;
    default:
      return QProxyStyle::styleHint(hint, option, widget, data);
  }
}

}  // namespace pendra
