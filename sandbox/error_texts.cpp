#include "error_texts.h"

#include <algorithm>
#include <iterator>

namespace pelvaro::line {
namespace {

struct CodeText {
  std::uint32_t code;
  const char* text;
};

// In the order of the codes.
constexpr CodeText kErrors[] = {
    {600, "An operation is pending."},
    {601, "The port handle is invalid."},
    {602, "The port is already open."},
    {603, "Caller's buffer is too small."},
    {604, "Wrong information specified."},
    {605, "Cannot set port information."},
    {606, "The port is not connected."},
    {607, "The event is invalid."},
    {608, "The device does not exist."},
    {609, "The device type does not exist."},
    {610, "The buffer is invalid."},
    {611, "The route is not available."},
    {612, "The route is not allocated."},
    {614, "Out of buffers."},
    {615, "The port was not found."},
    {616, "An asynchronous request is pending."},
    {617, "The port or device is already disconnecting."},
    {618, "The port is not open."},
    {619, "The port is disconnected."},
    {621, "Cannot open the phone book file."},
    {622, "Cannot load the phone book file."},
    {623, "Cannot find the phone book entry."},
    {624, "Cannot write the phone book file."},
    {625, "Invalid information found in the phone book file."},
    {626, "Cannot load a string."},
    {627, "Cannot find key."},
    {628, "The port was disconnected."},
    {629, "The port was disconnected by the remote machine."},
    {630, "The port was disconnected due to hardware failure."},
    {631, "The port was disconnected by the user."},
    {632, "The structure size is incorrect."},
    {633, "The port is already in use or is not configured for Remote Access dial out."},
    {634, "Cannot register your computer on the remote network."},
    {635, "Unknown error."},
    {636, "The wrong device is attached to the port."},
    {637, "The string could not be converted."},
    {638, "The request has timed out."},
    {639, "No asynchronous net available."},
    {640, "A NetBIOS error has occurred."},
    {641, "The server cannot allocate NetBIOS resources needed to support the client."},
    {642, "One of your NetBIOS names is already registered on the remote network."},
    {643, "A network adapter at the server failed."},
    {645, "Internal authentication error."},
    {646, "The account is not permitted to log on at this time of day."},
    {647, "The account is disabled."},
    {648, "The password has expired."},
    {649, "The account does not have Remote Access permission."},
    {650, "The Remote Access server is not responding."},
    {651, "Your modem (or other connecting device) has reported an error."},
    {652, "Unrecognized response from the device."},
    {660, "No responses found in the device section."},
    {666, "The device is not ready."},
    {668, "The connection dropped."},
    {676, "The phone line is busy."},
    {677, "A person answered instead of a modem."},
    {678, "There is no answer."},
    {679, "Cannot detect carrier."},
    {680, "There is no dial tone."},
    {691, "Access denied because username and/or password is invalid on the domain."},
    {692, "Hardware failure in port or attached device."},
    {711, "The Remote Access service could not be started."},
    {718, "Timeout waiting for a valid response from the remote PPP peer."},
    {720, "No PPP control protocols configured."},
    {721, "Remote PPP peer is not responding."},
    {731, "The protocol is not configured."},
    {734, "The PPP link control protocol was terminated."},
    {735, "The requested address was rejected by the server."},
    {736, "The remote computer terminated the control protocol."},
    {738, "The server did not assign an address."},
    {749, "The phone number is not valid."},
    {752, "A syntax error was encountered while processing a script."},
    {753, "The connection could not be disconnected."},
    {756, "This connection is already being dialed."},
    {769, "The specified destination is not reachable."},
    {777,
     "The connection attempt failed because the modem (or other connecting device) on the remote computer is out of "
     "order."},
    {797, "The connection failed because the modem (or other connecting device) was not found."},
};

constexpr CodeText kSystem[] = {
    {0, "The operation completed successfully.\r\n"},
    {2, "The system cannot find the file specified.\r\n"},
    {5, "Access is denied.\r\n"},
    {6, "The handle is invalid.\r\n"},
    {8, "Not enough storage is available to process this command.\r\n"},
    {87, "The parameter is incorrect.\r\n"},
    {123, "The filename, directory name, or volume label syntax is incorrect.\r\n"},
    {183, "Cannot create a file when that file already exists.\r\n"},
    {259, "No more data is available.\r\n"},
};

template <std::size_t N>
const char* find(const CodeText (&texts)[N], std::uint32_t code) {
  const auto* found = std::lower_bound(std::begin(texts), std::end(texts), code,
                                       [](const CodeText& t, std::uint32_t c) { return t.code < c; });
  return found != std::end(texts) && found->code == code ? found->text : nullptr;
}

}  // namespace

const char* errorText(std::uint32_t code) { return find(kErrors, code); }
const char* systemText(std::uint32_t code) { return find(kSystem, code); }

}  // namespace pelvaro::line
