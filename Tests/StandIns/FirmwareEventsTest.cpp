/** @file
  The firmware event source on the host platform: keys from the console
  input's queue, ticks from the clock that Stall moves on, and the typing,
  submit and cancel keys of the prompt page.
**/
#include <gtest/gtest.h>

#include <Library/CompileTimeLib.h>
#include <Library/UefiRuntimeServicesTableLib.h>
#include <Protocol/SimpleTextIn.h>
#include <StandIns/StandInFirmwareEvents.h>

#include "StandInTest.h"

namespace {

constexpr UINT16 kScanF1 = 0x0B;
constexpr UINT16 kScanF2 = 0x0C;

class FirmwareEventsTest : public StandInTest {
protected:
  void
  SetUp () override
  {
    StandInTest::SetUp ();
    ASSERT_EQ (StandInUseFirmwareEvents (), EFI_SUCCESS);
  }

  /** Makes HandlerA the page handler of a displayed page that ends its loop after Count events. **/
  UINTN
  PageEndingAfter (UINTN Count)
  {
    UINTN Page = NewPage ();

    EXPECT_EQ (mUi->Pages->DisplayPage (Page, 0), EFI_SUCCESS);
    EXPECT_EQ (mUi->Pages->SetEventHandler (HandlerFunction (HandlerA)), EFI_SUCCESS);
    ExitAfter (HandlerA, Count);
    return Page;
  }

  /** Lets Which end the running loop at its Count-th event. **/
  void
  ExitAfter (TestHandler Which, UINTN Count)
  {
    OnEvent (Which, [this, Which, Count] (UI_EVENT *) {
      if (Received (Which).size () == Count) {
        mUi->Pages->ExitEventLoop ();
      }

      return (UINTN)UI_EVENT_HANDLED;
    });
  }

  /** Shows a prompt page (field of MaxLength characters) as the active page; its show handler is HandlerB. **/
  UINTN
  ActivePrompt (UINTN MaxLength)
  {
    PROMPT_INTERFACE *Prompt = nullptr;
    UINTN Page = NewPromptPage (&Prompt);

    EXPECT_NE (Prompt, nullptr);
    if (Prompt != nullptr) {
      EXPECT_EQ (Prompt->ShowPrompt (Wide ("Admin Unlock").data (), Wide ("Enter the password").data (),
                                     Wide ("SN-3B7C").data (), 0, MaxLength, HandlerFunction (HandlerB)),
                 EFI_SUCCESS);
    }

    EXPECT_EQ (mUi->Pages->SetActivePage (Page), EFI_SUCCESS);
    return Page;
  }

  /** @return the text of the prompt's password field now. **/
  std::string
  FieldText (UINTN Page)
  {
    STAND_IN_TEXT Text{};

    EXPECT_TRUE (StandInGetControlText (Page, PROMPT_CONTROL_PASSWORD, &Text));
    return (Text.String == nullptr) ? std::string () : Narrow (Text.String);
  }

