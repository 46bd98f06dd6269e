/** @file
  The flash page fixture.
**/
#include "FlashPageFlow.h"

#include <cstdio>

#include <Library/UefiBootServicesTableLib.h>

const std::u16string gFlashWarning = u"Updating your system's firmware. Do not power down your system.";

std::string
Describe (const FlowCall &Call, const FlowCall &Pattern)
{
  std::string Text = Call.Name + "(";
  char Number[24];

  for (size_t Index = 0; Index < Call.Arguments.size (); Index++) {
    bool Skip = (Pattern.Arguments.size () == Call.Arguments.size ()) && (Pattern.Arguments[Index] == kAny);
    std::snprintf (Number, sizeof (Number), "%llx", (unsigned long long)Call.Arguments[Index]);
    Text += (Index == 0 ? "" : ", ") + (Skip ? std::string ("*") : std::string (Number));
  }

  return Text + ")";
}

std::vector<std::string>
Describe (const std::vector<FlowCall> &Calls, const std::vector<FlowCall> &Pattern)
{
  std::vector<std::string> Result;

  for (size_t Index = 0; Index < Calls.size (); Index++) {
    Result.push_back (Describe (Calls[Index], (Index < Pattern.size ()) ? Pattern[Index] : FlowCall{}));
  }

  return Result;
}

::testing::AssertionResult
FlashPageTest::BootFlash (int CountdownItem)
{
  if (CountdownItem >= 0) {
    SetByte (SETTING_PAGE_COUNTDOWN, (UINT8)CountdownItem);
  }

  ::testing::AssertionResult Booted = Boot ();
  if (!Booted) {
    return Booted;
  }

  if (CountdownItem >= 0) {
    WelcomeControls Welcome = ShowWelcome ();
    Key (Welcome.Logo, UI_KEY_ENTER);
    if ((RunLoop () != EFI_SUCCESS) || !PageDestroyed (Welcome.Page)) {
      return ::testing::AssertionFailure () << "the welcome page did not close";
    }
  }

  if (EFI_ERROR (gBS->HandleProtocol (ImageHandle (), &gFlashUpdatePageProtocolGuid, (VOID **)&mFlash)) ||
      (mFlash == nullptr)) {
    return ::testing::AssertionFailure () << "no flash page protocol on the image handle";
  }

  return ::testing::AssertionSuccess ();
}

FlashControls
FlashPageTest::ShowFlash ()
{
  Flash ().Show ();
  return FlashPageMadeLast ();
}

/** @return TRUE for a page with the flash page's id and theme. **/
static bool
IsFlashPage (const STAND_IN_PAGE_INFO &Info)
{
  return !Info.Prompt && (Info.PageId == UI_PAGE_ID) && (Info.ThemeId == 8);
}

FlashControls
FlashPageTest::FlashPageMadeLast ()
{
  FlashControls Found;
  STAND_IN_PAGE_INFO Info;

  for (UINTN Index = 0; StandInFindPage (StandInPageAt (Index), &Info); Index++) {
    if (IsFlashPage (Info)) {
      Found.Page = Info.Handle;
      mHii = Info.HiiHandle;
    }
  }

  UINTN *Controls[] = {&Found.Logo, &Found.Progress, &Found.Message, &Found.Status, &Found.Label, &Found.Percent};
  for (UINTN Index = 0; Index < ARRAY_SIZE (Controls); Index++) {
    *Controls[Index] = StandInControlAt (Found.Page, Index);
  }

  return Found;
}

UINTN
FlashPageTest::LiveFlashPages ()
{
  STAND_IN_PAGE_INFO Info;
  UINTN Count = 0;

  for (UINTN Index = 0; StandInFindPage (StandInPageAt (Index), &Info); Index++) {
    Count += (IsFlashPage (Info) && !Info.Destroyed) ? 1 : 0;
  }

  return Count;
}

std::vector<std::string>
FlashPageTest::CallsSince (UINTN Start, const std::vector<FlowCall> &Expected) const
{
  return Describe (std::vector<FlowCall> (mLog.begin () + (ptrdiff_t)Start, mLog.end ()), Expected);
}

FlowCall
FlashPageTest::Attribute (UINTN Page, UINTN Control, UINT32 Tag, UINTN V1, UINTN V2, UINTN V3)
{
  const char *Name = ((Tag >> 16) == 0x7072)   ? "SetControlProperty"
                     : ((Tag >> 16) == 0x7374) ? "SetControlStyle"
                                               : "SetControlData";

  return {Name, {Page, kContainer, Control, Tag, V1, V2, V3}};
}

std::vector<FlowCall>
FlashPageTest::ProgressCalls (const FlashControls &Flash, UINTN Percent) const
{
  return {Attribute (Flash.Page, Flash.Progress, kValueTag, Percent),
          Attribute (Flash.Page, Flash.Percent, kTextTag, kAny, (UINTN)mHii),
          {"RefreshPage", {Flash.Page}}};
}

std::vector<FlowCall>
FlashPageTest::ExitCalls (UINTN Page)
{
  return {{"ExitEventLoop", {}}, {"DestroyPage", {Page}}, {"EndUiSession", {}}};
}

UINTN
FlashPageTest::DeliverTick (UINTN Control, UINT8 Second)
{
  EFI_TIME Time{};

  Time.Second = Second;
  return Deliver (UI_EVENT{0, Control, UI_EVENT_TIMER_TICK, (UINTN)&Time});
}

UINTN
FlashPageTest::Deliver (UI_EVENT Event)
{
  UINTN Result = StandInDeliverEvent (&Event);

  mCodeAfter = Event.EventCode;
  return Result;
}

UINTN
FlashPageTest::Bar (const FlashControls &Flash)
{
  UINTN Value = kAny;

  StandInGetProgress (Flash.Page, Flash.Progress, &Value);
  return Value;
}

UINTN
FlashPageTest::Colour (UINTN Page, UINTN Control)
{
  UINTN Values[3] = {kAny, kAny, kAny};

  StandInGetAttribute (Page, Control, kColourTag, Values);
  return Values[0];
}

std::u16string
FlashPageTest::Percentage (UINTN Value)
{
  std::string Digits = std::to_string (Value);

  return u"   " + std::u16string (Digits.begin (), Digits.end ()) + u"%";
}

std::u16string
FlashPageTest::String (EFI_STRING_ID Id) const
{
  CHAR16 *Found = nullptr;

  return EFI_ERROR (mFramework->Services->Strings->GetString (0, mHii, Id, &Found)) ? u"(none)" : Text (Found);
}

STAND_IN_FRAMEWORK_STATE
FlashPageTest::Framework ()
{
  STAND_IN_FRAMEWORK_STATE State{};

  StandInGetFrameworkState (&State);
  return State;
}
