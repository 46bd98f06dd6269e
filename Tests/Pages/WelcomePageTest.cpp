/** @file
  The welcome page at power-on when nobody presses a key: its countdown, the
  keys it watches, its text line, and what stays hidden.
**/
#include "PageFlowTest.h"

#include <Guid/KestUiGuids.h>
#include <Protocol/SimpleTextIn.h>

namespace {

using WelcomePageTest = PageFlowTest;

struct CountdownCase {
  const char *Name;
  int Item; ///< value of item 1183, or -1 for no item
  UINTN CountedSeconds;
};

class PowerOnTest : public PageFlowTest, public ::testing::WithParamInterface<CountdownCase> {};

TEST_P (PowerOnTest, WithoutAKeyThePageClosesAtTheFirstEventAfterCountdownPlusOneCountedSeconds)
{
  if (GetParam ().Item >= 0) {
    SetByte (SETTING_PAGE_COUNTDOWN, (UINT8)GetParam ().Item);
  }

  ASSERT_TRUE (Boot ());
  WelcomeControls Welcome = ShowWelcome ();
  ASSERT_NE (Welcome.Page, 0u);
  Ui ().UpdateWelcomeProgress (nullptr, 30);
  Ui ().RefreshWelcomePage ();

  const std::deque<HostKeyRegistration> &Keys = Platform ().Console ().KeyRegistrations ();
  ASSERT_EQ (Keys.size (), 86u);
  EXPECT_EQ (Keys[0].KeyData.Key.ScanCode, SCAN_F2);
  EXPECT_EQ (Keys[1].KeyData.Key.ScanCode, SCAN_F9);
  EXPECT_EQ (Keys[2].KeyData.Key.ScanCode, SCAN_F12);
  for (const HostKeyRegistration &Key : Keys) {
    EXPECT_EQ (Key.KeyData.KeyState.KeyShiftState, EFI_SHIFT_STATE_VALID);
    EXPECT_EQ (Key.KeyData.KeyState.KeyToggleState, EFI_TOGGLE_STATE_VALID);
  }

  //
  // Each second comes twice, the second time from another control, and counts
  // once. The repeat of the last counted second is the first event after the
  // countdown has run out: it closes the page.
  //
  const UINTN Counted = GetParam ().CountedSeconds;
  for (UINTN Second = 1; Second <= Counted; Second++) {
    Tick (Welcome.Logo, (UINT8)Second);
    Tick (Welcome.Progress, (UINT8)Second);
  }

  EXPECT_EQ (RunLoop (), EFI_SUCCESS);
  std::vector<STAND_IN_DELIVERY> Events = Deliveries ();
  ASSERT_EQ (Events.size (), 2 * Counted) << "the page closed at the wrong event";
  for (UINTN Index = 0; Index + 1 < Events.size (); Index++) {
    EXPECT_EQ (Events[Index].Result, (Index % 2 == 0) ? UI_EVENT_HANDLED : UI_EVENT_NOT_HANDLED) << "event " << Index;
  }

  EXPECT_EQ (Events.back ().Result, UI_EVENT_HANDLED_PAGE_CLOSED);
  EXPECT_EQ (Events.back ().EventCodeAfter, UI_EVENT_CLOSE);
  EXPECT_TRUE (PageDestroyed (Welcome.Page));
  EXPECT_EQ (Platform ().Console ().ActiveKeyRegistrations (), 0u);

  //
  // No key: an empty message line, a bar never shown, progress only recorded, no abort flag.
  //
  STAND_IN_TEXT Message{};
  ASSERT_TRUE (StandInGetControlText (Welcome.Page, Welcome.Message, &Message));
  EXPECT_TRUE ((Message.String == nullptr) && (Message.StringId == 0));
  for (const FlowCall &Call : mLog) {
    EXPECT_FALSE ((Call.Name == "SetControlProperty") && (Call.Arguments[2] == Welcome.Progress) &&
                  (Call.Arguments[3] == UI_PROPERTY_VISIBLE) && (Call.Arguments[4] != 0));
  }

  UINTN Value = 0;
  EXPECT_FALSE (StandInIsVisible (Welcome.Page, Welcome.Progress));
  EXPECT_FALSE (StandInGetProgress (Welcome.Page, Welcome.Progress, &Value)) << "value " << Value;
  EXPECT_TRUE (Platform ().Variables ().Writes (u"KestDiagAbortFlag", gKestDiagAbortFlagGuid).empty ());
}

INSTANTIATE_TEST_SUITE_P (Countdown,
                          PowerOnTest,
                          ::testing::Values (CountdownCase{"NoItem", -1, 1},
                                             CountdownCase{"Item0", 0, 1},
                                             CountdownCase{"Item1FiveSeconds", 1, 6},
                                             CountdownCase{"Item2TenSeconds", 2, 11}),
                          CaseName<CountdownCase>);

struct TextLineCase {
  const char *Name;
  bool Present;
  std::string Bytes; ///< item 1563 as stored
  std::string Shown;
};

class TextLineTest : public PageFlowTest, public ::testing::WithParamInterface<TextLineCase> {};

TEST_P (TextLineTest, ShowsEightyCharacters)
{
  if (GetParam ().Present) {
    SetBytes (SETTING_WELCOME_TEXT, GetParam ().Bytes);
  }

  ASSERT_TRUE (Boot ());
  WelcomeControls Welcome = ShowWelcome ();
  ASSERT_NE (Welcome.Text, 0u);

  EXPECT_EQ (ControlText (Welcome.Page, Welcome.Text),
             std::u16string (GetParam ().Shown.begin (), GetParam ().Shown.end ()));
}

INSTANTIATE_TEST_SUITE_P (Item,
                          TextLineTest,
                          ::testing::Values (TextLineCase{"FilledWithSpaces", true,
                                                          std::string ("Kestrel Systems") + '\0',
                                                          "Kestrel Systems" + std::string (65, ' ')},
                                             TextLineCase{"AbsentGivesSpaces", false, "", std::string (80, ' ')},
                                             TextLineCase{"EightyOneBytesWithoutTerminator", true,
                                                          std::string (80, 'K') + "Z", std::string (80, 'K')}),
                          CaseName<TextLineCase>);

TEST_F (WelcomePageTest, WithoutTheSettingsServiceThereIsNoTextLineAndNoCountdown)
{
  ASSERT_TRUE (Boot (AllServices & ~WithSettings));
  WelcomeControls Welcome = ShowWelcome ();
  ASSERT_NE (Welcome.Status, 0u);
  EXPECT_EQ (Welcome.Text, 0u);

  Tick (Welcome.Logo, 1);
  Tick (Welcome.Logo, 2);
  EXPECT_EQ (RunLoop (), EFI_SUCCESS);
  EXPECT_TRUE (mScript.empty ());
  EXPECT_TRUE (PageDestroyed (Welcome.Page));
}

} // namespace
