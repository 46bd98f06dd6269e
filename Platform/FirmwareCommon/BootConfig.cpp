/** @file
  Parsing of the demo configuration and hand-over of its values as variables.
**/
#include "BootConfig.h"

extern "C" {
#include <Library/BaseLib.h>
#include <Library/BaseMemoryLib.h>
}
#include <Library/UefiRuntimeServicesTableLib.h>
#include <StandInDriver/DemoConfiguration.h>

#define DEFAULT_STEPS 25
#define DEFAULT_STEP_MILLISECONDS 200
#define MAX_STEPS 1000
#define MAX_STEP_MILLISECONDS 10000

/**
  @return TRUE when the Length bytes at Name are exactly Expected.
**/
STATIC
BOOLEAN
NameIs (IN CONST CHAR8 *Name, IN UINTN Length, IN CONST CHAR8 *Expected)
{
  return (AsciiStrLen (Expected) == Length) && (CompareMem (Name, Expected, Length) == 0);
}

/**
  @return the decimal number at Value (digits only, at most Limit); Limit when it is larger or not a number.
**/
STATIC
UINTN
DecimalValue (IN CONST CHAR8 *Value, IN UINTN Length, IN UINTN Limit)
{
  UINTN Number = 0;

  if (Length == 0) {
    return Limit;
  }

  for (UINTN Index = 0; Index < Length; Index++) {
    if ((Value[Index] < '0') || (Value[Index] > '9')) {
      return Limit;
    }

    Number = Number * 10 + (UINTN)(Value[Index] - '0');
    if (Number >= Limit) {
      return Limit;
    }
  }

  return Number;
}

STATIC
VOID
CopyText (OUT CHAR8 *Out, IN UINTN Capacity, IN CONST CHAR8 *Value, IN UINTN Length)
{
  if (Length > Capacity) {
    Length = Capacity;
  }

  CopyMem (Out, Value, Length);
  Out[Length] = '\0';
}

STATIC
VOID
ParseOutcomes (IN CONST CHAR8 *Value, IN UINTN Length, OUT BOOT_CONFIG *Config)
{
  UINTN Start = 0;

  Config->OutcomeCount = 0;
  for (UINTN Index = 0; Index <= Length; Index++) {
    if ((Index == Length) || (Value[Index] == ',')) {
      UINTN Outcome = DecimalValue (Value + Start, Index - Start, MAX_UINT32);

      if ((Outcome != MAX_UINT32) && (Config->OutcomeCount < BOOT_CONFIG_MAX_OUTCOMES)) {
        Config->Outcomes[Config->OutcomeCount++] = (UINT32)Outcome;
      }

      Start = Index + 1;
    }
  }
}

STATIC
VOID
ParseLine (IN CONST CHAR8 *Line, IN UINTN Length, IN OUT BOOT_CONFIG *Config)
{
  UINTN Equals = 0;

  while ((Equals < Length) && (Line[Equals] != '=')) {
    Equals++;
  }

  if ((Length == 0) || (Line[0] == '#') || (Equals == Length)) {
    return;
  }

  CONST CHAR8 *Value = Line + Equals + 1;
  UINTN ValueLength = Length - Equals - 1;

  if (NameIs (Line, Equals, "mode")) {
    Config->Mode = NameIs (Value, ValueLength, "flash") ? BootModeFlash : BootModeWelcome;
  } else if (NameIs (Line, Equals, "countdown")) {
    Config->HasCountdown = TRUE;
    Config->Countdown = (UINT8)DecimalValue (Value, ValueLength, MAX_UINT8);
  } else if (NameIs (Line, Equals, "admin-prompt")) {
    Config->HasAdminPrompt = TRUE;
    Config->AdminPrompt = (UINT8)DecimalValue (Value, ValueLength, MAX_UINT8);
  } else if (NameIs (Line, Equals, "diagnostics-at-boot")) {
    Config->HasDiagnosticsAtBoot = TRUE;
    Config->DiagnosticsAtBoot = (UINT8)DecimalValue (Value, ValueLength, MAX_UINT8);
  } else if (NameIs (Line, Equals, "ui-mode-zero")) {
    Config->UiModeZero = (UINT8)DecimalValue (Value, ValueLength, MAX_UINT8);
  } else if (NameIs (Line, Equals, "welcome")) {
    CopyText (Config->Welcome, BOOT_CONFIG_TEXT_LENGTH, Value, ValueLength);
  } else if (NameIs (Line, Equals, "caption")) {
    CopyText (Config->Caption, BOOT_CONFIG_CAPTION_LENGTH, Value, ValueLength);
  } else if (NameIs (Line, Equals, "password")) {
    CopyText (Config->Password, BOOT_CONFIG_PASSWORD_LENGTH, Value, ValueLength);
  } else if (NameIs (Line, Equals, "steps")) {
    Config->Steps = DecimalValue (Value, ValueLength, MAX_STEPS);
  } else if (NameIs (Line, Equals, "step-ms")) {
    Config->StepMilliseconds = DecimalValue (Value, ValueLength, MAX_STEP_MILLISECONDS);
  } else if (NameIs (Line, Equals, "outcomes")) {
    ParseOutcomes (Value, ValueLength, Config);
  } else if (NameIs (Line, Equals, "handover")) {
    Config->HandOver = NameIs (Value, ValueLength, "firmware") ? BootHandOverFirmware : BootHandOverScreens;
  }
}

