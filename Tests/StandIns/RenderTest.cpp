/** @file
  The stand-ins' renderer: the theme parser on well-formed and malformed
  strings, and what reaches a Graphics Output Protocol of the test when a page
  is displayed, refreshed or hidden.
**/
#include <gtest/gtest.h>

#include <Protocol/GraphicsOutput.h>
#include <StandIns/StandInRender.h>

#include "StandInTest.h"

namespace {

constexpr UINT32 kWidth = 64;
constexpr UINT32 kHeight = 48;

///
/// A screen of kWidth x kHeight that keeps what each Blt wrote.
///
struct FakeScreen {
  EFI_GRAPHICS_OUTPUT_PROTOCOL Protocol;
  EFI_GRAPHICS_OUTPUT_PROTOCOL_MODE Mode;
  EFI_GRAPHICS_OUTPUT_MODE_INFORMATION Info;
  std::vector<EFI_GRAPHICS_OUTPUT_BLT_PIXEL> Pixels;
  UINTN BltCalls = 0;
  BOOLEAN WholeScreen = TRUE; ///< every Blt wrote the whole screen from the buffer
};

FakeScreen *gScreen = nullptr;

EFI_STATUS EFIAPI
FakeBlt (IN EFI_GRAPHICS_OUTPUT_PROTOCOL *This,
         IN EFI_GRAPHICS_OUTPUT_BLT_PIXEL *Buffer,
         IN EFI_GRAPHICS_OUTPUT_BLT_OPERATION Operation,
         IN UINTN SourceX,
         IN UINTN SourceY,
         IN UINTN DestinationX,
         IN UINTN DestinationY,
         IN UINTN Width,
         IN UINTN Height,
         IN UINTN Delta)
{
  gScreen->BltCalls++;
  if ((This != &gScreen->Protocol) || (Buffer == nullptr) || (Operation != EfiBltBufferToVideo) || (SourceX != 0) ||
      (SourceY != 0) || (DestinationX != 0) || (DestinationY != 0) || (Width != kWidth) || (Height != kHeight) ||
      (Delta != kWidth * sizeof (EFI_GRAPHICS_OUTPUT_BLT_PIXEL))) {
    gScreen->WholeScreen = FALSE;
    return EFI_INVALID_PARAMETER;
  }

  gScreen->Pixels.assign (Buffer, Buffer + kWidth * kHeight);
  return EFI_SUCCESS;
}

class RenderTest : public StandInTest {
protected:
  void
  SetUp () override
  {
    StandInTest::SetUp ();
    mScreen.Info.HorizontalResolution = kWidth;
    mScreen.Info.VerticalResolution = kHeight;
    mScreen.Info.PixelFormat = PixelBlueGreenRedReserved8BitPerColor;
    mScreen.Info.PixelsPerScanLine = kWidth;
    mScreen.Mode.Info = &mScreen.Info;
    mScreen.Mode.SizeOfInfo = sizeof (mScreen.Info);
    mScreen.Protocol.Blt = FakeBlt;
    mScreen.Protocol.Mode = &mScreen.Mode;
    gScreen = &mScreen;
  }

  void
  TearDown () override
  {
    StandInStopRendering ();
    gScreen = nullptr;
    StandInTest::TearDown ();
  }

  void
  InstallScreen ()
  {
    ASSERT_NE (Platform ().Handles ().InstallProtocol (gEfiGraphicsOutputProtocolGuid, &mScreen.Protocol), nullptr);
  }

  /** @return the screen's pixel at (X, Y) as 0xRRGGBB. **/
  UINT32
  At (UINTN X, UINTN Y) const
  {
    const EFI_GRAPHICS_OUTPUT_BLT_PIXEL &Pixel = mScreen.Pixels.at (Y * kWidth + X);

    return ((UINT32)Pixel.Red << 16) | ((UINT32)Pixel.Green << 8) | Pixel.Blue;
  }

  /** A page with one progress bar of half the screen each way, at Value of 0..100. **/
  UINTN
  ProgressPage (UINTN Value, UINTN &Control)
  {
    UINTN Page = NewPage ();

    Control = NewProgressControl (Page);
    EXPECT_EQ (mUi->Attributes->SetControlProperty (Page, UI_PAGE_CONTAINER, Control, UI_PROPERTY_SIZE, 4, 50, 50),
               EFI_SUCCESS);
    EXPECT_EQ (mUi->Attributes->SetControlData (Page, UI_PAGE_CONTAINER, Control, UI_DATA_PROGRESS_VALUE, Value, 0, 0),
               EFI_SUCCESS);
    return Page;
  }

