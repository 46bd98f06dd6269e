/** @file
  The flash update page that Show builds for a firmware-update driver, and
  what the driver's calls show on it: progress and percentage, the status
  line and the outcomes.
**/
#include "FlashPageFlow.h"

#include <algorithm>

namespace {

//
// The page that Show builds.
//

TEST_F (FlashPageTest, ShowBuildsTheSixControlsInLayoutOrderThenTheWarningAndTheLabel)
{
  ASSERT_TRUE (BootFlash ());
  const UINTN Start = Mark ();
  FlashControls F = ShowFlash ();
  ASSERT_NE (F.Percent, 0u);
  ASSERT_NE (mHii, nullptr);

  STAND_IN_CONTROL_INFO Logo;
  ASSERT_TRUE (StandInFindControl (F.Page, F.Logo, &Logo));
  const UINTN Handler = (UINTN)Logo.Handler;
  const UINTN Hii = (UINTN)mHii;
  const UINTN P = F.Page;
  ASSERT_NE (Handler, 0u);

  std::vector<FlowCall> Build = {
    {"SetUiMode", {1}},
    {"CreatePage", {kAny, 1000, 0, 0, 0, Hii, 8}},
    {"CreateImageControl", {P, kContainer, Hii, 8, 0, 0, 0, Handler, kAny}},
  };
  auto Add = [&Build, P] (UINTN Control, const std::vector<std::vector<UINTN>> &Rows) {
    for (const std::vector<UINTN> &Row : Rows) {
      Build.push_back (Attribute (P, Control, (UINT32)Row[0], Row[1], Row[2], Row[3]));
    }
  };
  // clang-format off
  Add (F.Logo, {{0x70720008, 4, 40, 40}, {0x73740003, 1, 0, 0}, {0x73740000, 0, 0, 0}, {0x73740000, 2, 0, 0},
                {0x73740023, 5, 0, 0}, {0x73740003, 1, 0, 0}, {0x73740000, 0x100, 30, 18}});
  Build.push_back ({"CreateProgressControl", {P, kContainer, Hii, 3, 0, 0, 100, 0, Handler, kAny}});
  Add (F.Progress, {{0x70720008, 4, 50, 5}, {0x73740000, 0, 0, 0}, {0x73740000, 2, 0, 0}, {0x73740000, 0x20, 0, 0},
                    {0x73740003, 1, 0, 0}, {0x64611201, 100, 0, 0}, {0x64611200, 0, 0, 0}});
  Build.push_back ({"CreateTextControl", {P, kContainer, Hii, 0, 0, kAny}});
  Add (F.Message, {{0x70720008, 4, 100, 20}, {0x73740003, 1, 0, 0}, {0x73740011, kWhite, 0, 0},
                   {0x7374001D, 0, 0, 22}, {0x73740001, 4, 0, 0}, {0x73740000, 0, 0, 0}, {0x73740000, 2, 0, 0},
                   {0x73740000, 0x40, 2, F.Logo}});
  Build.push_back ({"CreateTextControl", {P, kContainer, Hii, 0, 0, kAny}});
  Add (F.Status, {{0x7072000C, 0, 10, 10}, {0x70720008, 4, 100, 10}, {0x73740003, 1, 0, 0},
                  {0x73740011, kWhite, 0, 0}, {0x73740001, 5, 0, 0}, {0x73740000, 0, 0, 0}, {0x73740000, 2, 0, 0},
                  {0x73740001, 5, 0, 0}, {0x73740000, 0x40, 3, F.Progress}});
  Build.push_back ({"CreateTextControl", {P, kContainer, Hii, 0, 0, kAny}});
  Add (F.Label, {{0x70720008, 4, 20, 5}, {0x73740003, 1, 0, 0}, {0x73740011, kWhite, 0, 0}, {0x7374001D, 0, 0, 22},
                 {0x73740001, 2, 0, 0}, {0x73740000, 0x20, 0, 0}, {0x73740000, 1, 0, 0}});
  Build.push_back ({"CreateTextControl", {P, kContainer, Hii, 11, 0, kAny}});
  Add (F.Percent, {{0x70720008, 4, 20, 5}, {0x73740003, 1, 0, 0}, {0x73740011, kWhite, 0, 0}, {0x7374001D, 0, 0, 22},
                   {0x73740000, 0x20, 0, 0}, {0x73740000, 4, 0, 0}});
  // clang-format on
  Build.push_back ({"SetEventHandler", {Handler}});
  Build.push_back ({"DisplayPage", {P, 0}});

  //
  // After the page: 0%, an empty status line, the warning in red and the label
  // in white. The logo's hand-over is left out here: it has tests of its own.
  //
  std::vector<FlowCall> Then = ProgressCalls (F, 0);
  Then.push_back (Attribute (P, F.Status, kTextTag, kAny, 0, 0));
  Then.push_back ({"RefreshPage", {P}});
  Then.push_back ({"GetString", {0, Hii, 9, kAny}});
  Then.push_back (Attribute (P, F.Message, kTextTag, kAny, Hii, 0));
  Then.push_back (Attribute (P, F.Message, kColourTag, kRed));
  Then.push_back ({"RefreshPage", {P}});
  Then.push_back ({"GetString", {0, Hii, 10, kAny}});
  Then.push_back (Attribute (P, F.Label, kTextTag, kAny, Hii, 0));
  Then.push_back (Attribute (P, F.Label, kColourTag, kWhite));

  std::vector<FlowCall> Seen (mLog.begin () + Start, mLog.end ());
  ASSERT_GE (Seen.size (), Build.size ());
  std::vector<FlowCall> After (Seen.begin () + Build.size (), Seen.end ());
  Seen.resize (Build.size ());
  EXPECT_EQ (Describe (Seen, Build), Describe (Build, Build));
  After.erase (std::remove_if (After.begin (), After.end (),
                               [&F] (const FlowCall &Call) {
                                 return (Call.Name == "AddImageData") || (Call.Name == "GetImage") ||
                                        ((Call.Arguments.size () == 7) && (Call.Arguments[2] == F.Logo));
                               }),
               After.end ());
  ASSERT_GE (After.size (), Then.size ());
  for (size_t Index = Then.size (); Index < After.size (); Index++) {
    EXPECT_EQ (After[Index].Name, "RefreshPage");
    EXPECT_EQ (After[Index].Arguments, std::vector<UINTN>{P});
  }

  After.resize (Then.size ());
  EXPECT_EQ (Describe (After, Then), Describe (Then, Then));

  EXPECT_EQ (ControlText (P, F.Message), gFlashWarning);
  EXPECT_EQ (Colour (P, F.Message), kRed);
  EXPECT_EQ (ControlText (P, F.Label), u"Flash Progress");
  EXPECT_EQ (Colour (P, F.Label), kWhite);
  EXPECT_EQ (ControlText (P, F.Percent), u"   0%");
  EXPECT_EQ (ControlText (P, F.Status), u"");
  EXPECT_EQ (Bar (F), 0u);
  EXPECT_EQ (String (11), u"   000%            ") << "the text the percentage starts with";
  EXPECT_EQ (Framework ().EventHandler, Logo.Handler);
}

TEST_F (FlashPageTest, WelcomePageBuildsItsFiveControlsInLayoutOrderThenRegistersKeysAndDisplays)
{
  SetText (1563, "Welcome");
  ASSERT_TRUE (Boot ());
  const UINTN Start = Mark ();
  WelcomeControls W = ShowWelcome ();
  ASSERT_NE (W.Text, 0u);

  STAND_IN_CONTROL_INFO Logo;
  STAND_IN_PAGE_INFO Page;
  ASSERT_TRUE (StandInFindControl (W.Page, W.Logo, &Logo));
  ASSERT_TRUE (StandInFindPage (W.Page, &Page));
  ASSERT_NE (Page.HiiHandle, nullptr);
  const UINTN Handler = (UINTN)Logo.Handler;
  const UINTN Hii = (UINTN)Page.HiiHandle;
  const UINTN P = W.Page;

  std::vector<FlowCall> Build = {
    {"SetUiMode", {1}},
    {"CreatePage", {kAny, 1000, 0, 0, 0, Hii, 2}},
    {"CreateImageControl", {P, kContainer, Hii, 2, 0, 0, 0, Handler, kAny}},
  };
  auto Add = [&Build, P] (UINTN Control, const std::vector<std::vector<UINTN>> &Rows) {
    for (const std::vector<UINTN> &Row : Rows) {
      Build.push_back (Attribute (P, Control, (UINT32)Row[0], Row[1], Row[2], Row[3]));
    }
  };
  // clang-format off
  Add (W.Logo, {{0x70720008, 4, 40, 40}, {0x73740003, 1, 0, 0}, {0x73740000, 0, 0, 0}, {0x73740000, 2, 0, 0},
                {0x73740023, 5, 0, 0}, {0x73740000, 0x100, 30, 18}});
  Build.push_back ({"CreateProgressControl", {P, kContainer, Hii, 3, 0, 0, 100, 0, Handler, kAny}});
  Add (W.Progress, {{0x70720008, 4, 80, 5}, {0x73740000, 2, 0, 0}, {0x73740000, 0x20, 0, 0}, {0x73740003, 1, 0, 0},
                    {0x73740000, 2, 0, 0}, {0x70720001, 0, 0, 0}});
  Build.push_back ({"CreateTextControl", {P, kContainer, Hii, 0, 0, kAny}});
  Add (W.Text, {{0x7072000C, 0, 10, 10}, {0x70720008, 4, 100, 10}, {0x73740011, kWhite, 0, 0},
                {0x73740003, 1, 0, 0}, {0x73740000, 2, 0, 0}, {0x73740001, 5, 0, 0}, {0x73740000, 0x40, 2, W.Logo},
                {kTextTag, kAny, 0, 0}});
  Build.push_back ({"CreateTextControl", {P, kContainer, Hii, 0, 0, kAny}});
  Add (W.Message, {{0x73740011, kWhite, 0, 0}, {0x73740003, 1, 0, 0}, {0x73740000, 0x0C, 0, 0},
                   {0x73740001, 2, 0, 0}, {0x7374001D, 0, 0, 24}});
  Build.push_back ({"CreateTextControl", {P, kContainer, Hii, 0, 0, kAny}});
  Add (W.Status, {{0x73740003, 1, 0, 0}, {0x73740011, kWhite, 0, 0}, {0x73740000, 2, 0, 0},
                  {0x73740000, 0x40, 3, W.Progress}});
  // clang-format on
  Build.push_back ({"DisplayPage", {P, 0}});

  std::vector<FlowCall> Seen;
  for (auto Call = mLog.begin () + Start; Call != mLog.end (); ++Call) {
    if ((Call->Name != "GetControlStyle") && (Call->Name != "GetSetting")) {
      Seen.push_back (*Call);
    }
  }

  ASSERT_GE (Seen.size (), Build.size ());
  Seen.resize (Build.size ());
  EXPECT_EQ (Describe (Seen, Build), Describe (Build, Build));
  EXPECT_EQ (ControlText (P, W.Text), u"Welcome" + std::u16string (73, u' '));
}

//
// Progress, status line and outcomes.
//

TEST_F (FlashPageTest, ProgressMovesBarAndPercentageBothWaysUpTo100)
{
  ASSERT_TRUE (BootFlash ());
  FlashControls F = ShowFlash ();
  ASSERT_NE (F.Percent, 0u);

  std::vector<UINTN> Values;
  for (UINTN Percent = 0; Percent <= 100; Percent++) {
    Values.push_back ((Percent * 7) % 101); // every value once, in an order that goes back too
  }

  Values.insert (Values.end (), {50, 5});
  for (UINTN Percent : Values) {
    const UINTN Start = Mark ();
    Flash ().SetProgress (Percent);
    std::vector<FlowCall> Expected = ProgressCalls (F, Percent);
    EXPECT_EQ (CallsSince (Start, Expected), Describe (Expected, Expected)) << Percent;
    EXPECT_EQ (Bar (F), Percent);
    EXPECT_EQ (ControlText (F.Page, F.Percent), Percentage (Percent));
  }
}

struct StatusCase {
  const char *Name;
  const char *Text; ///< null: SetStatusText (null)
  std::string Shown;
};

class FlashStatusTest : public FlashPageTest, public ::testing::WithParamInterface<StatusCase> {};

TEST_P (FlashStatusTest, ShowsAtMostFiftyCharacters)
{
  ASSERT_TRUE (BootFlash ());
  FlashControls F = ShowFlash ();
  Flash ().SetStatusText (const_cast<CHAR8 *> ("Erasing"));
  std::string Text = (GetParam ().Text != nullptr) ? GetParam ().Text : "";

  const UINTN Start = Mark ();
  Flash ().SetStatusText ((GetParam ().Text != nullptr) ? Text.data () : nullptr);
  std::vector<FlowCall> Expected = {Attribute (F.Page, F.Status, kTextTag, kAny, 0, 0), {"RefreshPage", {F.Page}}};
  EXPECT_EQ (CallsSince (Start, Expected), Describe (Expected, Expected));
  EXPECT_EQ (ControlText (F.Page, F.Status), std::u16string (GetParam ().Shown.begin (), GetParam ().Shown.end ()));
}

const std::string kSixty = "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWX";

INSTANTIATE_TEST_SUITE_P (Text,
                          FlashStatusTest,
                          ::testing::Values (StatusCase{"Short", "Writing block 7", "Writing block 7"},
                                             StatusCase{"Fifty", "01234567890123456789012345678901234567890123456789",
                                                        "01234567890123456789012345678901234567890123456789"},
                                             StatusCase{"SixtyCutAtFifty", kSixty.c_str (), kSixty.substr (0, 50)},
                                             StatusCase{"Empty", "", ""},
                                             StatusCase{"NullEmptiesTheLine", nullptr, ""}),
                          CaseName<StatusCase>);

struct OutcomeCase {
  const char *Name;
  UINT32 Result;
  EFI_STRING_ID StringId;
  UINTN Colour;
  const char16_t *Text;
};

class FlashOutcomeTest : public FlashPageTest, public ::testing::WithParamInterface<OutcomeCase> {};

TEST_P (FlashOutcomeTest, ReplacesTheWarningAndLeavesTheRest)
{
  ASSERT_TRUE (BootFlash ());
  FlashControls F = ShowFlash ();
  Flash ().SetProgress (40);
  Flash ().SetStatusText (const_cast<CHAR8 *> ("Verifying"));

  const UINTN Start = Mark ();
  Flash ().ShowResult (GetParam ().Result);
  std::vector<FlowCall> Expected = {{"GetString", {0, (UINTN)mHii, GetParam ().StringId, kAny}},
                                    Attribute (F.Page, F.Message, kTextTag, kAny, (UINTN)mHii, 0),
                                    Attribute (F.Page, F.Message, kColourTag, GetParam ().Colour),
                                    {"RefreshPage", {F.Page}}};
  EXPECT_EQ (CallsSince (Start, Expected), Describe (Expected, Expected));
  EXPECT_EQ (ControlText (F.Page, F.Message), GetParam ().Text);
  EXPECT_EQ (Colour (F.Page, F.Message), GetParam ().Colour);
  EXPECT_EQ ((std::vector<std::u16string>{ControlText (F.Page, F.Percent), ControlText (F.Page, F.Status),
                                          ControlText (F.Page, F.Label)}),
             (std::vector<std::u16string>{u"   40%", u"Verifying", u"Flash Progress"}));
  EXPECT_EQ (Bar (F), 40u);
  EXPECT_FALSE (PageDestroyed (F.Page)) << "an outcome closes nothing";
}

INSTANTIATE_TEST_SUITE_P (
  Result,
  FlashOutcomeTest,
  ::testing::Values (OutcomeCase{"SuccessReboot", 0, 12, kGreen, u"BIOS Update successful. Rebooting your system."},
                     OutcomeCase{"FailureReboot", 1, 14, kRed, u"BIOS Update failed. Rebooting your system."},
                     OutcomeCase{"AntiTheftBlocked", 2, 16, kRed,
                                 u"BIOS Update blocked due to Intel AntiTheft feature overide."},
                     OutcomeCase{"DowngradeBlocked", 3, 18, kRed, u"BIOS Update blocked due to unsupported downgrade."},
                     OutcomeCase{"SecureBootDowngradeBlocked", 4, 17, kRed,
                                 u"Downgrading to a BIOS without Secure Boot abilities was blocked."},
                     OutcomeCase{"Success", 5, 13, kGreen, u"BIOS Update successful."},
                     OutcomeCase{"Failure", 6, 15, kRed, u"BIOS Update failed."}),
  CaseName<OutcomeCase>);

TEST_F (FlashPageTest, AnUnknownOutcomeOrAStringNotDeliveredChangesNothing)
{
  ASSERT_TRUE (BootFlash ());
  FlashControls F = ShowFlash ();

  UINTN Start = Mark ();
  Flash ().ShowResult (7);
  Flash ().ShowResult (0xFFFFFFFF);
  EXPECT_EQ (CallsSince (Start, {}), std::vector<std::string>{});

  StandInFailOperation (StandInOpGetString, 1, EFI_NOT_FOUND);
  Start = Mark ();
  Flash ().ShowResult (FlashResultFailure);
  std::vector<FlowCall> Expected = {{"GetString", {0, (UINTN)mHii, 15, kAny}}};
  EXPECT_EQ (CallsSince (Start, Expected), Describe (Expected, Expected));
  EXPECT_EQ (ControlText (F.Page, F.Message), gFlashWarning);
  EXPECT_EQ (Colour (F.Page, F.Message), kRed);
}

} // namespace
