/** @file
  What other drivers answer, also when it does not fit: password counts far
  too large, a narrow password longer than its buffer, the serial number of
  the prompt's caption from the settings service or SMBIOS, without a
  terminator or naming no string. Each has a defined result, and nothing
  overruns, crashes or stays in pool.
**/
#include "PageFlowTest.h"

namespace {

class BadInputTest : public PageFlowTest {
protected:
  /** Shows the administrator prompt once and cancels it. @return the caption shown. **/
  std::u16string
  CaptionOfOnePrompt ()
  {
    Activate (PROMPT_CONTROL_CANCEL);
    EXPECT_EQ (Ui ().PromptPassword (PASSWORD_KIND_ADMIN, RecordCallback), EFI_SUCCESS);
    return mPrompts.empty () ? u"(not shown)" : mPrompts.back ().Caption;
  }

  VOID
  SetSmbiosTable (const std::vector<UINT8> &Table)
  {
    EXPECT_EQ (StandInSetSmbiosTable (Table.data (), Table.size ()), EFI_SUCCESS);
  }

  /** An administrator password with MaxLength 20: the default pair would have 32. **/
  VOID
  InstallAdminPassword ()
  {
    SetPasswords ({Record (PASSWORD_KIND_ADMIN, 1, Keep (u"kestrel"), 20)});
  }
};

struct CountCase {
  const char *Name;
  UINT64 Count;
};

class PasswordCountTest : public BadInputTest, public ::testing::WithParamInterface<CountCase> {};

TEST_P (PasswordCountTest, WithoutARecordArrayTheDefaultPairStandsIn)
{
  InstallAdminPassword ();
  StandInSetPasswordCount (GetParam ().Count, EFI_SUCCESS);
  ASSERT_TRUE (Boot ());

  EXPECT_FALSE (Ui ().IsPasswordInstalled (PASSWORD_KIND_ADMIN));
  EXPECT_FALSE (Ui ().IsPasswordInstalled (PASSWORD_KIND_OTHER));
  CaptionOfOnePrompt ();
  ASSERT_EQ (mPrompts.size (), 1u);
  EXPECT_EQ (mPrompts[0].MaxLength, 32u);
  EXPECT_TRUE (RequestsOf (gPasswordRequestGuid, PasswordRequestGetInfo).empty ());
}

//
// 2^61 + 1 records of any size that is a multiple of 8 bytes wrap around to the size of one record.
//
INSTANTIATE_TEST_SUITE_P (Count,
                          PasswordCountTest,
                          ::testing::Values (CountCase{"None", 0},
                                             CountCase{"TooLargeForPool", 1ULL << 40},
                                             CountCase{"SizeWrapsAround", (1ULL << 61) + 1}),
                          CaseName<CountCase>);

TEST_F (BadInputTest, ANarrowPasswordLongerThanItsBufferIsWrongWithoutReachingTheService)
{
  const std::u16string Longest (47, u'k');
  STAND_IN_PASSWORD Narrow = Record (PASSWORD_KIND_ADMIN, 1, Keep (Longest), 60);
  Narrow.NarrowChars = 1;
  SetPasswords ({Narrow});
  ASSERT_TRUE (Boot ());
  Submit (Longest + u"k");
  Submit (Longest);

  EXPECT_EQ (Ui ().PromptPassword (PASSWORD_KIND_ADMIN, RecordCallback), EFI_SUCCESS);

  ASSERT_EQ (mPrompts.size (), 2u);
  EXPECT_EQ (mPrompts[0].MaxLength, 47u);
  EXPECT_EQ (PromptMessages (), (std::vector<std::u16string>{gFirstPasswordMessage, gRetryPasswordMessage}));
  std::vector<STAND_IN_SERVICE_REQUEST> Checks = RequestsOf (gPasswordRequestGuid, PasswordRequestCheck);
  ASSERT_EQ (Checks.size (), 1u);
  EXPECT_TRUE (Checks[0].NarrowCheck);
  std::vector<UINT8> Expected (47, 'k');
  Expected.push_back (0);
  EXPECT_EQ (std::vector<UINT8> (Checks[0].NarrowData, Checks[0].NarrowData + 48), Expected);
  ASSERT_EQ (mCallbacks.size (), 1u);
  EXPECT_FALSE (EFI_ERROR (mCallbacks[0].Status));
}

struct CaptionCase {
  const char *Name;
  const char *SerialItem; ///< item 9752 as stored (20 bytes at most), or null for no item
  std::vector<UINT8> Smbios;
  const char16_t *Caption;
};

class CaptionTest : public BadInputTest, public ::testing::WithParamInterface<CaptionCase> {};

TEST_P (CaptionTest, ShowsTheSerialNumberThenTheTag)
{
  if (GetParam ().SerialItem != nullptr) {
    SetBytes (SETTING_SERIAL_NUMBER, GetParam ().SerialItem);
  }

  SetSmbiosTable (GetParam ().Smbios);
  StandInSmbiosIgnoreType (GetParam ().Smbios.front () != SMBIOS_TYPE_SYSTEM_INFORMATION);
  InstallAdminPassword ();
  ASSERT_TRUE (Boot ());

  EXPECT_EQ (CaptionOfOnePrompt (), GetParam ().Caption);
}

const std::vector<std::string> mStrings = {"Kest", "K1", "1.0", "ABC123"};

/** @return a record of another type before the system record, for an SMBIOS producer that ignores the type asked. **/
std::vector<UINT8>
OtherTypeFirst ()
{
  std::vector<UINT8> Table = {2, 4, 0, 0, 0, 0};
  std::vector<UINT8> System = PageFlowTest::SmbiosSystemRecord (1, {"XY-9"});

  Table.insert (Table.end (), System.begin (), System.end ());
  return Table;
}

INSTANTIATE_TEST_SUITE_P (
  Source,
  CaptionTest,
  ::testing::Values (
    CaptionCase{"FromSettings", "KS-0042", PageFlowTest::SmbiosSystemRecord (4, mStrings), u"KS-0042-3B7C"},
    CaptionCase{"TwentyBytesWithoutTerminator", "ABCDEFGHIJKLMNOPQRST", PageFlowTest::SmbiosSystemRecord (4, mStrings),
                u"ABCDEFGHIJKLMNOPQRS-3B7C"},
    CaptionCase{"FromSmbiosWithABlank", nullptr, PageFlowTest::SmbiosSystemRecord (4, mStrings), u"ABC123 -3B7C"},
    CaptionCase{"SmbiosOtherTypeFirst", nullptr, OtherTypeFirst (), u"XY-9 -3B7C"},
    CaptionCase{"SmbiosStringZero", nullptr, PageFlowTest::SmbiosSystemRecord (0, mStrings), u"-3B7C"},
    CaptionCase{"SmbiosPastTheStrings", nullptr, PageFlowTest::SmbiosSystemRecord (5, mStrings), u"-3B7C"}),
  CaseName<CaptionCase>);

TEST_F (BadInputTest, ASerialThatNoSourceGivesKeepsTheOneShownBefore)
{
  SetSmbiosTable (SmbiosSystemRecord (0, mStrings));
  SetText (SETTING_SERIAL_NUMBER, "KS1");
  InstallAdminPassword ();
  ASSERT_TRUE (Boot ());
  EXPECT_EQ (CaptionOfOnePrompt (), u"KS1-3B7C");

  StandInRemoveSetting (SETTING_SERIAL_NUMBER);
  EXPECT_EQ (CaptionOfOnePrompt (), u"KS1-3B7C");
}

} // namespace