  void
  Type (const std::string &Text)
  {
    for (char Character : Text) {
      Platform ().Console ().PushKey (0, (CHAR16)Character);
    }
  }
};

TEST_F (FirmwareEventsTest, QueuedKeysBecomeKeyEventsWithoutWaiting)
{
  PageEndingAfter (3);
  Platform ().Console ().PushKey (0, u'a');
  Platform ().Console ().PushKey (kScanF2, 0);
  Platform ().Console ().PushKey (SCAN_ESC, 0);

  ASSERT_EQ (mUi->Pages->RunEventLoop (), EFI_SUCCESS);
  ASSERT_EQ (Received (HandlerA).size (), 3U);
  const UINTN Expected[] = {0x61U, 0x0C0000U, 0x170000U};
  for (UINTN Index = 0; Index < 3; Index++) {
    EXPECT_EQ (Received (HandlerA)[Index].EventCode, UI_EVENT_KEY) << Index;
    EXPECT_EQ (Received (HandlerA)[Index].Control, 0U) << Index;
    EXPECT_EQ (Received (HandlerA)[Index].Data, Expected[Index]) << Index;
  }

  EXPECT_EQ (Platform ().Clock ().StalledMicroseconds (), 0U) << "keys that wait are taken at once";
  EXPECT_EQ (Platform ().Console ().PendingKeys (), 0U);
}

TEST_F (FirmwareEventsTest, TicksComeOncePerClockSecondWithTheTime)
{
  EFI_TIME Start{};
  std::vector<EFI_TIME> Ticks;

  Start.Year = 2025;
  Start.Month = 3;
  Start.Day = 14;
  Start.Hour = 9;
  Start.Minute = 59;
  Start.Second = 58;
  Start.Nanosecond = 500000000;
  Start.TimeZone = EFI_UNSPECIFIED_TIMEZONE;
  Platform ().Clock ().SetTime (Start);

  PageEndingAfter (3);
  OnEvent (HandlerA, [this, &Ticks] (UI_EVENT *Event) {
    EXPECT_EQ (Event->EventCode, UI_EVENT_TIMER_TICK);
    EXPECT_EQ (Event->Control, 0U);
    EXPECT_NE (Event->Data, 0U);
    if (Event->Data != 0) {
      Ticks.push_back (*AsPointer<EFI_TIME> (Event->Data));
    }

    if (Ticks.size () == 3) {
      mUi->Pages->ExitEventLoop ();
    }

    return (UINTN)UI_EVENT_HANDLED;
  });

  ASSERT_EQ (mUi->Pages->RunEventLoop (), EFI_SUCCESS);
  ASSERT_EQ (Ticks.size (), 3U);
  EXPECT_EQ (Ticks[0].Second, 59);
  EXPECT_EQ (Ticks[1].Second, 0);
  EXPECT_EQ (Ticks[1].Minute, 0);
  EXPECT_EQ (Ticks[1].Hour, 10);
  EXPECT_EQ (Ticks[2].Second, 1);
  EXPECT_EQ (Ticks[2].Day, 14);

  //
  // Half a second to the first change of the second, then one per tick; the
  // source waits in 10 ms stalls only.
  //
  EXPECT_EQ (Platform ().Clock ().StalledMicroseconds (), 2500000U);
  EXPECT_EQ (Platform ().Calls ().Count (HostService::Stall), 250U);
}

TEST_F (FirmwareEventsTest, KeysComeBeforeTheNextTick)
{
  PageEndingAfter (2);
  Platform ().Clock ().Advance (990000);
  Platform ().Console ().PushKey (kScanF1, 0);

  ASSERT_EQ (mUi->Pages->RunEventLoop (), EFI_SUCCESS);
  ASSERT_EQ (Received (HandlerA).size (), 2U);
  EXPECT_EQ (Received (HandlerA)[0].EventCode, UI_EVENT_KEY);
  EXPECT_EQ (Received (HandlerA)[0].Data, 0x0B0000U);
  EXPECT_EQ (Received (HandlerA)[1].EventCode, UI_EVENT_TIMER_TICK);
  EXPECT_EQ (Platform ().Clock ().StalledMicroseconds (), 10000U) << "the first poll only read the second";
}

TEST_F (FirmwareEventsTest, AFailingClockEndsTheLoopAfterASecond)
{
  PageEndingAfter (100);
  Platform ().Calls ().FailAllAfter (HostService::GetTime, EFI_DEVICE_ERROR);

  EXPECT_EQ (mUi->Pages->RunEventLoop (), EFI_ABORTED);
  EXPECT_EQ (State ().LoopsRanDry, 1U);
  EXPECT_EQ (Received (HandlerA).size (), 0U);
  EXPECT_EQ (Platform ().Clock ().StalledMicroseconds (), 990000U);
  Platform ().Calls ().StopFailing (HostService::GetTime);
}

TEST_F (FirmwareEventsTest, WithoutRuntimeServicesTheSourceIsNotChanged)
{
  EFI_RUNTIME_SERVICES *Saved = gRT;

  StandInSetEventSource (nullptr, nullptr);
  gRT = nullptr;
  EXPECT_EQ (StandInUseFirmwareEvents (), EFI_NOT_READY);
  gRT = Saved;
  PageEndingAfter (1);
  Platform ().Console ().PushKey (0, u'q');
  EXPECT_EQ (mUi->Pages->RunEventLoop (), EFI_ABORTED) << "still no source";
  EXPECT_EQ (Platform ().Console ().PendingKeys (), 1U);
}

TEST_F (FirmwareEventsTest, PromptTypingStopsAtTheMaximumAndBackspaceRemoves)
{
  UINTN Page = ActivePrompt (4);
  std::string Submitted;

  OnEvent (HandlerB, [this, &Submitted] (UI_EVENT *Event) {
    EXPECT_EQ (Event->EventCode, UI_EVENT_TEXT_SUBMITTED);
    EXPECT_EQ (Event->Control, (UINTN)PROMPT_CONTROL_PASSWORD);
    Submitted = Narrow (AsPointer<CHAR16> (Event->Data));
    mUi->Pages->ExitEventLoop ();
    return (UINTN)UI_EVENT_HANDLED;
  });

  Type ("abcde");
  Platform ().Console ().PushKey (0, CHAR_BACKSPACE);
  Type ("x\r");
  ASSERT_EQ (mUi->Pages->RunEventLoop (), EFI_SUCCESS);
  EXPECT_EQ (Received (HandlerB).size (), 1U) << "typing gives no events";
  EXPECT_EQ (Submitted, "abcx");
  EXPECT_EQ (FieldText (Page), "abcx") << "the field is emptied only when the next event is taken";
}

TEST_F (FirmwareEventsTest, BackspaceOnAnEmptyFieldAndPrintableBoundsAreHandled)
{
  UINTN Page = ActivePrompt (8);
  std::string Submitted;

  OnEvent (HandlerB, [this, &Submitted] (UI_EVENT *Event) {
    Submitted = Narrow (AsPointer<CHAR16> (Event->Data));
    mUi->Pages->ExitEventLoop ();
    return (UINTN)UI_EVENT_HANDLED;
  });

  Platform ().Console ().PushKey (0, CHAR_BACKSPACE);
  Platform ().Console ().PushKey (0, u' ');
  Platform ().Console ().PushKey (0, u'~');
  Platform ().Console ().PushKey (0, CHAR_CARRIAGE_RETURN);
  ASSERT_EQ (mUi->Pages->RunEventLoop (), EFI_SUCCESS);
  EXPECT_EQ (Submitted, " ~");
  EXPECT_EQ (FieldText (Page), " ~");
}

TEST_F (FirmwareEventsTest, TheFieldIsEmptiedBeforeTheNextEventUnlessTheHandlerDidIt)
{
  UINTN Page = ActivePrompt (16);
  std::vector<std::string> FieldAtEvent;

  OnEvent (HandlerB, [this, Page, &FieldAtEvent] (UI_EVENT *) {
    FieldAtEvent.push_back (FieldText (Page));
    mUi->Pages->ExitEventLoop ();
    return (UINTN)UI_EVENT_HANDLED;
  });

  Type ("pw1\r");
  ASSERT_EQ (mUi->Pages->RunEventLoop (), EFI_SUCCESS);
  Platform ().Console ().PushKey (kScanF1, 0);
  ASSERT_EQ (mUi->Pages->RunEventLoop (), EFI_SUCCESS);
  ASSERT_EQ (FieldAtEvent.size (), 2U);
  EXPECT_EQ (FieldAtEvent[0], "pw1");
  EXPECT_EQ (FieldAtEvent[1], "") << "left by the handler: emptied by the source";

  //
  // A handler that puts its own text into the field keeps it.
  //
  static constexpr auto Own = CompileTime::MakeWideString (u"kept");
  OnEvent (HandlerB, [this, Page, &FieldAtEvent] (UI_EVENT *Event) {
    FieldAtEvent.push_back (FieldText (Page));
    if (Event->EventCode == UI_EVENT_TEXT_SUBMITTED) {
      EXPECT_EQ (mUi->Attributes->SetControlData (Page, PROMPT_CONTAINER, PROMPT_CONTROL_PASSWORD, UI_DATA_TEXT,
                                                  (UINTN)Own.Text, 0, 0),
                 EFI_SUCCESS);
    }

    mUi->Pages->ExitEventLoop ();
    return (UINTN)UI_EVENT_HANDLED;
  });
  Type ("pw2\r");
  ASSERT_EQ (mUi->Pages->RunEventLoop (), EFI_SUCCESS);
  Platform ().Console ().PushKey (kScanF1, 0);
  ASSERT_EQ (mUi->Pages->RunEventLoop (), EFI_SUCCESS);
  ASSERT_EQ (FieldAtEvent.size (), 4U);
  EXPECT_EQ (FieldAtEvent[2], "pw2");
  EXPECT_EQ (FieldAtEvent[3], "kept");
}

TEST_F (FirmwareEventsTest, SubmittedTextOutlivesTheHandlerEmptyingTheField)
{
  UINTN Page = ActivePrompt (16);
  std::string Submitted;

  OnEvent (HandlerB, [this, Page, &Submitted] (UI_EVENT *Event) {
    EXPECT_EQ (mUi->Attributes->SetControlData (Page, PROMPT_CONTAINER, PROMPT_CONTROL_PASSWORD, UI_DATA_TEXT, 0, 0, 0),
               EFI_SUCCESS);
    Submitted = Narrow (AsPointer<CHAR16> (Event->Data));
    mUi->Pages->ExitEventLoop ();
    return (UINTN)UI_EVENT_HANDLED;
  });

  Type ("secret\r");
  ASSERT_EQ (mUi->Pages->RunEventLoop (), EFI_SUCCESS);
  EXPECT_EQ (Submitted, "secret");
  EXPECT_EQ (FieldText (Page), "");
}

TEST_F (FirmwareEventsTest, EscapeActivatesCancelAndOtherKeysStayKeyEvents)
{
  ActivePrompt (8);
  ExitAfter (HandlerB, 3);
  Platform ().Console ().PushKey (kScanF1, 0);
  Platform ().Console ().PushKey (0, 0x7F);
  Platform ().Console ().PushKey (SCAN_ESC, 0);

  ASSERT_EQ (mUi->Pages->RunEventLoop (), EFI_SUCCESS);
  ASSERT_EQ (Received (HandlerB).size (), 3U);
  EXPECT_EQ (Received (HandlerB)[0].EventCode, UI_EVENT_KEY);
  EXPECT_EQ (Received (HandlerB)[0].Data, 0x0B0000U);
  EXPECT_EQ (Received (HandlerB)[1].EventCode, UI_EVENT_KEY);
  EXPECT_EQ (Received (HandlerB)[1].Data, 0x7FU);
  EXPECT_EQ (Received (HandlerB)[2].EventCode, UI_EVENT_CONTROL_ACTIVATED);
  EXPECT_EQ (Received (HandlerB)[2].Control, (UINTN)PROMPT_CONTROL_CANCEL);
  EXPECT_EQ (Received (HandlerB)[2].Data, 0U);
}

TEST_F (FirmwareEventsTest, TypingOnAnOrdinaryPageIsDeliveredAsKeys)
{
  PageEndingAfter (2);
  UINTN Prompt = NewPromptPage ();
  Type ("a\r");

  ASSERT_EQ (mUi->Pages->RunEventLoop (), EFI_SUCCESS);
  ASSERT_EQ (Received (HandlerA).size (), 2U);
  EXPECT_EQ (Received (HandlerA)[0].Data, (UINTN)'a');
  EXPECT_EQ (Received (HandlerA)[1].EventCode, UI_EVENT_KEY);
  EXPECT_EQ (Received (HandlerA)[1].Data, 13U);
  EXPECT_EQ (FieldText (Prompt), "") << "a prompt page that is not active takes no keys";
}

} // namespace

