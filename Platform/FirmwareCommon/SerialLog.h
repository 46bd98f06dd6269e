/** @file
  Lines for the machine that watches the serial port (the demo and the
  end-to-end tests), written past the console so that they never draw over a
  page on the screen.
**/
#ifndef FIRMWARE_SERIAL_LOG_H_
#define FIRMWARE_SERIAL_LOG_H_

#include <Uefi.h>

/**
  Formats one line (AsciiSPrint rules, at most 255 characters) and writes it
  with CR LF to the first EFI_SERIAL_IO_PROTOCOL; without one, nothing is
  written.

  @return TRUE when the port took the line.
**/
BOOLEAN EFIAPI SerialLogLine (IN CONST CHAR8 *Format, ...);

#endif
