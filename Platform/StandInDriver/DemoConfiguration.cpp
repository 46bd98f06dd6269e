/** @file
  Settings items and the administrator password from UEFI variables.
**/
#include "DemoConfiguration.h"

#include <Library/UefiRuntimeServicesTableLib.h>
#include <StandIns/ServiceStandIns.h>

//
// The administrator record: three attempts, the prompt takes up to 20 characters.
//
#define DEMO_PASSWORD_ATTEMPTS 3
#define DEMO_PASSWORD_LENGTH 20

typedef struct {
  UINTN ItemId;
  CONST CHAR16 *VariableName;
} DEMO_SETTING_VARIABLE;

STATIC CONST DEMO_SETTING_VARIABLE mSettingVariables[] = {
  {1183, DemoVariable::Countdown.Text},          {1563, DemoVariable::WelcomeText.Text},
  {1618, DemoVariable::AdminPrompt.Text},        {9752, DemoVariable::Caption.Text},
  {36930, DemoVariable::DiagnosticsAtBoot.Text},
};

//
// The password service keeps the accepted password by reference.
//
STATIC CHAR16 mAdminPassword[DEMO_MAX_PASSWORD + 1];

/**
  Reads a variable of ours into Buffer. @return its size, or 0 when it is missing, empty or larger than Size.
**/
STATIC
UINTN
ReadDemoVariable (IN CONST CHAR16 *Name, OUT VOID *Buffer, IN UINTN Size)
{
  UINTN DataSize = Size;

  if (EFI_ERROR (gRT->GetVariable ((CHAR16 *)Name, &gKestDemoVariableGuid, nullptr, &DataSize, Buffer))) {
    return 0;
  }

  return DataSize;
}

BOOLEAN
LoadDemoConfiguration (VOID)
{
  UINT8 Item[STAND_IN_MAX_SETTING_SIZE];
  UINTN Size;
  UINT8 UiModeZero = 0;

  for (CONST DEMO_SETTING_VARIABLE &Setting : mSettingVariables) {
    Size = ReadDemoVariable (Setting.VariableName, Item, sizeof (Item));
    if (Size != 0) {
      StandInSetSetting (Setting.ItemId, Item, Size);
    }
  }

  Size = ReadDemoVariable (DemoVariable::AdminPassword.Text, mAdminPassword, sizeof (mAdminPassword) - sizeof (CHAR16));
  if ((Size != 0) && (Size % sizeof (CHAR16) == 0)) {
    STAND_IN_PASSWORD Record = {};

    mAdminPassword[Size / sizeof (CHAR16)] = 0;
    Record.Kind = 1;
    Record.MaxAttempts = DEMO_PASSWORD_ATTEMPTS;
    Record.MaxLength = DEMO_PASSWORD_LENGTH;
    Record.State = 1;
    Record.Password = mAdminPassword;
    StandInSetPasswords (&Record, 1);
  }

  ReadDemoVariable (DemoVariable::UiModeZero.Text, &UiModeZero, sizeof (UiModeZero));
  return UiModeZero != 0;
}

BOOLEAN
DemoHandsOverToFirmware (VOID)
{
  UINT8 FirmwareHandOver = 1;

  ReadDemoVariable (DemoVariable::FirmwareHandOver.Text, &FirmwareHandOver, sizeof (FirmwareHandOver));
  return FirmwareHandOver != 0;
}
