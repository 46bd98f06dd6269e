/** @file
  Which password record the prompts use, from what the password service
  reports: the later record of a kind, the fallbacks between the kinds, the
  default pair, records read afresh, and no service at all.
**/
#include "PageFlowTest.h"

namespace {

using PasswordRecordTest = PageFlowTest;

TEST_F (PasswordRecordTest, StartMakesThePromptPageWithItsStylesInOrder)
{
  ASSERT_TRUE (Boot ());

  std::vector<std::vector<UINTN>> Styles;
  for (const FlowCall &Call : mLog) {
    if ((Call.Name == "SetControlStyle") && (Call.Arguments[0] == PromptPage ())) {
      Styles.push_back ({Call.Arguments[1], Call.Arguments[2], Call.Arguments[3], Call.Arguments[4], Call.Arguments[5],
                         Call.Arguments[6]});
    }
  }

  EXPECT_EQ (Styles, (std::vector<std::vector<UINTN>>{{1710, 1714, 0x7374001F, 0xAAAAAA, 0, 0},
                                                      {1710, 1714, 0x73740021, 0, 0, 18},
                                                      {1710, 1711, 0x7374001D, 0, 0, 22},
                                                      {1710, 1712, 0x7374001D, 0, 0, 18},
                                                      {1710, 1713, 0x7374001D, 0, 0, 22}}));
  EXPECT_EQ (Trace ({"CreatePromptPage", "ShowPrompt"}), (std::vector<std::string>{"CreatePromptPage"}))
    << "made at start, not shown";
}

struct SelectionCase {
  const char *Name;
  std::vector<STAND_IN_PASSWORD> Records;
  BOOLEAN AdminInstalled;
  BOOLEAN OtherInstalled;
  UINTN PromptKind;
  const char16_t *Password; ///< the right one for the record prompted for
  UINTN MaxLength;          ///< always the administrator record's
  UINT64 CheckedIndex;
  UINTN CallbackKind; ///< the prompted record's own kind
};

class RecordSelectionTest : public PageFlowTest, public ::testing::WithParamInterface<SelectionCase> {};

TEST_P (RecordSelectionTest, PicksTheRecordsAndFallsBackBetweenTheKinds)
{
  SetPasswords (GetParam ().Records);
  ASSERT_TRUE (Boot ());

  EXPECT_EQ (Ui ().IsPasswordInstalled (PASSWORD_KIND_ADMIN), GetParam ().AdminInstalled);
  EXPECT_EQ (Ui ().IsPasswordInstalled (PASSWORD_KIND_OTHER), GetParam ().OtherInstalled);
  Submit (GetParam ().Password);
  EXPECT_EQ (Ui ().PromptPassword (GetParam ().PromptKind, RecordCallback), EFI_SUCCESS);
  ASSERT_EQ (mPrompts.size (), 1u);
  EXPECT_EQ (mPrompts[0].MaxLength, GetParam ().MaxLength);
  std::vector<STAND_IN_SERVICE_REQUEST> Checks = RequestsOf (gPasswordRequestGuid, PasswordRequestCheck);
  ASSERT_EQ (Checks.size (), 1u);
  EXPECT_EQ (Checks[0].Index, GetParam ().CheckedIndex);
  ASSERT_EQ (mCallbacks.size (), 1u);
  EXPECT_EQ (mCallbacks[0].Kind, GetParam ().CallbackKind);
  EXPECT_FALSE (EFI_ERROR (mCallbacks[0].Status));
}

const CHAR16 mFirst[] = {'p', '1', 0};
const CHAR16 mSecond[] = {'p', '2', 0};

INSTANTIATE_TEST_SUITE_P (
  Service,
  RecordSelectionTest,
  ::testing::Values (
    SelectionCase{
      "LoneAdminServesBothKinds", {PageFlowTest::Record (1, 1, mFirst, 20)}, TRUE, TRUE, 0, u"p1", 20, 0, 1},
    SelectionCase{"SecondOfTwoOtherServesBothKinds",
                  {PageFlowTest::Record (0, 1, mFirst, 10), PageFlowTest::Record (0, 0, mSecond, 20)},
                  FALSE,
                  FALSE,
                  1,
                  u"p2",
                  20,
                  1,
                  0},
    SelectionCase{"LaterOfTwoAdminsWinsOtherFallsBackToFirst",
                  {PageFlowTest::Record (1, 1, mFirst, 10), PageFlowTest::Record (1, 0, mSecond, 20)},
                  FALSE,
                  TRUE,
                  1,
                  u"p2",
                  20,
                  1,
                  1}),
  CaseName<SelectionCase>);

TEST_F (PasswordRecordTest, ASingleOtherRecordLeavesNoAdministratorRecordToPromptFor)
{
  SetPasswords ({Record (PASSWORD_KIND_OTHER, 1, mFirst)});
  ASSERT_TRUE (Boot ());

  EXPECT_FALSE (Ui ().IsPasswordInstalled (PASSWORD_KIND_ADMIN));
  EXPECT_TRUE (Ui ().IsPasswordInstalled (PASSWORD_KIND_OTHER));
  EXPECT_EQ (Ui ().PromptPassword (PASSWORD_KIND_ADMIN, RecordCallback), EFI_NOT_FOUND);
  EXPECT_TRUE (mPrompts.empty ());
  EXPECT_TRUE (mCallbacks.empty ());
}

TEST_F (PasswordRecordTest, FailuresLastUntilTheRecordsAreReadAgain)
{
  SetPasswords ({Record (PASSWORD_KIND_ADMIN, 1, Keep (u"kestrel"))});
  ASSERT_TRUE (Boot ());

  Submit (u"falcon");
  Activate (PROMPT_CONTROL_CANCEL);
  Ui ().PromptPassword (PASSWORD_KIND_ADMIN, RecordCallback);
  Activate (PROMPT_CONTROL_CANCEL);
  Ui ().PromptPassword (PASSWORD_KIND_ADMIN, RecordCallback);
  EXPECT_TRUE (Ui ().IsPasswordInstalled (PASSWORD_KIND_ADMIN));
  Activate (PROMPT_CONTROL_CANCEL);
  Ui ().PromptPassword (PASSWORD_KIND_ADMIN, RecordCallback);

  EXPECT_EQ (PromptMessages (), (std::vector<std::u16string>{gFirstPasswordMessage, gRetryPasswordMessage,
                                                             gRetryPasswordMessage, gFirstPasswordMessage}));
  EXPECT_EQ (RequestsOf (gPasswordRequestGuid, PasswordRequestGetCount).size (), 2u);
  EXPECT_TRUE (mCallbacks.empty ());
}

TEST_F (PasswordRecordTest, WithoutTheServiceOnlyTheExactFallbackPasswordUnlocks)
{
  ASSERT_TRUE (Boot (AllServices & ~WithServiceRequest));

  EXPECT_FALSE (Ui ().IsPasswordInstalled (PASSWORD_KIND_ADMIN));
  EXPECT_FALSE (Ui ().IsPasswordInstalled (PASSWORD_KIND_OTHER));
  Submit (u"Tamo");
  Submit (u"tamo1");
  Submit (u"tamo");
  EXPECT_EQ (Ui ().PromptPassword (PASSWORD_KIND_ADMIN, RecordCallback), EFI_SUCCESS);

  EXPECT_EQ (PromptMessages (),
             (std::vector<std::u16string>{gFirstPasswordMessage, gRetryPasswordMessage, gRetryPasswordMessage}));
  ASSERT_EQ (mCallbacks.size (), 1u);
  EXPECT_EQ (mCallbacks[0].Kind, (UINTN)PASSWORD_KIND_ADMIN);
  EXPECT_EQ (mCallbacks[0].Status, EFI_SUCCESS);
  EXPECT_EQ (StandInServiceRequestCount (), 0u);
}

} // namespace
