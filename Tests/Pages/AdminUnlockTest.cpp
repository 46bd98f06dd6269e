/** @file
  The administrator prompt as a caller of PromptPassword lives it: wrong and
  right passwords, the shutdown after the last allowed failure, cancel and the
  Enter key.
**/
#include "PageFlowTest.h"

namespace {

class AdminUnlockTest : public PageFlowTest {
protected:
  void
  SetUp () override
  {
    PageFlowTest::SetUp ();
    SetPasswords ({Record (PASSWORD_KIND_ADMIN, 1, Keep (u"kestrel"), 16)});
    ASSERT_TRUE (Boot ());
  }
};

UINTN EFIAPI
PlatformHandler (IN OUT UI_EVENT *Event)
{
  return UI_EVENT_NOT_HANDLED;
}

TEST_F (AdminUnlockTest, TwoWrongPasswordsThenTheRightOneCallBackOnceAndRestoreWhatWasActive)
{
  WelcomeControls Welcome = ShowWelcome ();
  mFramework->Pages->SetEventHandler (PlatformHandler);
  const char16_t *Typed[] = {u"falcon", u"kestrel ", u"kestrel"};
  for (const char16_t *Password : Typed) {
    Submit (Password);
  }

  EXPECT_EQ (Ui ().PromptPassword (PASSWORD_KIND_ADMIN, RecordCallback), EFI_SUCCESS);

  EXPECT_TRUE (mScript.empty ());
  ASSERT_EQ (mCallbacks.size (), 1u);
  EXPECT_EQ (mCallbacks[0].Kind, (UINTN)PASSWORD_KIND_ADMIN);
  EXPECT_FALSE (EFI_ERROR (mCallbacks[0].Status));
  EXPECT_EQ (PromptMessages (),
             (std::vector<std::u16string>{gFirstPasswordMessage, gRetryPasswordMessage, gRetryPasswordMessage}));
  EXPECT_EQ (mPrompts[0].Title, u"Admin Unlock");
  EXPECT_EQ (mPrompts[0].MaxLength, 16u);

  // The field is emptied after every check and coloured after each failure.
  EXPECT_EQ (Trace ({"ShowPrompt", "PasswordRequest(5)", "ClearField", "FailColour"}),
             (std::vector<std::string>{"ShowPrompt", "PasswordRequest(5)", "ClearField", "FailColour", "ShowPrompt",
                                       "PasswordRequest(5)", "ClearField", "FailColour", "ShowPrompt",
                                       "PasswordRequest(5)", "ClearField"}));
  std::vector<STAND_IN_SERVICE_REQUEST> Checks = RequestsOf (gPasswordRequestGuid, PasswordRequestCheck);
  ASSERT_EQ (Checks.size (), 3u);
  for (UINTN Index = 0; Index < Checks.size (); Index++) {
    EXPECT_EQ (Checks[Index].Index, 0u);
    EXPECT_EQ (Checks[Index].PresetStatus, EFI_SECURITY_VIOLATION);
    EXPECT_FALSE (Checks[Index].NarrowCheck);
    EXPECT_EQ (Text (Checks[Index].WideData), Typed[Index]);
  }

  UINTN Colour[3] = {0, 0, 0};
  EXPECT_EQ (ControlText (PromptPage (), PROMPT_CONTROL_PASSWORD), u"");
  ASSERT_TRUE (StandInGetAttribute (PromptPage (), PROMPT_CONTROL_PASSWORD, UI_STYLE_FIELD_COLOR, Colour));
  EXPECT_EQ (Colour[0], 0xB7295Au);

  STAND_IN_FRAMEWORK_STATE Framework{};
  StandInGetFrameworkState (&Framework);
  EXPECT_EQ (Framework.ActivePage, Welcome.Page);
  EXPECT_EQ (Framework.EventHandler, PlatformHandler);
}

TEST_F (AdminUnlockTest, ThreeWrongPasswordsHideTheButtonsAndShutDownOnTheThirdTick)
{
  std::vector<UINTN> ResetsBeforeTick;
  auto CountResets = [this, &ResetsBeforeTick] { ResetsBeforeTick.push_back (Platform ().Reset ().Calls ().size ()); };
  Submit (u"falcon");
  Submit (u"hawk");
  Submit (u"merlin");
  Tick (0, 1, CountResets);
  Submit (u"kestrel");              // during the countdown: handled, never checked
  Activate (PROMPT_CONTROL_SUBMIT); // during the countdown: not handled
  Tick (0, 2, CountResets);
  Tick (0, 3, CountResets);

  EXPECT_EQ (Ui ().PromptPassword (PASSWORD_KIND_ADMIN, RecordCallback), EFI_SUCCESS);

  EXPECT_EQ (PromptMessages (), (std::vector<std::u16string>{gFirstPasswordMessage, gRetryPasswordMessage,
                                                             gRetryPasswordMessage, gShutdownMessage}));
  EXPECT_FALSE (StandInIsVisible (PromptPage (), PROMPT_CONTROL_CANCEL));
  EXPECT_FALSE (StandInIsVisible (PromptPage (), PROMPT_CONTROL_SUBMIT));
  EXPECT_EQ (ResetsBeforeTick, (std::vector<UINTN>{0, 0, 0}));
  ASSERT_EQ (Platform ().Reset ().Calls ().size (), 1u);
  EXPECT_EQ (Platform ().Reset ().Calls ()[0].Type, EfiResetShutdown);
  EXPECT_EQ (Platform ().Reset ().Calls ()[0].Status, EFI_SUCCESS);
  EXPECT_EQ (RequestsOf (gPasswordRequestGuid, PasswordRequestCheck).size (), 3u);
  EXPECT_TRUE (mCallbacks.empty ());
  std::vector<STAND_IN_DELIVERY> Events = Deliveries ();
  ASSERT_EQ (Events.size (), 8u);
  EXPECT_EQ (Events[4].Result, UI_EVENT_HANDLED);
  EXPECT_EQ (Events[5].Result, UI_EVENT_NOT_HANDLED);
}

TEST_F (AdminUnlockTest, CancelClosesThePromptWithoutACheckOrACallback)
{
  Activate (PROMPT_CONTROL_CANCEL);

  EXPECT_EQ (Ui ().PromptPassword (PASSWORD_KIND_ADMIN, RecordCallback), EFI_SUCCESS);

  EXPECT_TRUE (mScript.empty ());
  EXPECT_TRUE (mCallbacks.empty ());
  EXPECT_TRUE (Trace ({"PasswordRequest(5)", "PasswordRequest(6)"}).empty ());
  EXPECT_EQ (Trace ({"ClearField"}).size (), 1u);
  ASSERT_EQ (Deliveries ().size (), 1u);
  EXPECT_EQ (Deliveries ()[0].EventCodeAfter, UI_EVENT_CLOSE);
}

TEST_F (AdminUnlockTest, EnterReadsTheFieldAndChecksItAsTheAlternateRequest)
{
  const CHAR16 *Typed = Keep (u"kestrel");
  Key (PROMPT_CONTROL_PASSWORD, 0x8200000D, [Typed] { EXPECT_EQ (StandInTypeText (0, Typed), EFI_SUCCESS); });

  EXPECT_EQ (Ui ().PromptPassword (PASSWORD_KIND_ADMIN, RecordCallback), EFI_SUCCESS);

  std::vector<STAND_IN_SERVICE_REQUEST> Checks = RequestsOf (gPasswordRequestGuid, PasswordRequestCheckAlternate);
  ASSERT_EQ (Checks.size (), 1u);
  EXPECT_EQ (Text (Checks[0].WideData), u"kestrel");
  EXPECT_TRUE (RequestsOf (gPasswordRequestGuid, PasswordRequestCheck).empty ());
  ASSERT_EQ (mCallbacks.size (), 1u);
  EXPECT_FALSE (EFI_ERROR (mCallbacks[0].Status));
}

} // namespace
