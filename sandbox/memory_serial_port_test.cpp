#include "memory_serial_port.h"

#include "allocation_count.h"
#include "base/runtime_error.h"
#include "line_fixture.h"
#include "practice_phone.h"

namespace pelvaro::line {
namespace {

constexpr char kSettings[] = "115200,N,8,1";

// The program's port beside the dial line, on the same phones.
class MemorySerialPortTest : public LineTest {
 protected:
  bool canOpen(int number) { return port_.canOpen("\\\\.\\COM" + std::to_string(number)); }
  void open(int number) { port_.open(number, kSettings); }
  static PhoneTable slowPhone() {
    PhoneTable slow = practicePhone("nokia");
    slow.pace = 5;
    return slow;
  }
  // The number of the run-time error that the action ends with, 0 without one.
  template <class Action>
  static int errorOf(Action action) {
    try {
      action();
    } catch (const RuntimeError& error) {
      return error.number();
    }
    return 0;
  }

  MemorySerialPort port_{ports_};
};

TEST_F(MemorySerialPortTest, TalksToThePhoneOnItsPort) {
  ports_.plug("COM16", practicePhone("nokia"));
  open(16);
  EXPECT_EQ(port_.read(), "");
  port_.write("AT\r\n");
  EXPECT_EQ(port_.read(), "AT\r\r\nOK\r\n");
  EXPECT_EQ(port_.read(), "");
  port_.write("AT+cg");
  EXPECT_EQ(port_.read(), "");
  port_.write("mi\r\n");
  EXPECT_EQ(port_.read(), "AT+cgmi\r\r\nNokia\r\n\r\nOK\r\n");
}

TEST_F(MemorySerialPortTest, OnlyAPluggedFreePortCanBeOpened) {
  for (int number = 3; number <= 16; ++number) EXPECT_EQ(canOpen(number), number == 5 || number == 7) << number;
  EXPECT_FALSE(port_.canOpen("COM5")) << "not the whole name of a device";
  EXPECT_FALSE(port_.canOpen("\\\\.\\COM"));
  ports_.occupy("COM5", true);
  EXPECT_FALSE(canOpen(5));
  EXPECT_EQ(errorOf([&] { open(5); }), 8005);
  ports_.occupy("COM5", false);
  EXPECT_TRUE(canOpen(5));
  EXPECT_EQ(errorOf([&] { open(4); }), 8002);
  EXPECT_EQ(errorOf([&] { port_.write("AT\r\n"); }), 8018) << "a failed opening opens nothing";
}

TEST_F(MemorySerialPortTest, IsOpenOnce) {
  open(5);
  EXPECT_FALSE(canOpen(5));
  EXPECT_EQ(errorOf([&] { open(7); }), 8005);
  port_.close();
  EXPECT_TRUE(canOpen(5));
  EXPECT_EQ(errorOf([&] { open(7); }), 0);
}

TEST_F(MemorySerialPortTest, AClosedPortNeitherReadsNorWrites) {
  port_.close();
  EXPECT_EQ(errorOf([&] { port_.read(); }), 8018);
  EXPECT_EQ(errorOf([&] { port_.write("AT\r\n"); }), 8018);
}

TEST_F(MemorySerialPortTest, WhatWasSaidBeforeItWasOpenedIsForgotten) {
  ports_.say("COM5", "RING");
  open(5);
  EXPECT_EQ(port_.read(), "");
  port_.write("AT\r\n");
  port_.close();
  open(5);
  EXPECT_EQ(port_.read(), "");
}

TEST_F(MemorySerialPortTest, APulledCableIsARunTimeErrorUntilThePortIsOpenedAnew) {
  open(5);
  port_.write("AT\r\n");
  ports_.unplug("COM5");
  EXPECT_FALSE(canOpen(5));
  EXPECT_EQ(errorOf([&] { port_.read(); }), 8020) << "what it had said is gone too";
  EXPECT_EQ(errorOf([&] { port_.write("AT\r\n"); }), 8020);
  ports_.plug("COM5", practicePhone("nokia"));
  EXPECT_EQ(errorOf([&] { port_.read(); }), 8020) << "the phone is on another cable now";
  EXPECT_TRUE(canOpen(5));
  port_.close();
  open(5);
  port_.write("AT\r\n");
  EXPECT_EQ(port_.read(), "AT\r\r\nOK\r\n");
}

TEST_F(MemorySerialPortTest, APortIsTakenWhileAConnectionHasIt) {
  ASSERT_EQ(dial(params("Work")), kSuccess);
  settle();
  ASSERT_EQ(connected(), std::vector<std::string>{"Work"});
  EXPECT_FALSE(canOpen(5));
  EXPECT_EQ(errorOf([&] { open(5); }), 8005);
  EXPECT_TRUE(canOpen(7));
  EXPECT_EQ(line_.hangUp(handle_), kSuccess);
  EXPECT_TRUE(canOpen(5));
}

TEST_F(MemorySerialPortTest, AConnectionFindsThePortTakenByTheProgram) {
  open(5);
  ASSERT_EQ(dial(params("Work")), kSuccess);
  settle();
  EXPECT_EQ(told_.back(), (Told{kWindow, kOpenPort, kPortNotAvailable}));
  port_.close();
  EXPECT_EQ(line_.hangUp(handle_), kSuccess);
  ASSERT_EQ(dial(params("Work")), kSuccess);
  settle();
  EXPECT_EQ(connected(), std::vector<std::string>{"Work"});
}

TEST_F(MemorySerialPortTest, AThousandLooksAtASilentPhoneTakeNoMemory) {
  ports_.plug("COM5", practicePhone("silent"));
  open(5);
  port_.write("AT\r\n");
  const std::uint64_t before = allocationCount();
  for (int i = 0; i < 1000; ++i) ASSERT_TRUE(port_.read().empty());
  EXPECT_EQ(allocationCount(), before);
}

TEST_F(MemorySerialPortTest, ASlowPhoneSaysAByteInItsTime) {
  std::uint64_t now = 1000;
  ports_.setClock([&now] { return now; });
  ports_.plug("COM5", slowPhone());
  open(5);
  port_.write("AT\r\n");
  const std::string all = "AT\r\r\nOK\r\n";
  EXPECT_EQ(port_.read(), all.substr(0, 1));
  EXPECT_EQ(port_.read(), "") << "no time has passed";
  now += 4;
  EXPECT_EQ(port_.read(), "");
  std::string heard = all.substr(0, 1);
  for (++now; heard.size() < all.size(); now += 5) {
    const std::string byte = port_.read();
    ASSERT_EQ(byte.size(), 1u);
    heard += byte;
  }
  EXPECT_EQ(heard, all);
  EXPECT_EQ(port_.read(), "");
  port_.write("AT\r\n");
  now += 1000;
  EXPECT_EQ(port_.read(), "A") << "one byte, however long nobody asked";
}

TEST_F(MemorySerialPortTest, WithoutAClockTimePassesByReading) {
  ports_.plug("COM5", slowPhone());
  open(5);
  port_.write("AT+cgmi\r\n");
  const std::string all = "AT+cgmi\r\r\nNokia\r\n\r\nOK\r\n";
  std::string heard;
  int reads = 0;
  for (; heard.size() < all.size() && reads < 1000; ++reads) heard += port_.read();
  EXPECT_EQ(heard, all);
  EXPECT_EQ(reads, static_cast<int>(all.size() - 1) * 5 + 1);
}

TEST_F(MemorySerialPortTest, ASlowPhoneCanBeDialed) {
  ports_.setClock([this] { return now_; });
  ports_.plug("COM5", slowPhone());
  ASSERT_EQ(dial(params("Work")), kSuccess);
  settle();
  EXPECT_EQ(connected(), std::vector<std::string>{"Work"});
}

}  // namespace
}  // namespace pelvaro::line