  FakeScreen mScreen{};
};

TEST (ThemeColours, ReadsBothColoursInAnyOrderAndCase)
{
  UINT32 Background = 1;
  UINT32 Foreground = 2;

  EXPECT_TRUE (StandInParseThemeColours (Wide ("FGCL=ffFFfe|XX=1|BGCL=010203").data (), &Background, &Foreground));
  EXPECT_EQ (Background, 0x010203U);
  EXPECT_EQ (Foreground, 0xFFFFFEU);
}

TEST (ThemeColours, MalformedColoursLeaveTheDefaults)
{
  const char *Bad[] = {"",    "BGCL=01010", "BGCL=0101011", "BGCL=01010G|FGCL=12345", "bgcl=010101", "BGCL 010101",
                       "|||", "FGCL=|BGCL="};

  for (const char *Text : Bad) {
    UINT32 Background = 0xAAAAAA;
    UINT32 Foreground = 0xBBBBBB;

    EXPECT_FALSE (StandInParseThemeColours (Wide (Text).data (), &Background, &Foreground)) << Text;
    EXPECT_EQ (Background, 0xAAAAAAU) << Text;
    EXPECT_EQ (Foreground, 0xBBBBBBU) << Text;
  }

  UINT32 Colour = 0;
  EXPECT_FALSE (StandInParseThemeColours (nullptr, &Colour, &Colour));
}

TEST (ThemeColours, ReadsNoFurtherThanItsBound)
{
  //
  // A colour that starts past the bound is not read, even though the string
  // goes on to a terminator.
  //
  std::string Long (200, 'x');
  UINT32 Background = 7;
  UINT32 Foreground = 7;

  Long += "|BGCL=123456";
  EXPECT_FALSE (StandInParseThemeColours (Wide (Long).data (), &Background, &Foreground));
  EXPECT_EQ (Background, 7U);
}

TEST_F (RenderTest, WithoutScreenRenderingStaysOffAndPagesStillWork)
{
  UINTN Control = 0;
  UINTN Page = ProgressPage (50, Control);

  EXPECT_EQ (StandInStartRendering (), EFI_NOT_FOUND);
  EXPECT_EQ (mUi->Pages->DisplayPage (Page, 0), EFI_SUCCESS);
  EXPECT_EQ (mUi->Pages->RefreshPage (Page), EFI_SUCCESS);
  EXPECT_EQ (mScreen.BltCalls, 0U);
}

TEST_F (RenderTest, DisplayDrawsTheProgressBarWithOneWholeScreenBlt)
{
  UINTN Control = 0;
  UINTN Page = ProgressPage (50, Control);

  InstallScreen ();
  ASSERT_EQ (StandInStartRendering (), EFI_SUCCESS);
  EXPECT_EQ (StandInStartRendering (), EFI_ALREADY_STARTED);
  EXPECT_EQ (mScreen.BltCalls, 0U) << "no page is active yet";

  ASSERT_EQ (mUi->Pages->DisplayPage (Page, 0), EFI_SUCCESS);
  ASSERT_EQ (mScreen.BltCalls, 1U);
  ASSERT_TRUE (mScreen.WholeScreen);

  //
  // Box 32 x 24 at (16, 12), frame 2 px, filled part from x 20, half of the
  // 24 pixels inside: x 20 to 31.
  //
  EXPECT_EQ (At (0, 0), 0x000000U);
  EXPECT_EQ (At (16, 12), 0xFFFFFFU) << "frame";
  EXPECT_EQ (At (22, 20), 0xFFFFFFU) << "filled half";
  EXPECT_EQ (At (31, 20), 0xFFFFFFU) << "last filled column";
  EXPECT_EQ (At (32, 20), 0x000000U) << "first empty column";
  EXPECT_EQ (At (47, 20), 0xFFFFFFU) << "right frame";
}

TEST_F (RenderTest, ColourStyleAndVisibilityReachTheScreenOnRefresh)
{
  UINTN Control = 0;
  UINTN Page = ProgressPage (100, Control);

  InstallScreen ();
  ASSERT_EQ (StandInStartRendering (), EFI_SUCCESS);
  ASSERT_EQ (mUi->Pages->DisplayPage (Page, 0), EFI_SUCCESS);

  EXPECT_EQ (mUi->Attributes->SetControlStyle (Page, UI_PAGE_CONTAINER, Control, UI_STYLE_TEXT_COLOR, 0xDC5034, 0, 0),
             EFI_SUCCESS);
  EXPECT_EQ (mUi->Pages->RefreshPage (Page), EFI_SUCCESS);
  EXPECT_EQ (At (40, 20), 0xDC5034U);

  EXPECT_EQ (mUi->Attributes->SetControlProperty (Page, UI_PAGE_CONTAINER, Control, UI_PROPERTY_VISIBLE, 0, 0, 0),
             EFI_SUCCESS);
  EXPECT_EQ (mUi->Pages->RefreshPage (Page), EFI_SUCCESS);
  EXPECT_EQ (mScreen.BltCalls, 3U);
  EXPECT_EQ (At (16, 12), 0x000000U);
  EXPECT_EQ (At (40, 20), 0x000000U);
}

TEST_F (RenderTest, RefreshOfAnInactivePageDrawsNothing)
{
  UINTN Control = 0;
  UINTN Shown = ProgressPage (10, Control);
  UINTN Other = ProgressPage (90, Control);

  InstallScreen ();
  ASSERT_EQ (StandInStartRendering (), EFI_SUCCESS);
  ASSERT_EQ (mUi->Pages->DisplayPage (Shown, 0), EFI_SUCCESS);
  EXPECT_EQ (mUi->Pages->RefreshPage (Other), EFI_SUCCESS);
  EXPECT_EQ (mScreen.BltCalls, 1U);
  EXPECT_EQ (At (40, 20), 0x000000U) << "still the page at 10";
}

} // namespace
