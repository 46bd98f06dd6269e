/** @file
  Lines straight to the serial port.
**/
#include "SerialLog.h"

extern "C" {
#include <Library/PrintLib.h>
}
#include <Library/UefiBootServicesTableLib.h>
#include <Protocol/SerialIo.h>

#define SERIAL_LOG_LINE_LENGTH 256

BOOLEAN EFIAPI
SerialLogLine (IN CONST CHAR8 *Format, ...)
{
  STATIC EFI_SERIAL_IO_PROTOCOL *Serial = nullptr;
  CHAR8 Line[SERIAL_LOG_LINE_LENGTH + 2];
  VA_LIST Marker;
  UINTN Size;

  if ((Serial == nullptr) &&
      (EFI_ERROR (gBS->LocateProtocol (&gEfiSerialIoProtocolGuid, nullptr, (VOID **)&Serial)) || (Serial == nullptr))) {
    Serial = nullptr;
    return FALSE;
  }

  VA_START (Marker, Format);
  Size = AsciiVSPrint (Line, SERIAL_LOG_LINE_LENGTH, Format, Marker);
  VA_END (Marker);
  Line[Size++] = '\r';
  Line[Size++] = '\n';
  return (Serial->Write != nullptr) && !EFI_ERROR (Serial->Write (Serial, &Size, Line));
}
