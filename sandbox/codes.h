// The result codes and connection states that the practice line gives, by the numbers of winerror.h, raserror.h and
// ras.h, and the credentials that its network accepts.
#pragma once

#include <cstdint>

namespace pelvaro::line {

// What a person types to get through: run scripts print these two.
constexpr char kPracticeUser[] = "guest";
constexpr char kPracticePassword[] = "practice";

// What stands for a saved password when dial parameters are read.
constexpr char kMaskedPassword[] = "****************";

enum Code : std::uint32_t {
  kSuccess = 0,
  kInvalidHandle = 6,
  kInvalidParameter = 87,
  kInsufficientBuffer = 122,
  kInvalidName = 123,
  kAlreadyExists = 183,
  kBufferTooSmall = 603,
  kPortDisconnected = 619,
  kCannotOpenPhonebook = 621,
  kCannotFindEntry = 623,
  kCannotWritePhonebook = 624,
  kRemoteDisconnection = 629,
  kInvalidSize = 632,
  kPortNotAvailable = 633,
  kLineBusy = 676,
  kVoiceAnswer = 677,
  kNoAnswer = 678,
  kNoCarrier = 679,
  kNoDialtone = 680,
  kAuthenticationFailure = 691,
  kPortOrDevice = 692,
  kPppTimeout = 718,
  kDialInProgress = 756,
  kDeviceNotFound = 797,
};

// RASCS_*, the states of a connection in the order in which a dial passes through them.
enum State : std::uint32_t {
  kOpenPort = 0,
  kPortOpened = 1,
  kConnectDevice = 2,
  kDeviceConnected = 3,
  kAllDevicesConnected = 4,
  kAuthenticate = 5,
  kAuthenticated = 14,
  kProjected = 18,
  kLogonNetwork = 21,
  kInteractive = 0x1000,
  kConnected = 0x2000,
  kDisconnected = 0x2001,
};

}  // namespace pelvaro::line
