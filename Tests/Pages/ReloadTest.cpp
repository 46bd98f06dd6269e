/** @file
  A driver unloaded and loaded again in one boot: nothing of the first load
  may show in the second.
**/
#include "PageFlowTest.h"

namespace {

using ReloadTest = PageFlowTest;

TEST_F (ReloadTest, ALoadAfterAnUnloadStartsAsTheFirstLoadDid)
{
  SetByte (SETTING_PAGE_COUNTDOWN, 1);
  ASSERT_TRUE (Boot ());
  EFI_HANDLE FirstImage = ImageHandle ();
  WelcomeControls First = ShowWelcome ();
  ASSERT_NE (First.Page, 0u);
  Platform ().Console ().PressKey (SCAN_F2, 0);
  Ui ().UpdateWelcomeProgress (nullptr, 40);
  ASSERT_TRUE (StandInIsVisible (First.Page, First.Progress));

  ASSERT_TRUE (Reload ());
  EXPECT_NE (ImageHandle (), FirstImage);
  EXPECT_FALSE (Platform ().Handles ().HasProtocol (FirstImage, gUiDriverProtocolGuid));
  EXPECT_TRUE (Platform ().Handles ().HasProtocol (ImageHandle (), gFlashUpdatePageProtocolGuid));

  // A new page, with an empty message line and a hidden bar.
  WelcomeControls Second = ShowWelcome ();
  ASSERT_NE (Second.Page, 0u);
  EXPECT_NE (Second.Page, First.Page);
  EXPECT_EQ (ControlStringId (Second.Page, Second.Message), 0u);
  EXPECT_FALSE (StandInIsVisible (Second.Page, Second.Progress));

  // The F2 of the first load is forgotten: Enter closes the page instead of entering Setup.
  Key (Second.Logo, UI_KEY_ENTER);
  EXPECT_EQ (RunLoop (), EFI_SUCCESS);
  EXPECT_TRUE (PageDestroyed (Second.Page));
  EXPECT_TRUE (Trace ({"SetupEntryGroup", "PreSetupGroup", "ShowPrompt"}).empty ());
}

} // namespace
