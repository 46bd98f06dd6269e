/** @file
  The demo boot flow's configuration, one "name=value" per line ('#' starts a
  comment line): \kestui\demo.cfg on the boot-flow application's volume, or,
  in a firmware with KestUi in its flash, QEMU's configuration file
  "opt/kestui/demo.cfg" (QemuFwCfg.h).

  Names:
  - mode: "welcome" (default) or "flash".
  - countdown, admin-prompt, diagnostics-at-boot, ui-mode-zero: one byte each
    (decimal), settings items 1183, 1618, 36930 and the PCD answer.
  - welcome: the welcome text (item 1563), caption: the prompt's text (item 9752).
  - password: the administrator password (none installed without it).
  - steps, step-ms: how many progress reports the boot flow makes while it
    "initialises", and the time between two.
  - outcomes: flash outcomes to show one after another, e.g. "5,6,3".
  - handover: "firmware" or "screens": whether the platform's boot menu boots
    the chosen Boot#### option and Setup is the firmware's own front page, or
    the stand-ins' screens only show them.
  A value that does not fit its item is cut; unknown names are ignored.
**/
#ifndef BOOT_FLOW_CONFIG_H_
#define BOOT_FLOW_CONFIG_H_

#include <Uefi.h>

#define BOOT_CONFIG_TEXT_LENGTH 80
#define BOOT_CONFIG_CAPTION_LENGTH 19
#define BOOT_CONFIG_PASSWORD_LENGTH 32
#define BOOT_CONFIG_MAX_OUTCOMES 8

typedef enum { BootModeWelcome, BootModeFlash } BOOT_MODE;

typedef enum { BootHandOverUnset, BootHandOverFirmware, BootHandOverScreens } BOOT_HAND_OVER;

typedef struct {
  BOOT_MODE Mode;
  BOOLEAN HasCountdown;
  UINT8 Countdown;
  BOOLEAN HasAdminPrompt;
  UINT8 AdminPrompt;
  BOOLEAN HasDiagnosticsAtBoot;
  UINT8 DiagnosticsAtBoot;
  UINT8 UiModeZero;
  CHAR8 Welcome[BOOT_CONFIG_TEXT_LENGTH + 1]; ///< empty: item not set
  CHAR8 Caption[BOOT_CONFIG_CAPTION_LENGTH + 1];
  CHAR8 Password[BOOT_CONFIG_PASSWORD_LENGTH + 1];
  UINTN Steps;
  UINTN StepMilliseconds;
  UINT32 Outcomes[BOOT_CONFIG_MAX_OUTCOMES];
  UINTN OutcomeCount;
  BOOT_HAND_OVER HandOver; ///< unset: the reader decides
} BOOT_CONFIG;

/**
  Reads the configuration from Text (not null-terminated). Config starts with
  the defaults: welcome mode, 25 steps of 200 ms, outcome 5.
**/
VOID ParseBootConfig (IN CONST CHAR8 *Text, IN UINTN Size, OUT BOOT_CONFIG *Config);

/**
  Writes the settings items, the password, the PCD answer and the hand-over
  (when set) as volatile variables for the platform stand-in driver.
**/
VOID PublishBootConfig (IN CONST BOOT_CONFIG *Config);

#endif
