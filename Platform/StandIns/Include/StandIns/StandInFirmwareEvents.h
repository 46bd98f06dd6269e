/** @file
  The UI framework stand-in's event source inside firmware: key strokes of
  the console input and timer ticks of the real-time clock, found by polling.

  - A key is EventCode 0x61680002 with Data (ScanCode << 16) | UnicodeChar,
    Control 0.
  - A timer tick is EventCode 0x61680001 with Data the address of an EFI_TIME
    that the source keeps (valid until the next event), Control 0. The first
    reading of the clock only sets the second counted from; after it, each
    change of the clock's Second gives one tick.
  - While the active page is a prompt page, printable characters (0x20 to
    0x7E) are typed into its password field up to the maximum length given to
    ShowPrompt and Backspace removes the last one, each change redrawing the
    page; Enter gives EventCode 0x61680A00 from control 1714 with Data a copy
    of the field's text (CHAR16 *, valid until the next event), and the field
    is emptied before the next event unless the handler emptied or changed it;
    Escape gives EventCode 0x61680006 from the cancel control 1715. Other keys
    are key events.
  - Between polls the source stalls 10 ms (gBS->Stall); it uses no timer
    events. When the clock fails for a whole second the source gives no event,
    which ends the loop that asked.
**/
#ifndef STAND_IN_FIRMWARE_EVENTS_H_
#define STAND_IN_FIRMWARE_EVENTS_H_

#include <Uefi.h>

/**
  Makes the firmware's console input and clock the event source of the UI
  framework stand-in's event loops, starting a fresh count of seconds.

  @retval EFI_SUCCESS    The loops now take their events from the firmware.
  @retval EFI_NOT_READY  gST, gBS or gRT is not set; the source is unchanged.
**/
EFI_STATUS
EFIAPI
StandInUseFirmwareEvents (VOID);

#endif
