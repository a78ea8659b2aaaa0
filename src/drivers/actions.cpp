#include "drivers/actions.h"

namespace pelvaro::drivers {

namespace {

constexpr Step kCableInstaller = {Deed::startProgram, "\\driver\\PL-2303 Driver Installer.exe"};

// Kept on purpose: Windows XP is of the NT family too; the folder named after it is for the others.
constexpr Step kMotorola[] = {{Deed::copySystemFiles, "\\driver\\MT"},
                              {Deed::copyFilesOfNt, "\\driver\\MT\\win2k"},
                              {Deed::copyFilesOfOthers, "\\driver\\MT\\winxp"},
                              {Deed::startModemApplet}};
constexpr Step kNokiaCable[] = {kCableInstaller, {Deed::copyFiles, "\\driver\\NK-A01"}, {Deed::startModemApplet}};
constexpr Step kNokiaPackage[] = {
    {Deed::runPackageInstaller, "\\driver\\NK-A02\\DPInst.exe"}, {Deed::offerRestart}, {Deed::tellToPlugIn}};
// Kept on purpose: here alone the files come before the cable installer.
constexpr Step kSamsungFirst[] = {{Deed::copyFiles, "\\driver\\SS-A01"}, kCableInstaller, {Deed::startModemApplet}};
constexpr Step kSamsungSecond[] = {kCableInstaller, {Deed::copyFiles, "\\driver\\SS-A02"}, {Deed::startModemApplet}};
constexpr Step kSamsungPackage[] = {
    {Deed::runPackageInstaller, "\\driver\\SS-A03\\DPInst.exe"}, {Deed::offerRestart}, {Deed::tellToPlugIn}};
constexpr Step kSiemensFirst[] = {kCableInstaller, {Deed::copyFiles, "\\driver\\SM-A02-1"}, {Deed::startModemApplet}};
constexpr Step kSiemensSecond[] = {kCableInstaller, {Deed::copyFiles, "\\driver\\SM-A02-2"}, {Deed::startModemApplet}};
constexpr Step kSonyEricssonCable[] = {
    kCableInstaller, {Deed::copyFiles, "\\driver\\SE-A01"}, {Deed::startModemApplet}};
constexpr Step kSonyEricssonPackage[] = {
    {Deed::runPackageInstaller, "\\driver\\SE\\DPInst.exe"}, {Deed::offerRestart}, {Deed::tellToPlugIn}};

struct Action {
  std::string_view code;
  std::span<const Step> steps;
};

constexpr Action kActions[] = {
    {"01", kMotorola},
    {"02", kMotorola},
    {"03", kMotorola},
    {"04", kMotorola},
    {"05", kMotorola},
    {"06", kNokiaCable},
    {"07", kNokiaPackage},
    {"08", kSamsungFirst},
    {"09", kSamsungSecond},
    {"10", kSamsungPackage},
    {"11", kSiemensFirst},
    {"12", kSiemensSecond},
    {"13", kSonyEricssonCable},
    {"14", kSonyEricssonCable},
    {"15", kSonyEricssonPackage},
    {"16", kSonyEricssonPackage},
};

}  // namespace

std::span<const Step> stepsOf(std::string_view code) {
  for (const Action& action : kActions) {
    if (action.code == code) return action.steps;
  }
  return {};
}

}  // namespace pelvaro::drivers