VOID
ParseBootConfig (IN CONST CHAR8 *Text, IN UINTN Size, OUT BOOT_CONFIG *Config)
{
  UINTN Start = 0;

  ZeroMem (Config, sizeof (*Config));
  Config->Mode = BootModeWelcome;
  Config->Steps = DEFAULT_STEPS;
  Config->StepMilliseconds = DEFAULT_STEP_MILLISECONDS;
  Config->Outcomes[0] = 5;
  Config->OutcomeCount = 1;

  for (UINTN Index = 0; Index <= Size; Index++) {
    if ((Index == Size) || (Text[Index] == '\n')) {
      UINTN End = Index;

      if ((End > Start) && (Text[End - 1] == '\r')) {
        End--;
      }

      ParseLine (Text + Start, End - Start, Config);
      Start = Index + 1;
    }
  }
}

//
// Volatile: the configuration file is read at every boot.
//
#define DEMO_VARIABLE_ATTRIBUTES (EFI_VARIABLE_BOOTSERVICE_ACCESS | EFI_VARIABLE_RUNTIME_ACCESS)

STATIC
VOID
SetDemoVariable (IN CONST CHAR16 *Name, IN CONST VOID *Data, IN UINTN Size)
{
  gRT->SetVariable ((CHAR16 *)Name, &gKestDemoVariableGuid, DEMO_VARIABLE_ATTRIBUTES, Size, (VOID *)Data);
}

VOID
PublishBootConfig (IN CONST BOOT_CONFIG *Config)
{
  CHAR16 Password[BOOT_CONFIG_PASSWORD_LENGTH];
  UINTN Length;

  if (Config->HasCountdown) {
    SetDemoVariable (DemoVariable::Countdown.Text, &Config->Countdown, 1);
  }

  if (Config->HasAdminPrompt) {
    SetDemoVariable (DemoVariable::AdminPrompt.Text, &Config->AdminPrompt, 1);
  }

  if (Config->HasDiagnosticsAtBoot) {
    SetDemoVariable (DemoVariable::DiagnosticsAtBoot.Text, &Config->DiagnosticsAtBoot, 1);
  }

  SetDemoVariable (DemoVariable::UiModeZero.Text, &Config->UiModeZero, 1);
  if (Config->HandOver != BootHandOverUnset) {
    UINT8 Firmware = (Config->HandOver == BootHandOverFirmware) ? 1 : 0;

    SetDemoVariable (DemoVariable::FirmwareHandOver.Text, &Firmware, 1);
  }

  if (Config->Welcome[0] != '\0') {
    SetDemoVariable (DemoVariable::WelcomeText.Text, Config->Welcome, AsciiStrLen (Config->Welcome) + 1);
  }

  if (Config->Caption[0] != '\0') {
    SetDemoVariable (DemoVariable::Caption.Text, Config->Caption, AsciiStrLen (Config->Caption) + 1);
  }

  Length = AsciiStrLen (Config->Password);
  if (Length != 0) {
    for (UINTN Index = 0; Index < Length; Index++) {
      Password[Index] = (CHAR16)(UINT8)Config->Password[Index];
    }

    SetDemoVariable (DemoVariable::AdminPassword.Text, Password, Length * sizeof (CHAR16));
  }
}
