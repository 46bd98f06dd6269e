/** @file
  The logo both pages show: the personality module's own logo, else the
  firmware-volume logo file (its raw section, else the whole file), handed to
  the UI framework under one name and set on the page's image control; and
  the logo flag of UI driver protocol slot 7.
**/
#include "FlashPageFlow.h"

#include <Guid/KestUiGuids.h>

namespace {

const std::u16string kLogoName = u"KestLogo_1280.bmp";

class LogoTest : public FlashPageTest {
protected:
  /** @return the bytes the framework holds under the logo's name; empty when none were handed over. **/
  static std::vector<UINT8>
  HandedOver ()
  {
    const VOID *Data = nullptr;
    UINTN Size = 0;
    std::vector<CHAR16> Name (kLogoName.begin (), kLogoName.end ());

    Name.push_back (0);
    if (!StandInGetImageData (Name.data (), &Data, &Size)) {
      return {};
    }

    return std::vector<UINT8> ((const UINT8 *)Data, (const UINT8 *)Data + Size);
  }

  /** @return the image value set on Control (0x73740007), or 0 when none was set. **/
  static UINTN
  ImageOn (UINTN Page, UINTN Control)
  {
    UINTN Values[3] = {0, 0, 0};
    UINTN Scale[3] = {0, 0, 0};

    if (!StandInGetAttribute (Page, Control, UI_PROPERTY_IMAGE_SCALE, Scale) ||
        !StandInGetAttribute (Page, Control, UI_STYLE_IMAGE, Values)) {
      return 0;
    }

    EXPECT_EQ (Scale[0], 2u);
    EXPECT_EQ (Scale[1], 100u);
    EXPECT_EQ (Scale[2], 100u);
    return Values[0];
  }

  /** @return how often the logo's data was handed over. **/
  size_t
  Handovers () const
  {
    return Trace ({"AddImageData"}).size ();
  }

  HostFirmwareVolume &
  FirmwareVolume ()
  {
    return Platform ().Volumes ().AddFirmwareVolume ();
  }

  const std::vector<UINT8> mPersonalityLogo = {'B', 'M', 1, 2, 3, 4, 5};
  const std::vector<UINT8> mSection = {'B', 'M', 9, 8, 7};
  const std::vector<UINT8> mWholeFile = {'B', 'M', 6, 6, 6, 6};
};

TEST_F (LogoTest, PersonalityLogoIsCopiedHandedOverAndSetOnTheWelcomePage)
{
  StandInSetPersonalityLogo (mPersonalityLogo.data (), mPersonalityLogo.size (), (UINT32)mPersonalityLogo.size ());
  FirmwareVolume ().AddFileWithRawSection (gKestLogoFileGuid, mSection);
  ASSERT_TRUE (Boot ());

  WelcomeControls Welcome = ShowWelcome ();

  EXPECT_EQ (HandedOver (), mPersonalityLogo);
  EXPECT_NE (ImageOn (Welcome.Page, Welcome.Logo), 0u) << "the image that GetImage gave is set on the logo control";
  EXPECT_EQ (Trace ({"AddImageData", "GetImage"}), (std::vector<std::string>{"AddImageData", "GetImage"}));
}

TEST_F (LogoTest, PersonalityLogoOfSizeZeroCountsAsAbsent)
{
  StandInSetPersonalityLogo (mPersonalityLogo.data (), mPersonalityLogo.size (), 0);
  FirmwareVolume ().AddFileWithRawSection (gKestLogoFileGuid, mSection);
  ASSERT_TRUE (Boot ());

  WelcomeControls Welcome = ShowWelcome ();

  EXPECT_EQ (HandedOver (), mSection) << "the firmware volume's raw section";
  EXPECT_NE (ImageOn (Welcome.Page, Welcome.Logo), 0u);
}

TEST_F (LogoTest, WithoutPersonalityModuleTheFileIsReadWholeWhenItHasNoRawSection)
{
  Platform ().Volumes ().AddFirmwareVolume ();
  FirmwareVolume ().AddRawFile (gKestLogoFileGuid, mWholeFile);
  ASSERT_TRUE (Boot (AllServices & ~WithPersonality));

  WelcomeControls Welcome = ShowWelcome ();

  EXPECT_EQ (HandedOver (), mWholeFile) << "found on the second volume, read whole";
  EXPECT_NE (ImageOn (Welcome.Page, Welcome.Logo), 0u);
}

TEST_F (LogoTest, WithNeitherSourceNothingIsHandedOverAndTheCellStaysEmpty)
{
  ASSERT_TRUE (Boot ());

  WelcomeControls Welcome = ShowWelcome ();

  EXPECT_TRUE (HandedOver ().empty ());
  EXPECT_EQ (Handovers (), 0u);
  EXPECT_EQ (Trace ({"GetImage"}).size (), 1u) << "an image handed over earlier could still be found";
  EXPECT_EQ (ImageOn (Welcome.Page, Welcome.Logo), 0u);
  UINTN Scale[3] = {0, 0, 0};
  EXPECT_TRUE (StandInGetAttribute (Welcome.Page, Welcome.Logo, UI_PROPERTY_IMAGE_SCALE, Scale))
    << "the image is set on the page as the cell holds it";
}

TEST_F (LogoTest, PersonalityLogoTooLargeForPoolFallsBackToTheFile)
{
  // The host pool refuses more than 1 GiB: the copy cannot be made.
  StandInSetPersonalityLogo (mPersonalityLogo.data (), mPersonalityLogo.size (), 0x80000000U);
  FirmwareVolume ().AddFileWithRawSection (gKestLogoFileGuid, mSection);
  ASSERT_TRUE (Boot ());

  WelcomeControls Welcome = ShowWelcome ();

  EXPECT_EQ (HandedOver (), mSection);
  EXPECT_NE (ImageOn (Welcome.Page, Welcome.Logo), 0u);
}

TEST_F (LogoTest, FlashPageHandsTheLogoOverAgainAndSetsItOnItsOwnControl)
{
  StandInSetPersonalityLogo (mPersonalityLogo.data (), mPersonalityLogo.size (), (UINT32)mPersonalityLogo.size ());
  ASSERT_TRUE (BootFlash ());
  ShowWelcome ();

  FlashControls Page = ShowFlash ();

  EXPECT_EQ (Handovers (), 2u) << "once per page, under the same name";
  EXPECT_EQ (HandedOver (), mPersonalityLogo);
  EXPECT_NE (ImageOn (Page.Page, Page.Logo), 0u);
}

TEST_F (LogoTest, LogoFlagActsOnTheWelcomePagesImageControl)
{
  ASSERT_TRUE (Boot ());
  WelcomeControls Welcome = ShowWelcome ();

  EXPECT_EQ (Ui ().SetWelcomeLogoFlag (), EFI_SUCCESS);

  UINTN Flag[3] = {0, 0, 0};
  ASSERT_TRUE (StandInGetAttribute (Welcome.Page, Welcome.Logo, UI_PROPERTY_LOGO_FLAG, Flag));
  EXPECT_EQ (Flag[0], 1u);
}

TEST_F (LogoTest, LogoFlagReportsTheFrameworksRefusalOnceThePageIsGone)
{
  ASSERT_TRUE (Boot ());
  ShowWelcome ();
  EXPECT_EQ (Ui ().FinishWelcomePage (), EFI_NOT_FOUND) << "item 36930 is not set";

  EXPECT_EQ (Ui ().SetWelcomeLogoFlag (), EFI_INVALID_PARAMETER);
}

} // namespace
