#include "platform/win32/label_window.h"

#include <utility>

#include "platform/win32/paint.h"

namespace pelvaro::win32 {

namespace {

// The columns of a figure, from the label's left edge at 96 dpi: where its number ends and where its unit begins.
constexpr int kNumberEnd = 188;
constexpr int kUnitBegin = 192;

constexpr UINT kOneLine = DT_SINGLELINE | DT_VCENTER;

}  // namespace

LabelWindow::LabelWindow(const ControlLayout& layout, ControlEvents& events, const ControlSurroundings& surroundings)
    : ControlWindow(layout, events, surroundings) {
  create("STATIC", SS_OWNERDRAW | (layout.clickable ? SS_NOTIFY : 0));
}

void LabelWindow::command(WORD notification) {
  // The second of two quick clicks is a click too.
  if (notification == STN_CLICKED || notification == STN_DBLCLK) loop_.guarded([this] { events_.clicked(); });
}

LRESULT LabelWindow::message(UINT number, WPARAM wParam, LPARAM lParam) {
  if (number == WM_ERASEBKGND) return 1;  // the canvas covers everything
  if (number == kFormShown && wParam && isCuttable() && !hasTooltip()) offerTooltip();
  return passOn(number, wParam, lParam);
}

void LabelWindow::draw(DRAWITEMSTRUCT& item) {
  const RECT area = client();
  const Canvas canvas(item.hDC, area);
  fill(canvas.dc(), area, colours_.background);
  if (layout_.kind == ControlKind::picture) {
    paintPicture(canvas.dc(), metrics_, picture_, area, false, colours_.text);
    return;
  }
  if (layout_.leftRule) {
    const COLORREF rule = metrics_.highContrast() ? colours_.text : palette::kHairline;
    fill(canvas.dc(), {area.left, area.top, area.left + metrics_.lineWidth(), area.bottom}, rule);
  }
  if (layout_.style == TextStyle::figure) {
    drawFigure(canvas.dc(), area);
  } else {
    drawText(canvas.dc(), area);
  }
}

// Whether its text is a line that may be longer than the place.
bool LabelWindow::isCuttable() const {
  return layout_.kind == ControlKind::label && layout_.style != TextStyle::wrapped &&
         layout_.style != TextStyle::figure && layout_.style != TextStyle::plain;
}

HFONT LabelWindow::font() const {
  switch (layout_.style) {
    case TextStyle::bold:
    case TextStyle::boldRight:
    case TextStyle::title: return metrics_.boldFont();
    default: return metrics_.font();
  }
}

// The whole text, where it is cut.
std::string LabelWindow::tooltip() {
  if (!visible()) return {};
  const HDC dc = ::GetDC(window_);
  const LONG width = textWidth(dc, text_, font());
  ::ReleaseDC(window_, dc);
  return width > client().right ? text_ : "";
}

void LabelWindow::drawText(HDC dc, RECT area) {
  UINT format = kOneLine;
  const HFONT font = this->font();
  switch (layout_.style) {
    case TextStyle::boldRight: format |= DT_RIGHT; break;
    case TextStyle::right: format |= DT_RIGHT | DT_END_ELLIPSIS; break;
    case TextStyle::centred: format |= DT_CENTER | DT_END_ELLIPSIS; break;
    case TextStyle::wrapped: format = DT_WORDBREAK; break;
    case TextStyle::title:
    case TextStyle::cut: format |= DT_END_ELLIPSIS; break;
    case TextStyle::bold:
    case TextStyle::plain:
    case TextStyle::figure: break;
  }
  if (layout_.style == TextStyle::wrapped) {
    // Centred as a block: as many lines as the text takes.
    RECT needed = area;
    const HGDIOBJ before = ::SelectObject(dc, font);
    ::DrawTextA(dc, text_.c_str(), -1, &needed, format | DT_CALCRECT | DT_NOPREFIX);
    ::SelectObject(dc, before);
    const LONG spare = (area.bottom - area.top) - (needed.bottom - needed.top);
    if (spare > 0) area.top += spare / 2;
  }
  const COLORREF muted = metrics_.highContrast() ? ::GetSysColor(COLOR_GRAYTEXT) : palette::kMuted;
  paintText(dc, text_, area, font, enabled() ? colours_.text : muted, format);
}

// "caption: number unit" in three columns; a text of another form is drawn as it is.
void LabelWindow::drawFigure(HDC dc, const RECT& area) {
  const std::string_view whole = text_;
  const auto colon = whole.find(": ");
  if (colon == std::string_view::npos) return drawText(dc, area);
  const std::string_view figure = whole.substr(colon + 2);
  const auto blank = figure.find(' ');
  const HFONT font = metrics_.font();
  paintText(dc, whole.substr(0, colon + 1), area, font, colours_.text, kOneLine);
  RECT number = area;
  number.right = area.left + scaled(kNumberEnd);
  paintText(dc, figure.substr(0, blank), number, font, colours_.text, kOneLine | DT_RIGHT);
  if (blank == std::string_view::npos) return;
  RECT unit = area;
  unit.left += scaled(kUnitBegin);
  paintText(dc, figure.substr(blank + 1), unit, font, colours_.text, kOneLine);
}

}  // namespace pelvaro::win32
