#include "ui/form_layouts.h"

namespace pelvaro::layouts {

namespace {

using enum ControlKind;
using enum TextStyle;

constexpr ControlLayout kForm1Controls[] = {
    {.name = "Image5", .kind = picture, .caption = "", .place = {16, 6, 16, 16}, .picture = Picture::application},
    {.name = "Label8", .kind = label, .caption = "Pelvaro", .place = {40, 5, 255, 20}, .style = title},
    {.name = "Image1", .kind = pictureButton, .caption = "Add", .place = {16, 44, 104, 64}, .picture = Picture::add},
    {.name = "Image2",
     .kind = pictureButton,
     .caption = "Connect",
     .place = {136, 44, 104, 64},
     .picture = Picture::connect},
    {.name = "Image3",
     .kind = pictureButton,
     .caption = "Limits",
     .place = {256, 44, 104, 64},
     .picture = Picture::limits},
    {.name = "ListView1",
     .kind = listView,
     .caption = "Connections",
     .place = {16, 124, 344, 148},
     .picture = Picture::listEntry},
    {.name = "Image4", .kind = picture, .caption = "", .place = {16, 284, 16, 16}, .picture = Picture::disconnected},
    {.name = "statuslbl", .kind = label, .caption = "", .place = {40, 280, 144, 24}, .style = bold},
    {.name = "Label7", .kind = label, .caption = "", .place = {192, 280, 168, 24}, .style = right},
    {.name = "Label1",
     .kind = label,
     .caption = "Total bytes received: 0 KB",
     .place = {16, 316, 236, 20},
     .style = figure},
    {.name = "Label2",
     .kind = label,
     .caption = "Total bytes transmitted: 0 KB",
     .place = {16, 336, 236, 20},
     .style = figure},
    {.name = "Label4",
     .kind = label,
     .caption = "Download rate: 0 KB/sec.",
     .place = {16, 356, 236, 20},
     .style = figure},
    {.name = "Label5",
     .kind = label,
     .caption = "Upload rate: 0 KB/sec.",
     .place = {16, 376, 236, 20},
     .style = figure},
    // "elaspe" is the design caption, spelled so; setSetting writes the text that is seen.
    {.name = "Label9",
     .kind = label,
     .caption = "Time elaspe",
     .place = {260, 316, 100, 20},
     .style = right,
     .visible = false,
     .leftRule = true},
    {.name = "Label10",
     .kind = label,
     .caption = "",
     .place = {260, 336, 100, 20},
     .style = boldRight,
     .visible = false,
     .leftRule = true},
    {.name = "Label11",
     .kind = label,
     .caption = "Time remain",
     .place = {260, 356, 100, 20},
     .style = right,
     .visible = false,
     .leftRule = true},
    {.name = "Label12",
     .kind = label,
     .caption = "",
     .place = {260, 376, 100, 20},
     .style = boldRight,
     .visible = false,
     .leftRule = true},
    {.name = "Label6", .kind = minimiseMark, .caption = "Minimise", .place = {303, 1, 36, 27}},
    {.name = "Label3", .kind = closeMark, .caption = "Close", .place = {339, 1, 36, 27}},
};
constexpr Rect96 kForm1Rules[] = {{1, 28, 374, 1}, {16, 308, 344, 1}};

constexpr ControlLayout kForm2Controls[] = {
    {.name = "captionLabel",
     .kind = label,
     .caption = "Pelvaro - Connection",
     .place = {16, 5, 395, 20},
     .style = title},
    {.name = "Label2", .kind = label, .caption = "Connection Name", .place = {16, 44, 152, 24}},
    {.name = "Text1", .kind = textBox, .caption = "", .place = {176, 44, 264, 24}},
    {.name = "numberLabel", .kind = label, .caption = "Server or Dialup Number", .place = {16, 76, 152, 24}},
    {.name = "Text2", .kind = textBox, .caption = "", .place = {176, 76, 264, 24}},
    {.name = "apnLabel", .kind = label, .caption = "APN", .place = {16, 108, 152, 24}},
    {.name = "Text3", .kind = textBox, .caption = "", .place = {176, 108, 264, 24}},
    {.name = "Option1", .kind = optionButton, .caption = "Auto Detect", .place = {16, 160, 16, 16}},
    {.name = "Option2", .kind = optionButton, .caption = "Use address below", .place = {176, 160, 16, 16}},
    {.name = "Label10", .kind = label, .caption = "Auto Detect", .place = {40, 156, 120, 24}, .clickable = true},
    {.name = "Label11", .kind = label, .caption = "Use address below", .place = {200, 156, 160, 24}, .clickable = true},
    {.name = "primaryLabel", .kind = label, .caption = "Primary DNS", .place = {16, 188, 152, 24}},
    {.name = "Text4", .kind = textBox, .caption = "", .place = {176, 188, 264, 24}},
    {.name = "secondaryLabel", .kind = label, .caption = "Secondary DNS", .place = {16, 220, 152, 24}},
    {.name = "Text5", .kind = textBox, .caption = "", .place = {176, 220, 264, 24}},
    {.name = "typeLabel", .kind = label, .caption = "Connection Type", .place = {16, 268, 152, 24}},
    {.name = "Combo3", .kind = comboBox, .caption = "", .place = {176, 268, 112, 24}},
    {.name = "Image1", .kind = picture, .caption = "", .place = {304, 268, 24, 24}, .picture = Picture::cable},
    {.name = "Image2",
     .kind = pictureButton,
     .caption = "Driver",
     .place = {344, 264, 96, 32},
     .picture = Picture::driver},
    {.name = "Label1", .kind = label, .caption = "Device", .place = {16, 304, 152, 24}},
    {.name = "Combo1", .kind = comboBox, .caption = "", .place = {176, 304, 264, 24}},
    {.name = "Check1", .kind = checkBox, .caption = "Validate Device", .place = {176, 342, 16, 16}},
    {.name = "Label8", .kind = label, .caption = "Validate Device", .place = {200, 338, 88, 24}, .clickable = true},
    {.name = "Command4", .kind = commandButton, .caption = "Add Device Manually", .place = {296, 336, 144, 28}},
    {.name = "Command2", .kind = commandButton, .caption = "List of Operators", .place = {16, 388, 128, 28}},
    {.name = "Command1", .kind = commandButton, .caption = "Add Now", .place = {248, 388, 92, 28}},
    {.name = "Command3", .kind = commandButton, .caption = "Cancel", .place = {348, 388, 92, 28}},
    {.name = "Label7", .kind = closeMark, .caption = "Close", .place = {419, 1, 36, 27}},
};
constexpr Rect96 kForm2Rules[] = {{1, 28, 454, 1}, {16, 144, 424, 1}, {16, 256, 424, 1}, {16, 376, 424, 1}};

constexpr ControlLayout kForm3Controls[] = {
    {.name = "captionLabel",
     .kind = label,
     .caption = "Pelvaro - Operators",
     .place = {16, 5, 539, 20},
     .style = title},
    {.name = "Label1", .kind = label, .caption = "Country/ City", .place = {16, 44, 88, 24}},
    {.name = "Combo1", .kind = comboBox, .caption = "", .place = {112, 44, 232, 24}},
    {.name = "ListView2", .kind = listView, .caption = "Operators", .place = {16, 80, 568, 224}, .headings = true},
    {.name = "Command3", .kind = commandButton, .caption = "Edit", .place = {16, 320, 80, 28}},
    {.name = "Command4", .kind = commandButton, .caption = "Default", .place = {104, 320, 80, 28}},
    {.name = "Command2", .kind = commandButton, .caption = "Save Current List", .place = {192, 320, 128, 28}},
    {.name = "Command1", .kind = commandButton, .caption = "Close", .place = {496, 320, 88, 28}},
    {.name = "closeMark", .kind = closeMark, .caption = "Close", .place = {563, 1, 36, 27}},
};
constexpr Rect96 kForm3Rules[] = {{1, 28, 598, 1}};

constexpr ControlLayout kForm4Controls[] = {
    {.name = "Label6", .kind = label, .caption = "Pelvaro - Connect", .place = {16, 5, 299, 20}, .style = title},
    {.name = "Image1", .kind = picture, .caption = "", .place = {16, 48, 48, 48}, .picture = Picture::signIn},
    {.name = "Label1", .kind = label, .caption = "User Name:", .place = {80, 44, 68, 24}},
    {
        .name = "Text1",
        .kind = textBox,
        .caption = "",
        .place = {152, 44, 192, 24},
    },
    {.name = "Label2", .kind = label, .caption = "Password:", .place = {80, 76, 68, 24}},
    {
        .name = "Text2",
        .kind = passwordBox,
        .caption = "",
        .place = {152, 76, 192, 24},
    },
    {.name = "Command1", .kind = commandButton, .caption = "OK", .place = {152, 128, 92, 28}},
    {.name = "Command2", .kind = commandButton, .caption = "Cancel", .place = {252, 128, 92, 28}},
    {.name = "Label3", .kind = closeMark, .caption = "Close", .place = {323, 1, 36, 27}},
};
constexpr Rect96 kForm4Rules[] = {{1, 28, 358, 1}, {16, 116, 328, 1}};

constexpr ControlLayout kForm5Controls[] = {
    {.name = "captionLabel", .kind = label, .caption = "Pelvaro", .place = {16, 5, 219, 20}, .style = title},
    {.name = "Animation1", .kind = animation, .caption = "", .place = {48, 44, 184, 64}},
    {.name = "textLabel", .kind = label, .caption = "", .place = {16, 112, 248, 24}, .style = centred},
    {.name = "closeMark", .kind = closeMark, .caption = "Close", .place = {243, 1, 36, 27}},
};
constexpr Rect96 kForm5Rules[] = {{1, 28, 278, 1}};

constexpr ControlLayout kForm6Controls[] = {
    {.name = "Label2", .kind = label, .caption = "Limitation", .place = {16, 5, 243, 20}, .style = title},
    {.name = "Option1", .kind = optionButton, .caption = "Time Limit ", .place = {16, 44, 112, 24}},
    {.name = "Option2", .kind = optionButton, .caption = "Size limit", .place = {16, 76, 112, 24}},
    {.name = "Label3", .kind = label, .caption = "minutes", .place = {232, 44, 56, 24}},
    {.name = "Text1", .kind = textBox, .caption = "", .place = {136, 44, 88, 24}, .style = right},
    {.name = "Label4", .kind = label, .caption = "KB", .place = {232, 76, 56, 24}},
    {.name = "Text2", .kind = textBox, .caption = "", .place = {136, 76, 88, 24}, .style = right},
    {.name = "Command1", .kind = commandButton, .caption = "OK", .place = {104, 124, 88, 28}},
    {.name = "Command2", .kind = commandButton, .caption = "Cancel", .place = {200, 124, 88, 28}},
    {.name = "closeMark", .kind = closeMark, .caption = "Close", .place = {267, 1, 36, 27}},
};
constexpr Rect96 kForm6Rules[] = {{1, 28, 302, 1}, {16, 112, 272, 1}};

constexpr ControlLayout kFrmStatusControls[] = {
    {.name = "captionLabel", .kind = label, .caption = "Connection", .place = {16, 5, 267, 20}, .style = title},
    {.name = "Image1", .kind = picture, .caption = "", .place = {16, 44, 48, 48}, .picture = Picture::dialing},
    {.name = "Label1", .kind = label, .caption = "", .place = {80, 44, 232, 48}, .style = wrapped},
    {.name = "Command1", .kind = commandButton, .caption = "cancel", .place = {224, 104, 88, 28}},
    {.name = "closeMark", .kind = closeMark, .caption = "Close", .place = {291, 1, 36, 27}},
};
constexpr Rect96 kFrmStatusRules[] = {{1, 28, 326, 1}};

constexpr ControlLayout kFrmDriverControls[] = {
    {.name = "captionLabel", .kind = label, .caption = "Pelvaro - Drivers", .place = {16, 5, 315, 20}, .style = title},
    {.name = "Label1", .kind = label, .caption = "Brand", .place = {16, 44, 112, 24}},
    {.name = "Combo1", .kind = comboBox, .caption = "Choose the Brand", .place = {136, 44, 224, 24}},
    {.name = "Label2", .kind = label, .caption = "Model", .place = {16, 76, 112, 24}},
    {.name = "Combo2", .kind = comboBox, .caption = "Choose the Model", .place = {136, 76, 224, 24}},
    {.name = "Label3", .kind = label, .caption = "Connection Type", .place = {16, 108, 112, 24}},
    {.name = "Combo3", .kind = comboBox, .caption = "", .place = {136, 108, 224, 24}},
    {.name = "Label5", .kind = label, .caption = "Driver Support", .place = {16, 140, 112, 24}},
    {.name = "driverlbl", .kind = label, .caption = "", .place = {136, 140, 224, 24}, .style = bold},
    {.name = "Command1", .kind = commandButton, .caption = "Install", .place = {16, 188, 96, 28}},
    {.name = "cmdOK", .kind = commandButton, .caption = "OK", .place = {168, 188, 92, 28}},
    {.name = "Command3", .kind = commandButton, .caption = "Exit", .place = {268, 188, 92, 28}},
    {.name = "Label4", .kind = closeMark, .caption = "Close", .place = {339, 1, 36, 27}},
};
constexpr Rect96 kFrmDriverRules[] = {{1, 28, 374, 1}, {16, 176, 344, 1}};

constexpr ControlLayout field(const char* name, Rect96 place) {
  return {.name = name,
          .kind = textBox,
          .caption = "",
          .place = place,
          .refused = ',',
          .refusal = "A field of the list cannot hold a comma."};
}
constexpr ControlLayout kFrmEditControls[] = {
    {.name = "captionLabel", .kind = label, .caption = "Pelvaro - Edit", .place = {16, 5, 507, 20}, .style = title},
    {.name = "Label1(0)", .kind = label, .caption = "", .place = {16, 44, 88, 24}, .style = cut},
    field("Text1(0)", {112, 44, 160, 24}),
    {.name = "Label1(1)", .kind = label, .caption = "", .place = {16, 76, 88, 24}, .style = cut},
    field("Text1(1)", {112, 76, 160, 24}),
    {.name = "Label1(2)", .kind = label, .caption = "", .place = {16, 108, 88, 24}, .style = cut},
    field("Text1(2)", {112, 108, 160, 24}),
    {.name = "Label1(3)", .kind = label, .caption = "", .place = {16, 140, 88, 24}, .style = cut},
    field("Text1(3)", {112, 140, 160, 24}),
    {.name = "Label1(4)", .kind = label, .caption = "", .place = {16, 172, 88, 24}, .style = cut},
    field("Text1(4)", {112, 172, 160, 24}),
    {.name = "Label1(5)", .kind = label, .caption = "", .place = {296, 44, 88, 24}, .style = cut},
    field("Text1(5)", {392, 44, 160, 24}),
    {.name = "Label1(6)", .kind = label, .caption = "", .place = {296, 76, 88, 24}, .style = cut},
    field("Text1(6)", {392, 76, 160, 24}),
    {.name = "Label1(7)", .kind = label, .caption = "", .place = {296, 108, 88, 24}, .style = cut},
    field("Text1(7)", {392, 108, 160, 24}),
    {.name = "Label1(8)", .kind = label, .caption = "", .place = {296, 140, 88, 24}, .style = cut},
    field("Text1(8)", {392, 140, 160, 24}),
    {.name = "Label1(9)", .kind = label, .caption = "", .place = {296, 172, 88, 24}, .style = cut},
    field("Text1(9)", {392, 172, 160, 24}),
    {.name = "Command1", .kind = commandButton, .caption = "OK", .place = {368, 224, 88, 28}},
    {.name = "Command2", .kind = commandButton, .caption = "Cancel", .place = {464, 224, 88, 28}},
    {.name = "closeMark", .kind = closeMark, .caption = "Close", .place = {531, 1, 36, 27}},
};
constexpr Rect96 kFrmEditRules[] = {{1, 28, 566, 1}, {16, 212, 536, 1}};

}  // namespace

const FormLayout kForm1{.name = "Form1",
                        .title = "Pelvaro",
                        .width = 376,
                        .height = 412,
                        .controls = kForm1Controls,
                        .rules = kForm1Rules,
                        .firstFocus = "ListView1"};
const FormLayout kForm2{.name = "Form2",
                        .title = "Pelvaro - Connection",
                        .width = 456,
                        .height = 432,
                        .controls = kForm2Controls,
                        .rules = kForm2Rules,
                        .defaultButton = "Command1",
                        .firstFocus = "Text1"};
const FormLayout kForm3{.name = "Form3",
                        .title = "Pelvaro - Operators",
                        .width = 600,
                        .height = 364,
                        .controls = kForm3Controls,
                        .rules = kForm3Rules,
                        .firstFocus = "Combo1"};
const FormLayout kForm4{.name = "Form4",
                        .title = "Pelvaro - Connect",
                        .width = 360,
                        .height = 172,
                        .controls = kForm4Controls,
                        .rules = kForm4Rules,
                        .defaultButton = "Command1",
                        .firstFocus = "Text1"};
const FormLayout kForm5{.name = "Form5",
                        .title = "Pelvaro",
                        .width = 280,
                        .height = 148,
                        .controls = kForm5Controls,
                        .rules = kForm5Rules,
                        .firstFocus = "closeMark"};
const FormLayout kForm6{.name = "Form6",
                        .title = "Pelvaro - Limitation",
                        .width = 304,
                        .height = 168,
                        .controls = kForm6Controls,
                        .rules = kForm6Rules,
                        .defaultButton = "Command1",
                        .firstFocus = "Option1"};
const FormLayout kFrmStatus{.name = "frmStatus",
                            .title = "Connection",
                            .width = 328,
                            .height = 148,
                            .controls = kFrmStatusControls,
                            .rules = kFrmStatusRules,
                            .defaultButton = "Command1",
                            .firstFocus = "Command1"};

const FormLayout kFrmDriver{.name = "frmDriver",
                            .title = "Pelvaro - Drivers",
                            .width = 376,
                            .height = 232,
                            .controls = kFrmDriverControls,
                            .rules = kFrmDriverRules,
                            .defaultButton = "Command1",
                            .firstFocus = "Combo1"};

const FormLayout kFrmEdit{.name = "frmEdit",
                          .title = "Pelvaro - Edit",
                          .width = 568,
                          .height = 268,
                          .controls = kFrmEditControls,
                          .rules = kFrmEditRules,
                          .defaultButton = "Command1",
                          .firstFocus = "Text1(0)"};

}  // namespace pelvaro::layouts
