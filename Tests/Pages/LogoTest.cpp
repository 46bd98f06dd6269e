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

/** @return a bottom-up 24-bit BMP file of Width x Height pixels, all of one colour. **/
std::vector<UINT8>
SolidBmp (UINT32 Width, UINT32 Height)
{
  const UINT32 RowSize = (Width * 3 + 3) & ~3U;
  const UINT32 Size = 54 + RowSize * Height;
  std::vector<UINT8> File (Size, 0);
  auto Put32 = [&File] (size_t Offset, UINT32 Value) {
    for (size_t Byte = 0; Byte < 4; Byte++) {
      File[Offset + Byte] = (UINT8)(Value >> (8 * Byte));
    }
  };

  File[0] = 'B';
  File[1] = 'M';
  Put32 (2, Size);
  Put32 (10, 54);
  Put32 (14, 40);
  Put32 (18, Width);
  Put32 (22, Height);
  File[26] = 1;
  File[28] = 24;
  Put32 (34, RowSize * Height);
  for (UINT32 Row = 0; Row < Height; Row++) {
    for (UINT32 Column = 0; Column < Width; Column++) {
      File[54 + Row * RowSize + Column * 3] = 0x80;
    }
  }

  return File;
}

TEST_F (LogoTest, BootLogoIsPublishedOnceFromTheImageControlsRecord)
{
  const std::vector<UINT8> Bmp = SolidBmp (4, 2);
  StandInSetPersonalityLogo (Bmp.data (), Bmp.size (), (UINT32)Bmp.size ());
  ASSERT_TRUE (Boot ());

  WelcomeControls Welcome = ShowWelcome ();
  Ui ().RefreshWelcomePage ();
  Ui ().UpdateWelcomeProgress (nullptr, 50);

  STAND_IN_BOOT_LOGO Logo{};
  StandInGetBootLogo (&Logo);
  EXPECT_EQ (Logo.Calls, 1u);
  EXPECT_EQ (Logo.Width, 4u);
  EXPECT_EQ (Logo.Height, 2u);
  UINTN Record = 0;
  ASSERT_EQ (mFramework->Attributes->GetControlStyle (Welcome.Page, UI_PAGE_CONTAINER, Welcome.Logo,
                                                      UI_STYLE_IMAGE_RECORD, (UINTN)&Record, 0, 0),
             EFI_SUCCESS);
  ASSERT_NE (Record, 0u);
  EXPECT_EQ (Logo.BltBuffer, ((const UI_IMAGE_RECORD *)Record)->BltBuffer); // NOLINT(performance-no-int-to-ptr)
}

TEST_F (LogoTest, BootLogoIsTriedAgainUntilTheProtocolTakesIt)
{
  const std::vector<UINT8> Bmp = SolidBmp (2, 2);
  StandInSetPersonalityLogo (Bmp.data (), Bmp.size (), (UINT32)Bmp.size ());
  StandInFailOperation (StandInOpSetBootLogo, 1, EFI_DEVICE_ERROR);
  ASSERT_TRUE (Boot ());

  ShowWelcome ();
  Ui ().RefreshWelcomePage ();
  Ui ().RefreshWelcomePage ();

  STAND_IN_BOOT_LOGO Logo{};
  StandInGetBootLogo (&Logo);
  EXPECT_EQ (Logo.Calls, 1u) << "accepted once, after the refused first try";
  EXPECT_EQ (Trace ({"SetBootLogo"}).size (), 2u);
}

TEST_F (LogoTest, WithoutAnImageNoBootLogoIsPublished)
{
  ASSERT_TRUE (Boot ());

  ShowWelcome ();
  Ui ().RefreshWelcomePage ();

  EXPECT_TRUE (Trace ({"SetBootLogo"}).empty ());
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
