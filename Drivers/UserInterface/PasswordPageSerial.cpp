/** @file
  The serial-number text of the prompt's caption: from the platform settings,
  else from the SMBIOS system-information record.

  Both come from other drivers: a serial number without its terminator is
  cut at the buffer, and a string number that names no string of the record
  gives no text.
**/
#include "PasswordPage.h"
#include "PlatformSettings.h"

#include <IndustryStandard/SmBios.h>
extern "C" {
#include <Library/BaseLib.h>
#include <Library/BaseMemoryLib.h>
#include <Library/PrintLib.h>
}
#include <Library/CompileTimeLib.h>

///
/// Longest SMBIOS string looked at; a longer run without a terminator is taken as a malformed record.
///
#define SMBIOS_STRING_MAX 0x10000

STATIC CHAR8 mSerialAscii[SETTING_SERIAL_NUMBER_SIZE];
STATIC CHAR16 mSerialText[SETTING_SERIAL_NUMBER_SIZE];

STATIC constexpr auto mSmbiosSerialFormat = CompileTime::MakeWideString (u"%a ");

/**
  @return string Number (from 1) of an SMBIOS structure, or null when the
          number is 0 or past the structure's strings.
**/
STATIC
CONST CHAR8 *
SmbiosString (IN CONST SMBIOS_STRUCTURE *Record, IN UINTN Number)
{
  CONST CHAR8 *String;
  UINTN Length;

  if (Number == 0) {
    return nullptr;
  }

  String = (CONST CHAR8 *)Record + Record->Length;
  for (UINTN Index = 1;; Index++) {
    //
    // An empty string is the end of the string set.
    //
    if (*String == '\0') {
      return nullptr;
    }

    if (Index == Number) {
      return String;
    }

    Length = AsciiStrnLenS (String, SMBIOS_STRING_MAX);
    if (Length == SMBIOS_STRING_MAX) {
      return nullptr;
    }

    String += Length + 1;
  }
}

/**
  Writes the SMBIOS type-1 serial number and a blank into mSerialText.

  @retval FALSE  No type-1 record, or its serial-number string is missing.
**/
STATIC
BOOLEAN
ReadSmbiosSerial (VOID)
{
  EFI_SMBIOS_HANDLE Handle = SMBIOS_HANDLE_PI_RESERVED;
  EFI_SMBIOS_TYPE Type = SMBIOS_TYPE_SYSTEM_INFORMATION;
  EFI_SMBIOS_TABLE_HEADER *Record = nullptr;
  CONST CHAR8 *Serial;
  EFI_STATUS Status;

  if ((mSmbios == nullptr) || (mSmbios->GetNext == nullptr)) {
    return FALSE;
  }

  Status = mSmbios->GetNext (mSmbios, &Handle, &Type, &Record, nullptr);
  if (!EFI_ERROR (Status) && (Record != nullptr) && (Record->Type != SMBIOS_TYPE_SYSTEM_INFORMATION)) {
    Status = mSmbios->GetNext (mSmbios, &Handle, &Type, &Record, nullptr);
  }

  //
  // The serial number's string number is at byte 7: a shorter formatted area has none.
  //
  if (EFI_ERROR (Status) || (Record == nullptr) || (Record->Type != SMBIOS_TYPE_SYSTEM_INFORMATION) ||
      (Record->Length <= OFFSET_OF (SMBIOS_TABLE_TYPE1, SerialNumber))) {
    return FALSE;
  }

  Serial = SmbiosString (Record, ((CONST SMBIOS_TABLE_TYPE1 *)Record)->SerialNumber);
  if (Serial == nullptr) {
    return FALSE;
  }

  UnicodeSPrint (mSerialText, sizeof (mSerialText), mSmbiosSerialFormat.Text, Serial);
  return TRUE;
}

VOID
ResetSerialText (VOID)
{
  ZeroMem (mSerialAscii, sizeof (mSerialAscii));
  ZeroMem (mSerialText, sizeof (mSerialText));
}

CONST CHAR16 *
MakeSerialText (VOID)
{
  SETTINGS_PROTOCOL *Settings;
  UINTN Length;

  if (!EFI_ERROR (LocateSettings (&Settings)) &&
      !EFI_ERROR (ReadSetting (Settings, SETTING_SERIAL_NUMBER, sizeof (mSerialAscii), mSerialAscii))) {
    Length = 0;
    while ((Length < SETTING_SERIAL_NUMBER_SIZE - 1) && (mSerialAscii[Length] != '\0')) {
      mSerialText[Length] = (UINT8)mSerialAscii[Length];
      Length++;
    }

    mSerialText[Length] = 0;
    return mSerialText;
  }

  ReadSmbiosSerial ();
  return mSerialText;
}
