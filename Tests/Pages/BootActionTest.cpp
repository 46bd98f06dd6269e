/** @file
  What a hot key leads to at the page's next key event or when the welcome
  page finishes: Setup with or without the administrator prompt, the boot menu
  (also for an OS request to boot to the firmware UI), diagnostics.
**/
#include "PageFlowTest.h"

#include <cstring>

#include <Guid/GlobalVariable.h>
#include <Guid/KestUiGuids.h>
#include <Protocol/SimpleTextIn.h>

namespace {

class BootActionTest : public PageFlowTest {
protected:
  /** Shows the welcome page, presses ScanCode and scripts the page's next key event. **/
  WelcomeControls
  PressHotKey (UINT16 ScanCode)
  {
    WelcomeControls Welcome = ShowWelcome ();

    Platform ().Console ().PressKey (ScanCode, 0);
    mLog.clear ();
    Key (Welcome.Logo, 'q');
    return Welcome;
  }

  /** Item 1618 asks for the password, and the administrator password "kestrel" is installed. **/
  VOID
  AskForTheAdminPassword (UINT8 Gate = 1, UINT64 AdminState = 1)
  {
    SetByte (SETTING_SETUP_ASKS_PASSWORD, Gate);
    SetPasswords ({Record (PASSWORD_KIND_ADMIN, AdminState, Keep (u"kestrel"))});
    StandInSetBootUiModePcd (TRUE);
  }

