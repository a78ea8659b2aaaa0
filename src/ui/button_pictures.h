// The image lists of the main window's picture buttons. As everywhere in image lists, pictures count from 1.
#pragma once

#include "ui/controls/image.h"

namespace pelvaro {

// What one picture of a button list shows.
struct ButtonPicture {
  Picture picture;
  Look look;
};

// The list of Image1 and Image2: adding, connecting, hanging up, each normal, hover, pressed.
constexpr ButtonPicture kButtonPictures[] = {
    {Picture::add, Look::normal},     {Picture::add, Look::hover},     {Picture::add, Look::pressed},
    {Picture::connect, Look::normal}, {Picture::connect, Look::hover}, {Picture::connect, Look::pressed},
    {Picture::hangUp, Look::normal},  {Picture::hangUp, Look::hover},  {Picture::hangUp, Look::pressed},
};
// The list of Image3.
constexpr ButtonPicture kLimitPictures[] = {
    {Picture::limits, Look::normal}, {Picture::limits, Look::hover}, {Picture::limits, Look::pressed}};

// The first (normal) picture of each button in its list; hover and pressed follow it.
constexpr int kAddFirst = 1, kConnectFirst = 4, kHangUpFirst = 7, kLimitsFirst = 1;

template <std::size_t N>
void showPicture(Image& image, const ButtonPicture (&list)[N], int index) {
  const ButtonPicture& entry = list[static_cast<std::size_t>(index - 1)];
  image.setPicture(entry.picture, entry.look);
}

}  // namespace pelvaro
