/** @file
  How the flash page closes: values of 100 and more, the count-up of clock
  seconds with the countdown inherited from the welcome page, the ticks that
  do not count, and Enter or Escape.
**/
#include "FlashPageFlow.h"

namespace {

//
// Values of 100 and more.
//

struct FullCase {
  const char *Name;
  UINTN Percent;
  bool Shown; ///< the bar and the percentage show the value
};

class FlashFullTest : public FlashPageTest, public ::testing::WithParamInterface<FullCase> {};

TEST_P (FlashFullTest, AValueOf100OrMoreClosesThePageAtTheNextEvent)
{
  ASSERT_TRUE (BootFlash ());
  FlashControls F = ShowFlash ();
  Flash ().SetProgress (64);
  UINTN Start = Mark ();
  Flash ().SetProgress (GetParam ().Percent);
  std::vector<FlowCall> Shown = GetParam ().Shown ? ProgressCalls (F, 100) : std::vector<FlowCall>{};
  EXPECT_EQ (CallsSince (Start, Shown), Describe (Shown, Shown));
  EXPECT_EQ (Bar (F), GetParam ().Shown ? 100u : 64u);
  EXPECT_EQ (ControlText (F.Page, F.Percent), GetParam ().Shown ? u"   100%" : u"   64%");
  EXPECT_FALSE (PageDestroyed (F.Page));

  // Any event closes the page, a key that means nothing included; the bar is set to 100 first.
  Start = Mark ();
  EXPECT_EQ (Deliver (UI_EVENT{0, F.Status, UI_EVENT_KEY, 'x'}), UI_EVENT_HANDLED_PAGE_CLOSED);
  EXPECT_EQ (mCodeAfter, UI_EVENT_CLOSE);
  std::vector<FlowCall> Expected = {{"DeliverEvent", {kAny, F.Status, UI_EVENT_KEY, 'x', 0}}};
  std::vector<FlowCall> Progress = ProgressCalls (F, 100);
  std::vector<FlowCall> Exit = ExitCalls (F.Page);
  Expected.insert (Expected.end (), Progress.begin (), Progress.end ());
  Expected.insert (Expected.end (), Exit.begin (), Exit.end ());
  EXPECT_EQ (CallsSince (Start, Expected), Describe (Expected, Expected));
  EXPECT_TRUE (PageDestroyed (F.Page));
  EXPECT_EQ (Framework ().EndUiSessions, 1u);

  // Without a page the members pass page 0 and redraw nothing.
  Start = Mark ();
  Flash ().SetProgress (20);
  Flash ().SetStatusText (nullptr);
  EXPECT_EQ (mLog.size () - Start, 3u) << "bar, percentage and status line";
  for (UINTN Index = Start; Index < mLog.size (); Index++) {
    EXPECT_EQ (mLog[Index].Name, "SetControlData");
    EXPECT_EQ (mLog[Index].Arguments[0], 0u);
  }
}

INSTANTIATE_TEST_SUITE_P (Percent,
                          FlashFullTest,
                          ::testing::Values (FullCase{"Full", 100, true},
                                             FullCase{"OneHundredAndFifty", 150, false},
                                             FullCase{"Largest", MAX_UINTN, false}),
                          CaseName<FullCase>);

//
// Counted seconds.
//

struct CountUpCase {
  const char *Name;
  int CountdownItem; ///< item 1183 for a welcome page run before; -1: no welcome page
  UINTN Counted;     ///< counted seconds until the next event closes
};

class FlashCountUpTest : public FlashPageTest, public ::testing::WithParamInterface<CountUpCase> {};

TEST_P (FlashCountUpTest, EachClockSecondAddsTenPointsUntilTheCountdownOrTheBarEnds)
{
  ASSERT_TRUE (BootFlash (GetParam ().CountdownItem));
  FlashControls F = ShowFlash ();
  const UINTN Start = Mark ();

  //
  // Each second comes from the logo first (not counted), then twice from the
  // bar (counted once). The repeat after the last counted second is the event
  // that closes the page.
  //
  for (UINTN Second = 1; Second <= GetParam ().Counted; Second++) {
    EXPECT_EQ (DeliverTick (F.Logo, (UINT8)Second), UI_EVENT_NOT_HANDLED) << Second;
    EXPECT_EQ (DeliverTick (F.Progress, (UINT8)Second), UI_EVENT_HANDLED) << Second;
    EXPECT_EQ (Bar (F), (Second - 1) * 10);
    EXPECT_EQ (ControlText (F.Page, F.Percent), Percentage ((Second - 1) * 10));
    if (Second < GetParam ().Counted) {
      EXPECT_EQ (DeliverTick (F.Progress, (UINT8)Second), UI_EVENT_NOT_HANDLED) << Second;
    }
  }

  EXPECT_FALSE (PageDestroyed (F.Page));
  EXPECT_EQ (DeliverTick (F.Progress, (UINT8)GetParam ().Counted), UI_EVENT_HANDLED_PAGE_CLOSED);
  EXPECT_EQ (mCodeAfter, UI_EVENT_CLOSE);
  EXPECT_TRUE (PageDestroyed (F.Page));
  EXPECT_EQ (Framework ().EndUiSessions, 1u);

  std::vector<UINTN> Values;
  for (UINTN Index = Start; Index < mLog.size (); Index++) {
    if ((mLog[Index].Name == "SetControlData") && (mLog[Index].Arguments[3] == kValueTag)) {
      Values.push_back (mLog[Index].Arguments[4]);
    }
  }

  std::vector<UINTN> Expected;
  for (UINTN Second = 1; Second <= GetParam ().Counted; Second++) {
    Expected.push_back ((Second - 1) * 10);
  }

  Expected.push_back (100);
  EXPECT_EQ (Values, Expected);
}

INSTANTIATE_TEST_SUITE_P (Countdown,
                          FlashCountUpTest,
                          ::testing::Values (CountUpCase{"WithoutWelcomePage", -1, 1},
                                             CountUpCase{"WelcomeCountdownZero", 0, 1},
                                             CountUpCase{"WelcomeCountdownFive", 1, 6},
                                             CountUpCase{"WelcomeCountdownTenReachesFullBar", 2, 11}),
                          CaseName<CountUpCase>);

TEST_F (FlashPageTest, TicksThatAreNotANewSecondOfTheBarCountNot)
{
  ASSERT_TRUE (BootFlash ());
  FlashControls F = ShowFlash ();
  EFI_TIME Late{};
  Late.Second = 60;

  const UINTN Start = Mark ();
  EXPECT_EQ (DeliverTick (F.Progress, 0), UI_EVENT_NOT_HANDLED) << "second 0 is the tick value the page starts with";
  EXPECT_EQ (DeliverTick (F.Status, 9), UI_EVENT_NOT_HANDLED) << "another control";
  EXPECT_EQ (Deliver (UI_EVENT{0, F.Progress, UI_EVENT_TIMER_TICK, (UINTN)&Late}), UI_EVENT_NOT_HANDLED);
  EXPECT_EQ (Deliver (UI_EVENT{0, F.Progress, UI_EVENT_TIMER_TICK, 0}), UI_EVENT_NOT_HANDLED);
  EXPECT_EQ (Deliver (UI_EVENT{0, F.Progress, UI_EVENT_CONTROL_ACTIVATED, 0}), UI_EVENT_NOT_HANDLED);
  EXPECT_EQ (Deliver (UI_EVENT{0, F.Progress, UI_EVENT_KEY, 'y'}), UI_EVENT_NOT_HANDLED);
  EXPECT_EQ (Mark (), Start + 6) << "only the deliveries themselves";
  EXPECT_FALSE (PageDestroyed (F.Page));
}

TEST_F (FlashPageTest, AWelcomeCountdownThatRanOutClosesTheFlashPageAtItsFirstEvent)
{
  ASSERT_TRUE (BootFlash ());
  WelcomeControls Welcome = ShowWelcome ();
  Tick (Welcome.Logo, 1);
  Tick (Welcome.Logo, 2);
  EXPECT_EQ (RunLoop (), EFI_SUCCESS);
  ASSERT_TRUE (PageDestroyed (Welcome.Page)) << "the welcome page's countdown ran out";

  FlashControls F = ShowFlash ();
  EXPECT_EQ (Deliver (UI_EVENT{0, F.Status, UI_EVENT_KEY, 'x'}), UI_EVENT_HANDLED_PAGE_CLOSED);
  EXPECT_TRUE (PageDestroyed (F.Page));
  EXPECT_EQ (Bar (F), 100u);
}

TEST_F (FlashPageTest, AnEventHandlerCallWithoutAnEventClosesOnlyWhatIsDue)
{
  ASSERT_TRUE (BootFlash ());
  FlashControls F = ShowFlash ();
  STAND_IN_CONTROL_INFO Progress;
  ASSERT_TRUE (StandInFindControl (F.Page, F.Progress, &Progress));
  ASSERT_NE (Progress.Handler, nullptr);

  EXPECT_EQ (Progress.Handler (nullptr), UI_EVENT_NOT_HANDLED);
  EXPECT_FALSE (PageDestroyed (F.Page));
  Flash ().SetProgress (100);
  EXPECT_EQ (Progress.Handler (nullptr), UI_EVENT_HANDLED_PAGE_CLOSED);
  EXPECT_TRUE (PageDestroyed (F.Page));
  EXPECT_EQ (Framework ().EndUiSessions, 1u);
}

struct CloseKeyCase {
  const char *Name;
  UINTN Data;
};

class FlashCloseKeyTest : public FlashPageTest, public ::testing::WithParamInterface<CloseKeyCase> {};

TEST_P (FlashCloseKeyTest, ClosesThePageWhateverTheProgress)
{
  ASSERT_TRUE (BootFlash ());
  FlashControls F = ShowFlash ();
  Flash ().SetProgress (30);

  const UINTN Start = Mark ();
  EXPECT_EQ (Deliver (UI_EVENT{0, F.Message, UI_EVENT_KEY, GetParam ().Data}), UI_EVENT_HANDLED);
  std::vector<FlowCall> Expected = ExitCalls (F.Page);
  Expected.insert (Expected.begin (), {"DeliverEvent", {kAny, F.Message, UI_EVENT_KEY, GetParam ().Data, 0}});
  EXPECT_EQ (CallsSince (Start, Expected), Describe (Expected, Expected));
  EXPECT_EQ (mCodeAfter, UI_EVENT_KEY);
  EXPECT_EQ (Bar (F), 30u);

  // In the framework's loop the page's exit ends the loop.
  F = ShowFlash ();
  Key (F.Logo, 'a');
  Tick (F.Logo, 1);
  Key (F.Logo, GetParam ().Data);
  Key (F.Logo, 'b');
  EXPECT_EQ (RunLoop (), EFI_SUCCESS);
  EXPECT_EQ (mScript.size (), 1u);
  EXPECT_EQ (Framework ().LoopsEndedByExit, 1u);
  EXPECT_TRUE (PageDestroyed (F.Page));
}

INSTANTIATE_TEST_SUITE_P (Key,
                          FlashCloseKeyTest,
                          ::testing::Values (CloseKeyCase{"Enter", UI_KEY_ENTER},
                                             CloseKeyCase{"Escape", UI_KEY_ESCAPE}),
                          CaseName<CloseKeyCase>);

} // namespace
