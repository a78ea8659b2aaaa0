// The real serial port on whatever stands at COM12 to COM14: scripts/with_phones.sh puts a phone on the first, takes
// the second and makes the third one no serial port. Without it only ports that do not exist are tried.
#include "platform/win32/serial_port.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "base/runtime_error.h"
#include "base/text.h"
#include "platform/win32/windows_header.h"

namespace pelvaro::win32 {
namespace {

constexpr const char* kSettings = "115200,N,8,1";
constexpr const char* kPhoneName = "\\\\.\\COM12";
constexpr int kPhone = 12, kOccupied = 13, kNoSerialPort = 14;
constexpr DWORD kPatience = 5000;  // milliseconds

// The number of the run-time error that something throws, 0 for none.
template <typename Action>
int errorOf(Action action) {
  try {
    action();
  } catch (const RuntimeError& error) {
    EXPECT_NE(error.description(), "");
    return error.number();
  }
  return 0;
}

bool isOpen(SerialPort& port) {
  return errorOf([&] { port.read(); }) != 8018;
}

template <typename Condition>
bool comes(Condition condition) {
  for (const DWORD start = ::GetTickCount(); ::GetTickCount() - start < kPatience; ::Sleep(1)) {
    if (condition()) return true;
  }
  return false;
}

TEST(AbsentPort, CannotBeOpened) {
  SystemSerialPort port;
  for (const int number : {0, -1, 99, 32767}) {
    EXPECT_FALSE(port.canOpen("\\\\.\\COM" + std::to_string(number))) << number;
    EXPECT_EQ(errorOf([&] { port.open(number, kSettings); }), 8002) << number;
    EXPECT_FALSE(isOpen(port));
  }
  EXPECT_FALSE(port.canOpen(""));
  EXPECT_FALSE(port.canOpen("\\\\.\\no such device"));
}

TEST(ClosedPort, IsNeitherReadNorWrittenAndClosesAsOftenAsAsked) {
  SystemSerialPort port;
  EXPECT_EQ(errorOf([&] { port.read(); }), 8018);
  EXPECT_EQ(errorOf([&] { port.write("AT\r\n"); }), 8018);
  port.close();
  port.close();
}

TEST(HandleOfThePort, IsClosedOnce) {
  const HANDLE raw = ::CreateEventA(nullptr, FALSE, FALSE, nullptr);
  DWORD flags = 0;
  {
    Handle handle(raw);
    EXPECT_TRUE(::GetHandleInformation(raw, &flags));
  }
  EXPECT_FALSE(::GetHandleInformation(raw, &flags));
  Handle none;
}

struct PortWithAPhone : testing::Test {
  SystemSerialPort port;
  const char* control = std::getenv("PELVARO_CONTROL");

