/** @file
  The flash page over its life: a second Show, a Show after the close, the
  session pass-through, the page forgotten before the OS boots, a page engine
  that fails, and a whole session as the flash client stand-in plays it.
**/
#include "FlashPageFlow.h"

namespace {

TEST_F (FlashPageTest, ASecondShowOnlyRedrawsAndResetsNothing)
{
  ASSERT_TRUE (BootFlash (1));
  FlashControls F = ShowFlash ();
  EXPECT_EQ (DeliverTick (F.Progress, 1), UI_EVENT_HANDLED);
  Flash ().SetProgress (40);
  Flash ().SetStatusText (const_cast<CHAR8 *> ("Writing"));
  Flash ().ShowResult (FlashResultSuccess);

  const UINTN Start = Mark ();
  const UINTN Pages = LiveFlashPages ();
  EXPECT_EQ (ShowFlash ().Page, F.Page);
  EXPECT_EQ (CallsSince (Start, {}), std::vector<std::string>{Describe ({"RefreshPage", {F.Page}}, {})});
  EXPECT_EQ (LiveFlashPages (), Pages);
  EXPECT_EQ (Bar (F), 40u);
  EXPECT_EQ ((std::vector<std::u16string>{ControlText (F.Page, F.Percent), ControlText (F.Page, F.Status),
                                          ControlText (F.Page, F.Message)}),
             (std::vector<std::u16string>{u"   40%", u"Writing", u"BIOS Update successful."}));
  EXPECT_EQ (Colour (F.Page, F.Message), kGreen);

  // The count of seconds goes on: the second counted second shows 10%.
  EXPECT_EQ (DeliverTick (F.Progress, 2), UI_EVENT_HANDLED);
  EXPECT_EQ (Bar (F), 10u);
}

TEST_F (FlashPageTest, AShowAfterTheCloseBuildsANewPageAndCountsAgainFromZero)
{
  ASSERT_TRUE (BootFlash (2));
  FlashControls First = ShowFlash ();
  EXPECT_EQ (DeliverTick (First.Progress, 1), UI_EVENT_HANDLED);
  EXPECT_EQ (DeliverTick (First.Progress, 2), UI_EVENT_HANDLED);
  Flash ().SetProgress (70);
  Flash ().SetStatusText (const_cast<CHAR8 *> ("Writing"));
  EXPECT_EQ (Deliver (UI_EVENT{0, First.Progress, UI_EVENT_KEY, UI_KEY_ESCAPE}), UI_EVENT_HANDLED);
  ASSERT_TRUE (PageDestroyed (First.Page));

  FlashControls Second = ShowFlash ();
  EXPECT_NE (Second.Page, First.Page);
  EXPECT_EQ (LiveFlashPages (), 1u);
  EXPECT_EQ (Bar (Second), 0u);
  EXPECT_EQ (ControlText (Second.Page, Second.Percent), u"   0%");
  EXPECT_EQ (ControlText (Second.Page, Second.Message), gFlashWarning);
  EXPECT_EQ (ControlText (Second.Page, Second.Status), u"");

  // The key's close kept the last tick value: second 2 does not count again, second 3 shows 0%.
  EXPECT_EQ (DeliverTick (Second.Progress, 2), UI_EVENT_NOT_HANDLED);
  EXPECT_EQ (DeliverTick (Second.Progress, 3), UI_EVENT_HANDLED);
  EXPECT_EQ (Bar (Second), 0u);
  EXPECT_EQ (DeliverTick (Second.Progress, 4), UI_EVENT_HANDLED);
  EXPECT_EQ (Bar (Second), 10u);
}

TEST_F (FlashPageTest, SessionPassThroughHandsItsArgumentsToSessionRequestWithTheServiceTableFirst)
{
  ASSERT_TRUE (BootFlash ());
  const EFI_STATUS Statuses[] = {EFI_DEVICE_ERROR, ENCODE_WARNING (3), EFI_SUCCESS};
  UINT64 Unused = 0; ///< what the caller passes first: replaced by the service table
  const UINTN Start = Mark ();

  for (UINTN Index = 0; Index < ARRAY_SIZE (Statuses); Index++) {
    StandInSetSessionRequestStatus (Statuses[Index]);
    EXPECT_EQ (Flash ().SessionPassThrough (&Unused, Index, MAX_UINTN, 0, 0x8000000000000001ULL), Statuses[Index]);
    STAND_IN_FRAMEWORK_STATE State = Framework ();
    EXPECT_EQ (State.SessionRequests, Index + 1);
    EXPECT_EQ (std::vector<UINTN> (State.SessionArguments, State.SessionArguments + 5),
               (std::vector<UINTN>{(UINTN)mFramework->Services, Index, MAX_UINTN, 0, 0x8000000000000001ULL}));
  }

  EXPECT_EQ (Trace ({"SessionRequest"}), std::vector<std::string> (3, "SessionRequest"));
  EXPECT_EQ (Mark () - Start, 3u) << "nothing but the requests";
}

TEST_F (FlashPageTest, FinishWelcomePageForgetsTheFlashPageWithoutDestroyingIt)
{
  ASSERT_TRUE (BootFlash ());
  FlashControls First = ShowFlash ();
  Flash ().SetProgress (30);
  Ui ().FinishWelcomePage ();
  EXPECT_FALSE (PageDestroyed (First.Page));

  // Forgotten: the bar is addressed on no page and nothing is redrawn.
  const UINTN Start = Mark ();
  Flash ().SetProgress (60);
  std::vector<FlowCall> Expected = {{"SetControlData", {0, kContainer, 0, kValueTag, 60, 0, 0}}};
  EXPECT_EQ (CallsSince (Start, Expected), Describe (Expected, Expected));
  EXPECT_EQ (Bar (First), 30u);

  FlashControls Second = ShowFlash ();
  EXPECT_EQ (Trace ({"CreatePage"}).size (), 2u);
  EXPECT_NE (Second.Page, First.Page);
  EXPECT_EQ (LiveFlashPages (), 2u) << "the first page is left as it was";
  EXPECT_EQ (ControlText (Second.Page, Second.Message), gFlashWarning);
  Flash ().SetProgress (80);
  EXPECT_EQ (Bar (Second), 80u);
  EXPECT_EQ (Bar (First), 30u);
}

TEST_F (FlashPageTest, AFailedPageIsShownAsNoneAndTheNextShowTriesAgain)
{
  ASSERT_TRUE (BootFlash ());
  StandInFailOperation (StandInOpCreatePage, 1, EFI_OUT_OF_RESOURCES);
  const UINTN Start = Mark ();
  Flash ().Show ();
  EXPECT_EQ (LiveFlashPages (), 0u);
  std::set<std::string> Made = {"CreateImageControl", "CreateProgressControl", "CreateTextControl", "SetEventHandler",
                                "RefreshPage"};
  for (UINTN Index = Start; Index < mLog.size (); Index++) {
    const FlowCall &Call = mLog[Index];
    EXPECT_EQ (Made.count (Call.Name), 0u) << Call.Name;
    if ((Call.Name.compare (0, 10, "SetControl") == 0) || (Call.Name == "DisplayPage")) {
      EXPECT_EQ (Call.Arguments[0], 0u) << Describe (Call, {}) << ": only page 0";
    }
  }

  EXPECT_EQ (Trace ({"DisplayPage"}).size (), 1u);
  FlashControls F = ShowFlash ();
  EXPECT_EQ (LiveFlashPages (), 1u);
  EXPECT_EQ (ControlText (F.Page, F.Message), gFlashWarning);
}

struct FailedControlCase {
  const char *Name;
  UINTN TextControl; ///< which CreateTextControl fails: 1 message, 4 percentage
};

class FlashFailedControlTest : public FlashPageTest, public ::testing::WithParamInterface<FailedControlCase> {};

TEST_P (FlashFailedControlTest, GetsNoAttributesAndTheOthersAreBuilt)
{
  ASSERT_TRUE (BootFlash ());
  StandInFailOperation (StandInOpCreateTextControl, GetParam ().TextControl, EFI_OUT_OF_RESOURCES);
  const UINTN Start = Mark ();
  Flash ().Show ();

  // Attribute calls that follow each creation, by creation.
  std::vector<UINTN> Attributes;
  for (UINTN Index = Start; Index < mLog.size (); Index++) {
    const std::string &Name = mLog[Index].Name;
    if (Name.compare (0, 6, "Create") == 0) {
      Attributes.push_back (0);
    } else if ((Name == "SetEventHandler") || (Name == "DisplayPage")) {
      break;
    } else if (!Attributes.empty ()) {
      Attributes.back ()++;
    }
  }

  std::vector<UINTN> Expected = {0, 7, 7, 8, 9, 7, 6};
  Expected[1 + 1 + GetParam ().TextControl] = 0;
  EXPECT_EQ (Attributes, Expected) << "page, logo, bar, message, status, label, percentage";

  STAND_IN_PAGE_INFO Info;
  ASSERT_TRUE (StandInFindPage (FlashPageMadeLast ().Page, &Info));
  EXPECT_EQ (Info.ControlCount, 5u);
  EXPECT_EQ (Info.DisplayCount, 1u);
}

INSTANTIATE_TEST_SUITE_P (Text,
                          FlashFailedControlTest,
                          ::testing::Values (FailedControlCase{"Message", 1}, FailedControlCase{"Percentage", 4}),
                          CaseName<FailedControlCase>);

//
// A whole session as the flash client plays it.
//

TEST_F (FlashPageTest, TheFlashClientsSessionEndsWithItsOutcomeAndTheNextEventCloses)
{
  ASSERT_TRUE (BootFlash ());
  const STAND_IN_FLASH_STEP Steps[] = {
    {StandInFlashStatusText, 0, "Erasing"}, {StandInFlashProgress, 25, nullptr},  {StandInFlashProgress, 50, nullptr},
    {StandInFlashStatusText, 0, "Writing"}, {StandInFlashProgress, 100, nullptr}, {StandInFlashStatusText, 0, "Done"},
  };
  STAND_IN_FLASH_SCRIPT Script = {Steps, ARRAY_SIZE (Steps), FlashResultSuccessReboot, FALSE, nullptr, nullptr};

  ASSERT_EQ (StandInRunFlashClient (&Flash (), &Script), EFI_SUCCESS);
  FlashControls F = FlashPageMadeLast ();

  // Each call of the client reaches the page at once, before the client's next call.
  std::vector<std::string> Order =
    Trace ({"Show", "SetProgress", "SetStatusText", "ShowResult", "CreatePage", "DisplayPage", "GetString"});
  EXPECT_EQ (Order, (std::vector<std::string>{"Show", "CreatePage", "DisplayPage", "GetString", "GetString",
                                              "SetStatusText", "SetProgress", "SetProgress", "SetStatusText",
                                              "SetProgress", "SetStatusText", "ShowResult", "GetString"}));
  for (UINTN Index = 0; Index + 1 < mLog.size (); Index++) {
    if (mLog[Index].Name == "SetProgress") {
      EXPECT_EQ (Describe (mLog[Index + 1], {}),
                 Describe (Attribute (F.Page, F.Progress, kValueTag, mLog[Index].Arguments[0]), {}));
    }
  }

  EXPECT_EQ (Bar (F), 100u);
  EXPECT_EQ (ControlText (F.Page, F.Percent), u"   100%");
  EXPECT_EQ (ControlText (F.Page, F.Status), u"Done");
  EXPECT_EQ (ControlText (F.Page, F.Message), u"BIOS Update successful. Rebooting your system.");
  EXPECT_EQ (Colour (F.Page, F.Message), kGreen);

  Tick (F.Logo, 1);
  EXPECT_EQ (RunLoop (), EFI_SUCCESS);
  EXPECT_EQ (Framework ().LoopsEndedByExit, 1u);
  EXPECT_TRUE (PageDestroyed (F.Page));
  EXPECT_EQ (Trace ({"EndUiSession"}).size (), 1u);
}

} // namespace