  const std::set<std::string> mSetupSteps = {"PreSetupRequest", "PreSetupGroup",   "SetSetupFlag", "SetUiMode(0)",
                                             "SetUiMode(2)",    "SetupEntryGroup", "EndUiSession", "ShowPrompt"};
};

struct SetupCase {
  const char *Name;
  UINT8 Gate;        ///< item 1618
  UINT64 AdminState; ///< State of the administrator password
};

class SetupWithoutPromptTest : public BootActionTest, public ::testing::WithParamInterface<SetupCase> {};

TEST_P (SetupWithoutPromptTest, F2EntersSetupThroughThePreSetupStepsInOrder)
{
  AskForTheAdminPassword (GetParam ().Gate, GetParam ().AdminState);
  ASSERT_TRUE (Boot ());
  WelcomeControls Welcome = PressHotKey (SCAN_F2);

  EXPECT_EQ (RunLoop (), EFI_SUCCESS);

  std::set<std::string> Wanted = mSetupSteps;
  Wanted.insert ("DestroyPage");
  EXPECT_EQ (Trace (Wanted),
             (std::vector<std::string>{"DestroyPage", "PreSetupRequest", "PreSetupGroup", "SetSetupFlag",
                                       "SetUiMode(0)", "SetupEntryGroup", "EndUiSession"}));
  std::vector<STAND_IN_SERVICE_REQUEST> PreSetup = RequestsOf (gPreSetupRequestGuid);
  ASSERT_EQ (PreSetup.size (), 1u);
  EXPECT_EQ (PreSetup[0].FirstByte, GetParam ().Gate);
  EXPECT_EQ (ServiceState ().SetupFlagIndex, 1u);
  EXPECT_EQ (ServiceState ().SetupFlag, GetParam ().AdminState);
  EXPECT_TRUE (PageDestroyed (Welcome.Page));
}

INSTANTIATE_TEST_SUITE_P (Gate,
                          SetupWithoutPromptTest,
                          ::testing::Values (SetupCase{"NotAsked", 0, 1}, SetupCase{"NoAdminPassword", 1, 0}),
                          CaseName<SetupCase>);

TEST_F (BootActionTest, F2WithThePromptEntersSetupOnceAfterTwoWrongPasswordsAndTheRightOne)
{
  AskForTheAdminPassword ();
  ASSERT_TRUE (Boot ());
  WelcomeControls Welcome = PressHotKey (SCAN_F2);
  Submit (u"falcon");
  Submit (u"Kestrel");
  Submit (u"kestrel");

  EXPECT_EQ (RunLoop (), EFI_SUCCESS);

  EXPECT_TRUE (mScript.empty ());
  EXPECT_EQ (PromptMessages (),
             (std::vector<std::u16string>{gFirstPasswordMessage, gRetryPasswordMessage, gRetryPasswordMessage}));
  EXPECT_EQ (Trace (mSetupSteps), (std::vector<std::string>{"ShowPrompt", "ShowPrompt", "ShowPrompt", "SetSetupFlag",
                                                            "SetUiMode(2)", "SetupEntryGroup", "EndUiSession"}));
  EXPECT_EQ (ServiceState ().SetupFlag, 1u);
  EXPECT_TRUE (PageDestroyed (Welcome.Page));
}

TEST_F (BootActionTest, CancelAtThePromptLeavesSetupUnentered)
{
  AskForTheAdminPassword ();
  ASSERT_TRUE (Boot ());
  PressHotKey (SCAN_F2);
  Activate (PROMPT_CONTROL_CANCEL);

  EXPECT_EQ (RunLoop (), EFI_SUCCESS);

  EXPECT_EQ (Trace (mSetupSteps), std::vector<std::string>{"ShowPrompt"});
  EXPECT_EQ (ServiceState ().SetupFlagCalls, 0u);
}

TEST_F (BootActionTest, F12WithABootToFirmwareRequestRunsTheBootMenuTwiceAndKeepsTheOtherBits)
{
  Platform ().Variables ().SeedValue (u"OsIndications", gEfiGlobalVariableGuid, 7,
                                      (UINT64)(EFI_OS_INDICATIONS_BOOT_TO_FW_UI | 4));
  ASSERT_TRUE (Boot ());
  PressHotKey (SCAN_F12);

  EXPECT_EQ (RunLoop (), EFI_SUCCESS);

  const std::vector<HostVariableWrite> &Writes =
    Platform ().Variables ().Writes (u"OsIndications", gEfiGlobalVariableGuid);
  ASSERT_EQ (Writes.size (), 1u);
  EXPECT_EQ (Writes[0].Attributes, 7u);
  ASSERT_EQ (Writes[0].Data.size (), 8u);
  UINT64 Written = 0;
  std::memcpy (&Written, Writes[0].Data.data (), sizeof (Written));
  EXPECT_EQ (Written, 4u);
  EXPECT_EQ (ServiceState ().BootMenuRuns, 2u);
  EXPECT_EQ (ServiceState ().BootMenuFlagCalls, 4u);
  EXPECT_TRUE (Trace ({"EndUiSession"}).empty ());
}

struct DiagnosticsCase {
  const char *Name;
  UINT32 Services;
  BOOLEAN Pcd;
  const char *Mode;
};

class DiagnosticsTest : public BootActionTest, public ::testing::WithParamInterface<DiagnosticsCase> {};

TEST_P (DiagnosticsTest, F9SetsTheUiModeFromThePcdThenLaunchesDiagnosticsWithThePageStillOpen)
{
  StandInSetBootUiModePcd (GetParam ().Pcd);
  ASSERT_TRUE (Boot (GetParam ().Services));
  WelcomeControls Welcome = PressHotKey (SCAN_F9);
  Key (Welcome.Logo, UI_KEY_ESCAPE); // nothing is pending any more: Escape closes the page

  EXPECT_EQ (RunLoop (), EFI_SUCCESS);

  EXPECT_EQ (
    Trace ({"SetUiMode(0)", "SetUiMode(2)", "PrepareDiagnostics", "ResetUiState", "StartDiagnostics", "DestroyPage"}),
    (std::vector<std::string>{GetParam ().Mode, "PrepareDiagnostics", "ResetUiState", "StartDiagnostics",
                              "DestroyPage"}));
  STAND_IN_SERVICE_STATE State = ServiceState ();
  EXPECT_EQ (State.PrepareTarget, 0xFFFBu);
  EXPECT_EQ (std::vector<UINTN> (State.PrepareValues, State.PrepareValues + 3), (std::vector<UINTN>{1, 3, 2}));
  EXPECT_EQ (std::vector<UINTN> (State.StartValues, State.StartValues + 2), (std::vector<UINTN>{1, 3}));
  EXPECT_TRUE (State.PrepareThisRight && State.StartThisRight);
  EXPECT_EQ (State.DiagnosticsStarted, 1u);
}

INSTANTIATE_TEST_SUITE_P (Pcd,
                          DiagnosticsTest,
                          ::testing::Values (DiagnosticsCase{"True", AllServices, TRUE, "SetUiMode(0)"},
                                             DiagnosticsCase{"False", AllServices, FALSE, "SetUiMode(2)"},
                                             DiagnosticsCase{"NoProtocol", AllServices & ~WithPcd, TRUE,
                                                             "SetUiMode(2)"}),
                          CaseName<DiagnosticsCase>);

TEST_F (BootActionTest, FinishWithoutAKeyClosesThePageAndReturnsTheStatusOfTheDiagnosticsItem)
{
  ASSERT_TRUE (Boot ());
  WelcomeControls Welcome = ShowWelcome ();

  EXPECT_EQ (Ui ().FinishWelcomePage (), EFI_NOT_FOUND);

  EXPECT_TRUE (PageDestroyed (Welcome.Page));
  EXPECT_EQ (Platform ().Console ().ActiveKeyRegistrations (), 0u);
  STAND_IN_SERVICE_STATE State = ServiceState ();
  EXPECT_EQ (State.BootMenuRuns + State.DiagnosticsStarted + State.SetupFlagCalls, 0u);
  EXPECT_TRUE (Trace ({"EndUiSession"}).empty ());
}

TEST_F (BootActionTest, FinishRunsTheRecordedActionOnceAndHidesTheBar)
{
  SetByte (SETTING_DIAGNOSTICS_AT_BOOT, 0);
  ASSERT_TRUE (Boot ());
  WelcomeControls Welcome = ShowWelcome ();
  Platform ().Console ().PressKey (SCAN_F12, 0);

  EXPECT_EQ (Ui ().FinishWelcomePage (), EFI_SUCCESS);

  EXPECT_EQ (ServiceState ().BootMenuRuns, 1u);
  EXPECT_EQ (ServiceState ().DiagnosticsStarted, 0u);
  EXPECT_FALSE (StandInIsVisible (Welcome.Page, Welcome.Progress));
  EXPECT_TRUE (PageDestroyed (Welcome.Page));
}

TEST_F (BootActionTest, FinishStillReadsAHotKeyPressedJustBefore)
{
  ASSERT_TRUE (Boot ());
  ShowWelcome ();
  Platform ().Console ().PushKey (SCAN_F9, 0);

  Ui ().FinishWelcomePage ();

  EXPECT_EQ (ServiceState ().DiagnosticsStarted, 1u);
}

TEST_F (BootActionTest, DiagnosticsAtBootStartWhenThePageFinishesAndAgainAtEachRefresh)
{
  SetByte (SETTING_DIAGNOSTICS_AT_BOOT, 1);
  ASSERT_TRUE (Boot ());
  ShowWelcome ();

  EXPECT_EQ (Ui ().FinishWelcomePage (), EFI_SUCCESS);
  EXPECT_EQ (ServiceState ().DiagnosticsStarted, 1u);
  Ui ().RefreshWelcomePage ();
  Ui ().RefreshWelcomePage ();
  EXPECT_EQ (ServiceState ().DiagnosticsStarted, 3u);
}

} // namespace
