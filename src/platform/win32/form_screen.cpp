#include "platform/win32/form_screen.h"

#include <algorithm>

#include "platform/win32/form_window.h"

namespace pelvaro::win32 {

std::shared_ptr<FormPeer> FormScreen::createForm(const FormLayout& layout, FormEvents& events) {
  auto form = std::make_shared<FormWindow>(*this, layout, events);
  forms_.push_back(form.get());
  return form;
}

HWND FormScreen::mainWindow() const { return forms_.empty() ? nullptr : forms_.front()->window(); }

HWND FormScreen::activeWindow() const {
  const HWND active = ::GetActiveWindow();
  for (const FormWindow* form : forms_) {
    if (form->window() == active && ::IsWindowVisible(active)) return active;
  }
  const HWND main = mainWindow();
  return main && ::IsWindowVisible(main) ? main : nullptr;
}

std::vector<HWND> FormScreen::disableOthers(HWND except) {
  std::vector<HWND> disabled;
  for (const FormWindow* form : forms_) {
    const HWND window = form->window();
    if (window == except || !::IsWindowVisible(window) || !::IsWindowEnabled(window)) continue;
    ::EnableWindow(window, FALSE);
    disabled.push_back(window);
  }
  return disabled;
}

void FormScreen::enable(const std::vector<HWND>& windows) {
  for (const HWND window : windows) ::EnableWindow(window, TRUE);
}

void FormScreen::forget(FormWindow* form) { std::erase(forms_, form); }

}  // namespace pelvaro::win32
