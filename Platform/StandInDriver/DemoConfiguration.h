/** @file
  Where the platform stand-in driver reads its configuration: UEFI variables
  under one vendor GUID, so that a demo (or a person in the UEFI shell) can set
  the settings items and the administrator password before the driver loads.

  Variables (any attributes):
  - "Setting<item>" (decimal item number, e.g. "Setting1183"): the bytes of
    that settings item, at most STAND_IN_MAX_SETTING_SIZE of them; items 1183,
    1563, 1618, 9752 and 36930 are read.
  - "AdminPassword": the administrator password, UCS-2 without a null, at most
    DEMO_MAX_PASSWORD characters; with it a password is installed.
  - "UiModeZero": one byte; non-zero makes the UI driver's boot-UI-mode PCD
    answer TRUE.
  - "FirmwareHandOver": one byte; 0 keeps the boot menu and Setup on the
    stand-ins' screens (the boot menu only reports the choice). Non-zero, or
    no such variable, hands over to the firmware: the boot menu boots the
    chosen Boot#### option, and the Setup screen is left to the boot flow,
    which starts the firmware's front page.
**/
#ifndef KEST_DEMO_CONFIGURATION_H_
#define KEST_DEMO_CONFIGURATION_H_

#include <Library/CompileTimeLib.h>
#include <Uefi.h>

#define KEST_DEMO_VARIABLE_GUID                                                                                        \
  {                                                                                                                    \
    0xbdd80e2b, 0xf7d8, 0x46b4,                                                                                        \
    {                                                                                                                  \
      0xae, 0x90, 0x3c, 0x4e, 0x04, 0xd4, 0x53, 0x3e                                                                   \
    }                                                                                                                  \
  }

#define DEMO_MAX_PASSWORD 32

///
/// The variables' names, shared with whoever writes them.
///
namespace DemoVariable {
inline constexpr auto Countdown = CompileTime::MakeWideString (u"Setting1183");
inline constexpr auto WelcomeText = CompileTime::MakeWideString (u"Setting1563");
inline constexpr auto AdminPrompt = CompileTime::MakeWideString (u"Setting1618");
inline constexpr auto Caption = CompileTime::MakeWideString (u"Setting9752");
inline constexpr auto DiagnosticsAtBoot = CompileTime::MakeWideString (u"Setting36930");
inline constexpr auto AdminPassword = CompileTime::MakeWideString (u"AdminPassword");
inline constexpr auto UiModeZero = CompileTime::MakeWideString (u"UiModeZero");
inline constexpr auto FirmwareHandOver = CompileTime::MakeWideString (u"FirmwareHandOver");
} // namespace DemoVariable

inline EFI_GUID gKestDemoVariableGuid = KEST_DEMO_VARIABLE_GUID;

/**
  Hands the configured settings items and the administrator password to the
  settings and password service stand-ins. Missing variables leave their item
  out; a variable that is too large is skipped.

  @return the value of "UiModeZero" (FALSE when it is missing).
**/
BOOLEAN
LoadDemoConfiguration (VOID);

/**
  @return TRUE when the platform hands the boot menu's choice and the Setup
          entry to the firmware ("FirmwareHandOver" non-zero or missing).
**/
BOOLEAN
DemoHandsOverToFirmware (VOID);

#endif
