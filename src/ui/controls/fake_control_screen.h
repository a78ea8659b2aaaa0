// A screen for the tests of controls: its peers do nothing but remember, and a test plays the user and the scripts.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "platform/control_peer.h"

namespace pelvaro::fake {

// Derived from for the kinds of control that a test is about.
struct FakeControl : ControlPeer {
  FakeControl(const ControlLayout& l, ControlEvents& e) : layout(l), events(e) {}
  const ControlLayout& layout;
  ControlEvents& events;
  std::string caption = layout.caption;
  bool enabled = true;

  const std::string& text() override { return caption; }
  void setText(const std::string& text) override { caption = text; }
  void setVisible(bool) override {}
  void setEnabled(bool on) override { enabled = on; }
  void setColours(Colours) override {}
  void setPicture(Picture, Look) override {}
  void focus() override {}
};

template <typename Peer>
struct FakeControlScreen : FormFactory {
  std::map<std::string, std::shared_ptr<Peer>> peers;  // of the one form, by name

  struct Window : FormPeer {
    explicit Window(FakeControlScreen& s) : screen(s) {}
    FakeControlScreen& screen;
    std::shared_ptr<ControlPeer> createControl(const ControlLayout& layout, ControlEvents& events) override {
      return screen.peers[layout.name] = std::make_shared<Peer>(layout, events);
    }
    std::unique_ptr<TimerPeer> createTimer(TimerEvents&) override { return nullptr; }
    void setColours(Colours) override {}
    void destroy() override {}
    void show(bool) override {}
    void hide() override {}
    void moveBy(int, int) override {}
    void minimise() override {}
    void setPointer(Pointer) override {}
    Place place() override { return {}; }
    void moveTo(Place) override {}
  };
  std::shared_ptr<FormPeer> createForm(const FormLayout&, FormEvents&) override {
    return std::make_shared<Window>(*this);
  }
  Colour systemColour(int) override { return 0; }
  bool highContrast() override { return false; }
};

}  // namespace pelvaro::fake
