/** @file
  The firmware event source (StandInFirmwareEvents.h): polls the console input
  and the real-time clock, stalling between polls. Polling keeps the source
  free of timer events, which the host platform does not simulate; its Stall
  moves the host clock on instead.
**/
#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiRuntimeServicesTableLib.h>
#include <Protocol/SimpleTextIn.h>
#include <Protocol/SimpleTextInEx.h>
#include <StandIns/StandInFirmwareEvents.h>

#include "StandInInternal.h"

#define POLL_INTERVAL_MICROSECONDS 10000U
#define CLOCK_FAILURE_LIMIT 100U ///< polls in a row without the time: a second

typedef struct {
  BOOLEAN HaveSecond; ///< LastSecond holds a reading of the clock
  UINT8 LastSecond;
  EFI_TIME Tick; ///< what the last tick's Data points to
} FIRMWARE_EVENTS;

STATIC FIRMWARE_EVENTS mFirmwareEvents;

///
/// The console input of one request for an event: the extended protocol when
/// the console input handle has it, else the system table's ConIn.
///
typedef struct {
  EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *InputEx;
  EFI_SIMPLE_TEXT_INPUT_PROTOCOL *Input;
} KEY_READER;

STATIC
VOID
FindKeyReader (OUT KEY_READER *Reader)
{
  EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *InputEx = nullptr;

  Reader->InputEx = nullptr;
  Reader->Input = nullptr;
  if ((gST->ConsoleInHandle != nullptr) &&
      !EFI_ERROR (gBS->HandleProtocol (gST->ConsoleInHandle, &gEfiSimpleTextInputExProtocolGuid, (VOID **)&InputEx)) &&
      (InputEx != nullptr) && (InputEx->ReadKeyStrokeEx != nullptr)) {
    Reader->InputEx = InputEx;
    return;
  }

  if ((gST->ConIn != nullptr) && (gST->ConIn->ReadKeyStroke != nullptr)) {
    Reader->Input = gST->ConIn;
  }
}

STATIC
BOOLEAN
ReadKey (IN CONST KEY_READER *Reader, OUT EFI_INPUT_KEY *Key)
{
  EFI_KEY_DATA KeyData;

  if (Reader->InputEx != nullptr) {
    if (EFI_ERROR (Reader->InputEx->ReadKeyStrokeEx (Reader->InputEx, &KeyData))) {
      return FALSE;
    }

    *Key = KeyData.Key;
    return TRUE;
  }

  return (Reader->Input != nullptr) && !EFI_ERROR (Reader->Input->ReadKeyStroke (Reader->Input, Key));
}

/**
  @return TRUE when Now is in another second than the last one counted, with
  the tick in *Event.
**/
STATIC
BOOLEAN
TakeTick (IN CONST EFI_TIME *Now, OUT UI_EVENT *Event)
{
  BOOLEAN First = !mFirmwareEvents.HaveSecond;

  if (!First && (Now->Second == mFirmwareEvents.LastSecond)) {
    return FALSE;
  }

  mFirmwareEvents.HaveSecond = TRUE;
  mFirmwareEvents.LastSecond = Now->Second;
  if (First) {
    return FALSE;
  }

  mFirmwareEvents.Tick = *Now;
  *Event = UI_EVENT{0, 0, UI_EVENT_TIMER_TICK, (UINTN)&mFirmwareEvents.Tick};
  return TRUE;
}

/**
  A framework raises clock and key events on a control of the page on the
  screen, the way its own timers and focus do: the first control of the
  active page that has a handler, or none (0) for a prompt page or a page
  without one, whose events go to the page's handler.
**/
STATIC
UINTN
RaisingControl (VOID)
{
  STAND_IN_PAGE *Active = StandInLookUpLivePage (gStandInFramework.State.ActivePage);

  if ((Active == nullptr) || Active->IsPrompt) {
    return 0;
  }

  for (UINTN Index = 0; Index < Active->ControlCount; Index++) {
    if (Active->Controls[Index]->Handler != nullptr) {
      return Active->Controls[Index]->Handle;
    }
  }

  return 0;
}

STATIC
BOOLEAN
EFIAPI
NextFirmwareEvent (IN VOID *Context, OUT UI_EVENT *Event)
{
  KEY_READER Reader;
  EFI_INPUT_KEY Key;
  EFI_TIME Now;
  UINTN ClockFailures = 0;

  (VOID) Context;

  //
  // Once the UI has handed over (Setup, the flash page's exit), nothing is
  // delivered until a page starts a new session: a loop run then ends at once.
  //
  if (gStandInFramework.State.SessionEnded) {
    return FALSE;
  }

  StandInSettleSubmittedText ();
  FindKeyReader (&Reader);
  for (;;) {
    if (ReadKey (&Reader, &Key)) {
      switch (StandInPromptKey (Key.ScanCode, Key.UnicodeChar, Event)) {
        case StandInKeyEvent:
          return TRUE;
        case StandInKeyTyped:
          continue;
        case StandInKeyPassed:
        default:
          *Event = UI_EVENT{0, RaisingControl (), UI_EVENT_KEY, ((UINTN)Key.ScanCode << 16) | Key.UnicodeChar};
          return TRUE;
      }
    }

    if (EFI_ERROR (gRT->GetTime (&Now, nullptr))) {
      if (++ClockFailures >= CLOCK_FAILURE_LIMIT) {
        return FALSE;
      }
    } else {
      ClockFailures = 0;
      if (TakeTick (&Now, Event)) {
        Event->Control = RaisingControl ();
        return TRUE;
      }
    }

    gBS->Stall (POLL_INTERVAL_MICROSECONDS);
  }
}

EFI_STATUS
EFIAPI
StandInUseFirmwareEvents (VOID)
{
  if ((gST == nullptr) || (gBS == nullptr) || (gRT == nullptr)) {
    return EFI_NOT_READY;
  }

  mFirmwareEvents.HaveSecond = FALSE;
  StandInForgetSubmittedText ();
  StandInSetEventSource (NextFirmwareEvent, nullptr);
  return EFI_SUCCESS;
}
