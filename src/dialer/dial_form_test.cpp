#include "dialer/dial_form.h"

#include <cstdlib>
#include <new>

#include "dialer/fake_dialer.h"

// Blocks of memory can be watched: whether they held nothing but zeros when they were freed.
namespace {

constexpr std::size_t kMostWatched = 8;
struct Watched {
  void* block;
  std::size_t size;
  bool freed, zeros;
};
Watched watched[kMostWatched];
std::size_t watchedCount = 0;

void watch(void* block, std::size_t size) {
  if (watchedCount < kMostWatched) watched[watchedCount++] = {block, size, false, false};
}

void noteFreed(void* block) {
  for (std::size_t i = 0; i < watchedCount; ++i) {
    Watched& w = watched[i];
    if (w.block != block || w.freed) continue;
    w.freed = w.zeros = true;
    const volatile unsigned char* bytes = static_cast<unsigned char*>(block);
    for (std::size_t at = 0; at < w.size; ++at) {
      if (bytes[at] != 0) w.zeros = false;
    }
  }
}

}  // namespace

// Not inlined: the compiler would take free() of what new gave for a mistake.
[[gnu::noinline]] void* operator new(std::size_t size) {
  if (void* block = std::malloc(size ? size : 1)) return block;
  throw std::bad_alloc();
}
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return std::malloc(size ? size : 1);
}
[[gnu::noinline]] void operator delete(void* block) noexcept {
  noteFreed(block);
  std::free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept {
  noteFreed(block);
  std::free(block);
}

namespace pelvaro {
namespace {

using fake::Lines;
using Buffer = std::vector<std::uint8_t>;

// The service: saved parameters for every entry with a name, 623 for the empty name at one size, a dial accepted.
struct DialFormTest : fake::DialerTest {
  std::uint32_t savedResult = 0;
  std::uint32_t takenSize = 1060;  // the size that answers the empty name with 623; 0 for none
  std::uint32_t dialResult = 0;
  RasHandle dialHandle = 77;
  Buffer dialed;
  RasHandle handleAtDial = 1;

  void SetUp() override {
    watchedCount = 0;
    ras.onDialParams = [this](void* params, std::int32_t*) -> std::uint32_t {
      auto* bytes = static_cast<std::uint8_t*>(params);
      const std::uint32_t size = get32({bytes, 4}, 0);
      if (bytes[4] == 0) return size == takenSize ? 623 : 632;
      watch(params, size);
      std::fill_n(bytes + 300, 500, std::uint8_t{'S'});  // saved user name, password and the like
      return savedResult;
    };
    ras.onDial = [this](void* params, RasHandle* connection) {
      auto* bytes = static_cast<std::uint8_t*>(params);
      dialed.assign(bytes, bytes + get32({bytes, 4}, 0));
      watch(params, dialed.size());
      handleAtDial = *connection;
      *connection = dialHandle;
      return dialResult;
    };
  }
};

TEST_F(DialFormTest, LoadingMakesTheWindowAndHooksItOnce) {
  form.load();
  form.load();
  EXPECT_EQ(journal.take(),
            (Lines{"CreateWindow 501", "SetWindowProc 501 hook", "RegisterWindowMessage RasDialEvent"}));
  EXPECT_TRUE(form.loaded());
}

TEST_F(DialFormTest, UnloadingUnhooksThenDestroysAndKeepsTheMembers) {
  form.load();
  form.lngHConn = 7;
  form.lastResult = 8;
  journal.take();
  form.unload();
  form.unload();
  EXPECT_EQ(journal.take(), (Lines{"SetWindowProc 501 1501", "DestroyWindow 501"}));
  EXPECT_FALSE(form.loaded());
  EXPECT_EQ(form.lngHConn, 7u);
  EXPECT_EQ(form.lastResult, 8u);
}

TEST_F(DialFormTest, LoadingAgainHooksTheNewWindowWithoutRegisteringAnew) {
  form.load();
  form.unload();
  journal.take();
  form.load();
  EXPECT_EQ(journal.take(), (Lines{"CreateWindow 502", "SetWindowProc 502 hook"}));
}

TEST_F(DialFormTest, EndOfAFormTakesItsWindowAway) {
  {
    frmDial another(context);
    another.load();
    journal.take();
  }
  EXPECT_EQ(journal.take(), (Lines{"SetWindowProc 501 1501", "DestroyWindow 501"}));
}

TEST_F(DialFormTest, DialYieldsReadsProbesAndDials) {
  EXPECT_EQ(form.VBAsyncronousDial(nullptr, "Corvanti-Home"), 77u);
  EXPECT_EQ(journal.take(), (Lines{"CreateWindow 501", "SetWindowProc 501 hook", "RegisterWindowMessage RasDialEvent",
                                   "Yield", "RasGetEntryDialParams null 1060 \"Corvanti-Home\"",
                                   "RasGetEntryDialParams null 1060 \"\"", "RasDial null 4294967295 501 0"}));
  EXPECT_EQ(form.lngHConn, 77u);
  EXPECT_EQ(form.lastResult, 0u);
  EXPECT_TRUE(context.connected);
  EXPECT_EQ(context.lastDialResult, "0");
  EXPECT_TRUE(form.loaded());
}

TEST_F(DialFormTest, RecordHoldsTheSelectionAndThePromptsBoxesOnly) {
  form.VBAsyncronousDial(nullptr, "Corvanti-Home");
  Buffer expected(1060);
  const auto put = [&](std::size_t offset, const std::string& text) {
    std::copy(text.begin(), text.end(), expected.begin() + static_cast<std::ptrdiff_t>(offset));
  };
  put(0, "\x24\x04");
  put(4, "Corvanti-Home");
  put(519, "user");
  put(776, "pass");
  EXPECT_EQ(dialed, expected);
}

TEST_F(DialFormTest, OldestRecordIsDialedWhenOnlyItsSizeIsTaken) {
  takenSize = 816;
  form.VBAsyncronousDial(nullptr, "Corvanti-Home");
  Buffer expected(816);
  const auto put = [&](std::size_t offset, const std::string& text) {
    std::copy(text.begin(), text.end(), expected.begin() + static_cast<std::ptrdiff_t>(offset));
  };
  put(0, "\x30\x03");
  put(4, "Corvanti-Home");
  put(283, "user");
  put(540, "pass");
  EXPECT_EQ(dialed, expected);
  EXPECT_EQ(journal.take().back(), "RasDial null 4294967295 501 0");
}

TEST_F(DialFormTest, NoSizeWith623DialsTheBufferAsItWasRead) {
  takenSize = 0;
  EXPECT_EQ(form.VBAsyncronousDial(nullptr, "Corvanti-Home"), 77u);
  Buffer expected(1060);
  expected[0] = 0x24, expected[1] = 0x04;
  const std::string name = "Corvanti-Home";
  std::copy(name.begin(), name.end(), expected.begin() + 4);
  std::fill_n(expected.begin() + 300, 500, std::uint8_t{'S'});
  EXPECT_EQ(dialed, expected);
  EXPECT_EQ(journal.take(), (Lines{"CreateWindow 501", "SetWindowProc 501 hook", "RegisterWindowMessage RasDialEvent",
                                   "Yield", "RasGetEntryDialParams null 1060 \"Corvanti-Home\"",
                                   "RasGetEntryDialParams null 1060 \"\"", "RasGetEntryDialParams null 1052 \"\"",
                                   "RasGetEntryDialParams null 816 \"\"", "RasDial null 4294967295 501 0"}));
}

TEST_F(DialFormTest, PhonebookGoesToTheReadAndTheDialAndNotToTheProbe) {
  form.VBAsyncronousDial("book", "Home");
  const Lines lines = journal.take();
  ASSERT_GE(lines.size(), 7u);
  EXPECT_EQ((Lines(lines.begin() + 4, lines.end())),
            (Lines{"RasGetEntryDialParams \"book\" 1060 \"Home\"", "RasGetEntryDialParams null 1060 \"\"",
                   "RasDial \"book\" 4294967295 501 0"}));
}

TEST_F(DialFormTest, ArgumentNamesTheSavedParametersAndTheSelectionNamesTheDial) {
  loop.onYield = [this] {
    screen.selected = "Corvanti-Other";
    screen.user = "other user";
    screen.pass = "other pass";
  };
  form.VBAsyncronousDial(nullptr, "Corvanti-Home");
  EXPECT_EQ(journal.take()[4], "RasGetEntryDialParams null 1060 \"Corvanti-Home\"");
  EXPECT_STREQ(reinterpret_cast<const char*>(dialed.data() + 4), "Corvanti-Other");
  EXPECT_STREQ(reinterpret_cast<const char*>(dialed.data() + 519), "other user");
  EXPECT_STREQ(reinterpret_cast<const char*>(dialed.data() + 776), "other pass");
}

TEST_F(DialFormTest, SelectionGoneInTheYieldDialsTheEmptyName) {
  loop.onYield = [this] { screen.selected.clear(); };
  EXPECT_EQ(form.VBAsyncronousDial(nullptr, "Corvanti-Home"), 77u);
  EXPECT_EQ((Buffer(dialed.begin() + 4, dialed.begin() + 519)), Buffer(515));
  EXPECT_STREQ(reinterpret_cast<const char*>(dialed.data() + 519), "user");
}

TEST_F(DialFormTest, FlagAndLastResultAreClearedBeforeTheYield) {
  context.connected = true;
  context.lastDialResult = "691";
  bool ran = false;
  loop.onYield = [&] {
    ran = true;
    EXPECT_FALSE(context.connected);
    EXPECT_EQ(context.lastDialResult, "");
  };
  form.VBAsyncronousDial(nullptr, "Home");
  EXPECT_TRUE(ran);
}

TEST_F(DialFormTest, FormUnloadedInTheYieldIsLoadedAndHookedAgainBeforeTheDial) {
  form.load();
  journal.take();
  loop.onYield = [this] { form.unload(); };
  EXPECT_EQ(form.VBAsyncronousDial(nullptr, "Home"), 77u);
  EXPECT_EQ(journal.take(), (Lines{"Yield", "SetWindowProc 501 1501", "DestroyWindow 501",
                                   "RasGetEntryDialParams null 1060 \"Home\"", "RasGetEntryDialParams null 1060 \"\"",
                                   "CreateWindow 502", "SetWindowProc 502 hook", "RasDial null 4294967295 502 0"}));
  EXPECT_TRUE(form.loaded());
}

TEST_F(DialFormTest, DialAfterAFailureLoadsAndHooksTheFormAgain) {
  form.VBAsyncronousDial(nullptr, "Home");
  windows.send(501, 50000, 0, 691);
  ASSERT_FALSE(form.loaded());
  journal.take();
  form.VBAsyncronousDial(nullptr, "Home");
  EXPECT_EQ(journal.take(),
            (Lines{"CreateWindow 502", "SetWindowProc 502 hook", "Yield", "RasGetEntryDialParams null 1060 \"Home\"",
                   "RasGetEntryDialParams null 1060 \"\"", "RasDial null 4294967295 502 0"}));
}

TEST_F(DialFormTest, UnreadableParametersEndSilentlyAndKeepTheFormAndItsHandle) {
  savedResult = 623;
  form.lngHConn = 55;
  form.lastResult = 6;
  context.connected = true;
  context.lastDialResult = "6";
  EXPECT_EQ(form.VBAsyncronousDial(nullptr, "Home"), 0u);
  EXPECT_EQ(journal.take(),
            (Lines{"CreateWindow 501", "SetWindowProc 501 hook", "RegisterWindowMessage RasDialEvent", "Yield",
                   "RasGetEntryDialParams null 1060 \"Home\"", "RasGetEntryDialParams null 1052 \"Home\"",
                   "RasGetEntryDialParams null 816 \"Home\""}));
  EXPECT_EQ(form.lngHConn, 55u);
  EXPECT_EQ(form.lastResult, 6u);
  EXPECT_TRUE(form.loaded());
  EXPECT_FALSE(context.connected);
  EXPECT_EQ(context.lastDialResult, "");
}

TEST_F(DialFormTest, RefusedDialShowsNothingAndHangsNothingUp) {
  dialResult = 756;
  dialHandle = 78;
  EXPECT_EQ(form.VBAsyncronousDial(nullptr, "Home"), 78u);
  EXPECT_EQ(journal.take(),
            (Lines{"CreateWindow 501", "SetWindowProc 501 hook", "RegisterWindowMessage RasDialEvent", "Yield",
                   "RasGetEntryDialParams null 1060 \"Home\"", "RasGetEntryDialParams null 1060 \"\"",
                   "RasDial null 4294967295 501 0", "RasGetErrorString 756 512"}));
  EXPECT_EQ(form.lngHConn, 78u);
  EXPECT_EQ(form.lastResult, 756u);
  EXPECT_TRUE(form.loaded());
  EXPECT_FALSE(context.connected);
  EXPECT_EQ(context.lastDialResult, "756");
}

TEST_F(DialFormTest, RefusedDialWithASystemCodeLooksItUpAsSuch) {
  dialResult = 5;
  form.VBAsyncronousDial(nullptr, "Home");
  EXPECT_EQ(journal.take().back(), "FormatMessage 4096 5 0 512");
  EXPECT_EQ(context.lastDialResult, "5");
}

TEST_F(DialFormTest, HandleIsZeroWhenTheServiceIsCalled) {
  form.lngHConn = 55;
  form.VBAsyncronousDial(nullptr, "Home");
  EXPECT_EQ(handleAtDial, 0u);
  EXPECT_EQ(form.lngHConn, 77u);
}

TEST_F(DialFormTest, ServiceThatWritesNoHandleGivesZero) {
  ras.onDial = [](void*, RasHandle*) { return 0u; };
  form.lngHConn = 55;
  EXPECT_EQ(form.VBAsyncronousDial(nullptr, "Home"), 0u);
  EXPECT_EQ(form.lngHConn, 0u);
  EXPECT_TRUE(context.connected);
}

TEST_F(DialFormTest, SecondDialWhileOneIsUnderWayIsNotPrevented) {
  form.VBAsyncronousDial(nullptr, "Home");
  dialHandle = 79;
  EXPECT_EQ(form.VBAsyncronousDial(nullptr, "Home"), 79u);
  EXPECT_EQ(form.lngHConn, 79u);
}

TEST_F(DialFormTest, EventInsideTheDialCallReachesTheForm) {
  ras.onDial = [this](void*, RasHandle* connection) {
    *connection = 80;
    windows.send(501, 50000, 0, 633);
    return 0u;
  };
  EXPECT_EQ(form.VBAsyncronousDial(nullptr, "Home"), 80u);
  const Lines lines = journal.take();
  ASSERT_GE(lines.size(), 7u);
  EXPECT_EQ((Lines(lines.begin() + 7, lines.end())),
            (Lines{"progress Opening port...", "Timer2 off", "RasGetErrorString 633 512", "SetWindowProc 501 1501",
                   "DestroyWindow 501", "RasHangUp 80", "progress Fail to connect", "Retry",
                   "CallWindowProc 1501 501 50000 0 633"}));
}

TEST_F(DialFormTest, EndOfTheProgramInTheYieldUnwinds) {
  loop.onYield = [this] { loop.end(); };
  EXPECT_THROW(form.VBAsyncronousDial(nullptr, "Home"), ProgramEnded);
  EXPECT_EQ(journal.take().back(), "End");
}

TEST_F(DialFormTest, BuffersOfADialAreZeroWhenTheyAreFreed) {
  form.VBAsyncronousDial(nullptr, "Home");
  ASSERT_EQ(watchedCount, 2u);  // the saved parameters, the record that was dialed
  for (std::size_t i = 0; i < watchedCount; ++i) {
    EXPECT_TRUE(watched[i].freed) << i;
    EXPECT_TRUE(watched[i].zeros) << i;
  }
}

TEST_F(DialFormTest, BufferDialedAsItWasReadIsZeroWhenItIsFreed) {
  takenSize = 0;
  form.VBAsyncronousDial(nullptr, "Home");
  ASSERT_EQ(watchedCount, 2u);  // the same block when it was read and when it was dialed
  EXPECT_EQ(watched[0].block, watched[1].block);
  EXPECT_TRUE(watched[0].freed);
  EXPECT_TRUE(watched[0].zeros);
}

TEST_F(DialFormTest, BuffersOfUnreadableParametersAreZeroWhenTheyAreFreed) {
  savedResult = 623;
  form.VBAsyncronousDial(nullptr, "Home");
  ASSERT_EQ(watchedCount, 3u);
  for (std::size_t i = 0; i < watchedCount; ++i) {
    EXPECT_TRUE(watched[i].freed) << i;
    EXPECT_TRUE(watched[i].zeros) << i;
  }
}

// A prompt whose password is watched on its way through the dial.
struct WatchedScreen : fake::FakeScreen {
  using FakeScreen::FakeScreen;
  std::string password() override {
    std::string copy = pass;
    watch(copy.data(), copy.size());
    return copy;
  }
};

TEST_F(DialFormTest, PasswordTakenFromThePromptIsZeroWhenItIsFreed) {
  WatchedScreen prompt(journal);
  prompt.pass = "a password that is too long to lie inside its string";
  DialContext watchedContext{ras, windows, loop, prompt};
  frmDial watchedForm(watchedContext);
  watchedForm.VBAsyncronousDial(nullptr, "Home");
  ASSERT_EQ(watchedCount, 3u);  // the saved parameters, the password, the record that was dialed
  EXPECT_TRUE(watched[1].freed);
  EXPECT_TRUE(watched[1].zeros);
}

TEST_F(DialFormTest, BoxesOfThePromptStayAsTheyAre) {
  form.VBAsyncronousDial(nullptr, "Home");
  EXPECT_EQ(screen.user, "user");
  EXPECT_EQ(screen.pass, "pass");
}

}  // namespace
}  // namespace pelvaro