  void SetUp() override {
    if (!control) GTEST_SKIP() << "no phones here";
  }
  void tell(const std::string& command) { std::ofstream(control, std::ios::binary) << command << '\n'; }
  // Reads until the text is there, or for long enough.
  std::string readUntil(const std::string& end) {
    std::string text;
    comes([&] { return contains(text += port.read(), end); });
    return text;
  }
};

TEST_F(PortWithAPhone, CanBeOpened) {
  EXPECT_TRUE(port.canOpen(kPhoneName));
  EXPECT_FALSE(isOpen(port)) << "it was closed again";
}

TEST_F(PortWithAPhone, CarriesTheDialogueByteForByte) {
  port.open(kPhone, kSettings);
  EXPECT_TRUE(isOpen(port));
  port.write("AT\r\n");
  EXPECT_EQ(readUntil("OK\r\n"), "AT\r\r\nOK\r\n");
  port.write("AT+cgmi\r\n");
  EXPECT_EQ(readUntil("OK\r\n"), "AT+cgmi\r\r\nNokia\r\n\r\nOK\r\n");
  port.close();
  EXPECT_FALSE(isOpen(port));
}

TEST_F(PortWithAPhone, CanBeOpenedAgainAndBeginsAfresh) {
  for (int i = 0; i < 20; ++i) {
    port.open(kPhone, kSettings);
    port.write("AT+cgmi\r\n");
    EXPECT_TRUE(contains(readUntil("Nokia"), "AT+cgmi\r\r\nNokia")) << "turn " << i;
    port.close();
  }
}

TEST_F(PortWithAPhone, IsOpenedOnce) {
  port.open(kPhone, kSettings);
  EXPECT_EQ(errorOf([&] { port.open(kPhone, kSettings); }), 8005);
  EXPECT_TRUE(isOpen(port)) << "the first opening stays";
  port.write("AT\r\n");
  EXPECT_EQ(readUntil("OK\r\n"), "AT\r\r\nOK\r\n");
}

TEST_F(PortWithAPhone, ReadsWithoutWaiting) {
  port.open(kPhone, kSettings);
  const DWORD start = ::GetTickCount();
  for (int i = 0; i < 1000; ++i) EXPECT_EQ(port.read(), "");
  EXPECT_LT(::GetTickCount() - start, 2000u);
}

TEST_F(PortWithAPhone, GivesAllThatIsWaitingInOneRead) {
  port.open(kPhone, kSettings);
  const std::string text = std::string(3000, 'x') + "\xE4\xFF\x7F.";
  tell("say COM12 " + text);
  const Handle other(
      ::CreateFileA(kPhoneName, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(comes([&] {
    DWORD errors = 0;
    COMSTAT state{};
    return ::ClearCommError(other.get(), &errors, &state) && state.cbInQue == text.size() + 4;
  }));
  EXPECT_EQ(port.read(), "\r\n" + text + "\r\n");
  EXPECT_EQ(port.read(), "");
}

TEST_F(PortWithAPhone, IsSetAsAskedFor) {
  port.open(kPhone, "9600,E,7,2");
  const Handle other(
      ::CreateFileA(kPhoneName, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr));
  DCB state{};
  state.DCBlength = sizeof state;
  ASSERT_TRUE(::GetCommState(other.get(), &state));
  EXPECT_EQ(state.BaudRate, 9600u);
  EXPECT_EQ(state.StopBits, TWOSTOPBITS);
  port.close();
  port.open(kPhone, kSettings);
  ASSERT_TRUE(::GetCommState(other.get(), &state));
  EXPECT_EQ(state.BaudRate, 115200u);
  EXPECT_EQ(state.Parity, NOPARITY);
  EXPECT_EQ(state.ByteSize, 8);
  EXPECT_EQ(state.StopBits, ONESTOPBIT);
}

TEST_F(PortWithAPhone, WithSettingsThatAreNoneStaysClosed) {
  for (const char* settings : {"fast", "115200,Q,8,1"}) {
    EXPECT_EQ(errorOf([&] { port.open(kPhone, settings); }), 380) << settings;
    EXPECT_FALSE(isOpen(port)) << settings;
  }
  port.open(kPhone, kSettings);
}

TEST_F(PortWithAPhone, ThatAnotherProgramHasCannotBeOpened) {
  const std::string name = "\\\\.\\COM" + std::to_string(kOccupied);
  ASSERT_TRUE(comes([&] { return errorOf([&] { port.open(kOccupied, kSettings); }) == 8005; }));
  EXPECT_FALSE(port.canOpen(name));
  EXPECT_FALSE(isOpen(port));
}

TEST_F(PortWithAPhone, ADeviceThatIsNoSerialPortIsAnErrorAndStaysClosed) {
  EXPECT_TRUE(port.canOpen("\\\\.\\COM" + std::to_string(kNoSerialPort)));
  EXPECT_EQ(errorOf([&] { port.open(kNoSerialPort, kSettings); }), 8021);
  EXPECT_FALSE(isOpen(port));
}

// The last ones: they pull the cable.
struct PulledCable : PortWithAPhone {
  void SetUp() override {
    PortWithAPhone::SetUp();
    if (IsSkipped()) return;
    if (!port.canOpen(kPhoneName)) plug();
    port.open(kPhone, kSettings);
  }
  void TearDown() override {
    if (control) plug();
  }
  void plug() {
    tell("plug COM12 nokia");
    EXPECT_TRUE(comes([&] { return port.canOpen(kPhoneName); }));
  }
  void pull() {
    tell("unplug COM12");
    EXPECT_TRUE(comes([&] { return !port.canOpen(kPhoneName); }));
  }
};

TEST_F(PulledCable, IsNoticedWhileNothingIsWritten) {
  EXPECT_EQ(port.read(), "");
  pull();
  int error = 0;
  EXPECT_TRUE(comes([&] { return (error = errorOf([&] { port.read(); })) != 0; }));
  EXPECT_EQ(error, 8020);
  EXPECT_TRUE(isOpen(port)) << "until it is closed";
  port.close();
  EXPECT_EQ(errorOf([&] { port.open(kPhone, kSettings); }), 8002);
}

TEST_F(PulledCable, IsNoticedByAWrite) {
  pull();
  EXPECT_EQ(errorOf([&] {
              comes([&] {
                port.write("AT\r\n");
                return false;
              });
            }),
            8020);
}

TEST_F(PulledCable, PluggedInAgainTheOpenPortStaysDeadAndANewOpeningWorks) {
  pull();
  plug();
  EXPECT_EQ(errorOf([&] { port.read(); }), 8020);
  port.close();
  port.open(kPhone, kSettings);
  port.write("AT\r\n");
  EXPECT_EQ(readUntil("OK\r\n"), "AT\r\r\nOK\r\n");
}

}  // namespace
}  // namespace pelvaro::win32
