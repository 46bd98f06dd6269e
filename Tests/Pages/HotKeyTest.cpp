/** @file
  Keys pressed while the welcome page is up: the preparing messages, the
  progress bar, the abort flag, and the keyboard without extended input.
**/
#include "PageFlowTest.h"

#include <Guid/KestUiGuids.h>
#include <Protocol/SimpleTextIn.h>

namespace {

using HotKeyTest = PageFlowTest;

const std::vector<HostVariableWrite> &
AbortFlagWrites ()
{
  return HostPlatform::Current ().Variables ().Writes (u"KestDiagAbortFlag", gKestDiagAbortFlagGuid);
}

TEST_F (HotKeyTest, F2ShowsThePreparingMessageAndTheBarAndWritesTheAbortFlag)
{
  ASSERT_TRUE (Boot ());
  WelcomeControls Welcome = ShowWelcome ();
  ASSERT_NE (Welcome.Page, 0u);

  Platform ().Console ().PressKey (SCAN_F2, 0);

  EXPECT_EQ (ControlStringId (Welcome.Page, Welcome.Message), 4u) << "Preparing to enter BIOS Setup";
  EXPECT_TRUE (StandInIsVisible (Welcome.Page, Welcome.Progress));
  ASSERT_EQ (AbortFlagWrites ().size (), 1u);
  EXPECT_EQ (AbortFlagWrites ()[0].Attributes, (UINT32)EFI_VARIABLE_BOOTSERVICE_ACCESS);
  EXPECT_EQ (AbortFlagWrites ()[0].Data, std::vector<UINT8>{1});

  // The key only records the action: Setup waits for the page's next key event.
  EXPECT_FALSE (PageDestroyed (Welcome.Page));
  EXPECT_EQ (ServiceState ().SetupFlagCalls, 0u);
  EXPECT_TRUE (Trace ({"EndUiSession"}).empty ());
}

TEST_F (HotKeyTest, TheLastHotKeyWinsAndEveryLaterKeyWritesTheFlagAgain)
{
  ASSERT_TRUE (Boot ());
  WelcomeControls Welcome = ShowWelcome ();
  ASSERT_NE (Welcome.Page, 0u);

  Platform ().Console ().PressKey (0, 'x');
  EXPECT_EQ (ControlStringId (Welcome.Page, Welcome.Message), 7u) << "F12 Boot Options";
  EXPECT_TRUE (StandInIsVisible (Welcome.Page, Welcome.Progress));
  EXPECT_TRUE (AbortFlagWrites ().empty ()) << "no hot key yet";

  Platform ().Console ().PressKey (SCAN_F2, 0);
  Platform ().Console ().PressKey (SCAN_F12, 0);
  EXPECT_EQ (ControlStringId (Welcome.Page, Welcome.Message), 6u) << "Preparing one-time boot menu";
  Platform ().Console ().PressKey (0, 'x');
  EXPECT_EQ (ControlStringId (Welcome.Page, Welcome.Message), 7u) << "the action stays";
  EXPECT_EQ (AbortFlagWrites ().size (), 3u);

  Key (Welcome.Logo, 'q');
  EXPECT_EQ (RunLoop (), EFI_SUCCESS);
  EXPECT_EQ (ServiceState ().BootMenuRuns, 1u);
  EXPECT_EQ (ServiceState ().SetupFlagCalls, 0u);
  EXPECT_TRUE (PageDestroyed (Welcome.Page));
}

TEST_F (HotKeyTest, ProgressReachesTheBarOnlyAfterAKeyAndOneHundredHidesIt)
{
  UINTN Value = 0;

  ASSERT_TRUE (Boot ());
  WelcomeControls Welcome = ShowWelcome ();
  ASSERT_NE (Welcome.Page, 0u);

  Ui ().UpdateWelcomeProgress (nullptr, 20);
  EXPECT_FALSE (StandInGetProgress (Welcome.Page, Welcome.Progress, &Value));

  // An upper-case letter is not watched, but the poll of the next progress call reads it.
  Platform ().Console ().PressKey (0, 'A');
  EXPECT_EQ (ControlStringId (Welcome.Page, Welcome.Message), 0u);
  Ui ().UpdateWelcomeProgress (nullptr, 30);
  EXPECT_EQ (ControlStringId (Welcome.Page, Welcome.Message), 7u);
  ASSERT_TRUE (StandInGetProgress (Welcome.Page, Welcome.Progress, &Value));
  EXPECT_EQ (Value, 30u);
  EXPECT_TRUE (StandInIsVisible (Welcome.Page, Welcome.Progress));
  EXPECT_TRUE (AbortFlagWrites ().empty ());

  Platform ().Console ().PushKey (SCAN_F9, 0);
  Ui ().UpdateWelcomeProgress (nullptr, 40);
  EXPECT_EQ (Platform ().Console ().PendingKeys (), 0u);
  EXPECT_EQ (ControlStringId (Welcome.Page, Welcome.Message), 5u) << "Preparing to launch Diagnostics";
  EXPECT_EQ (AbortFlagWrites ().size (), 1u);
  ASSERT_TRUE (StandInGetProgress (Welcome.Page, Welcome.Progress, &Value));
  EXPECT_EQ (Value, 40u);

  Ui ().UpdateWelcomeProgress (nullptr, 100);
  EXPECT_FALSE (StandInIsVisible (Welcome.Page, Welcome.Progress));
  Ui ().UpdateWelcomeProgress (nullptr, 60);
  EXPECT_FALSE (StandInIsVisible (Welcome.Page, Welcome.Progress)) << "a bar hidden at 100 stays hidden";
}

class NoTextInputExTest : public PageFlowTest {
protected:
  HostPlatformOptions
  Options () const override
  {
    HostPlatformOptions Result;

    Result.ConInEx = false;
    return Result;
  }
};

TEST_F (NoTextInputExTest, NoKeyIsWatchedAndProgressCallsOnlyRecordTheValue)
{
  UINTN Value = 0;

  ASSERT_TRUE (Boot ());
  WelcomeControls Welcome = ShowWelcome ();
  ASSERT_NE (Welcome.Page, 0u);
  EXPECT_TRUE (Platform ().Console ().KeyRegistrations ().empty ());

  Platform ().Console ().PushKey (SCAN_F2, 0);
  Ui ().UpdateWelcomeProgress (nullptr, 100);
  EXPECT_EQ (Platform ().Console ().PendingKeys (), 1u);
  EXPECT_EQ (ControlStringId (Welcome.Page, Welcome.Message), 0u);
  EXPECT_FALSE (StandInGetProgress (Welcome.Page, Welcome.Progress, &Value));
  EXPECT_TRUE (AbortFlagWrites ().empty ());

  // The recorded 100 closes the page at the very next event.
  Tick (Welcome.Logo, 1);
  EXPECT_EQ (RunLoop (), EFI_SUCCESS);
  ASSERT_EQ (Deliveries ().size (), 1u);
  EXPECT_EQ (Deliveries ()[0].Result, UI_EVENT_HANDLED_PAGE_CLOSED);
  EXPECT_TRUE (PageDestroyed (Welcome.Page));
}

} // namespace