TEST_F (FirmwareEventsTest, EventsAreRaisedOnTheFirstControlWithAHandler)
{
  UINTN Page = NewPage ();
  UINTN Plain = NewImageControl (Page, nullptr);
  UINTN Watched = NewImageControl (Page, HandlerFunction (HandlerA));

  ASSERT_NE (Plain, Watched);
  ASSERT_EQ (mUi->Pages->DisplayPage (Page, 0), EFI_SUCCESS);
  ExitAfter (HandlerA, 1);
  Platform ().Console ().PushKey (0, u'x');

  ASSERT_EQ (mUi->Pages->RunEventLoop (), EFI_SUCCESS);
  ASSERT_EQ (Received (HandlerA).size (), 1U) << "a page without a page handler hears keys through its control";
  EXPECT_EQ (Received (HandlerA)[0].Control, Watched);
}

TEST_F (FirmwareEventsTest, AfterEndUiSessionLoopsEndUntilAPageStartsANewSession)
{
  PageEndingAfter (1);
  Platform ().Console ().PushKey (0, u'a');
  ASSERT_EQ (mUi->Services->Session->EndUiSession (), EFI_SUCCESS);

  EXPECT_EQ (mUi->Pages->RunEventLoop (), EFI_ABORTED) << "the UI has handed over: nothing is delivered";
  EXPECT_TRUE (Received (HandlerA).empty ());
  EXPECT_EQ (Platform ().Console ().PendingKeys (), 1U) << "the key stays for whoever owns the console now";

  ASSERT_EQ (mUi->Services->SetUiMode (2), EFI_SUCCESS);
  EXPECT_EQ (mUi->Pages->RunEventLoop (), EFI_ABORTED) << "only mode 1 starts a session";
  ASSERT_EQ (mUi->Services->SetUiMode (1), EFI_SUCCESS);
  ASSERT_EQ (mUi->Pages->RunEventLoop (), EFI_SUCCESS);
  ASSERT_EQ (Received (HandlerA).size (), 1U);
  EXPECT_EQ (Received (HandlerA)[0].Data, (UINTN)u'a');
}
