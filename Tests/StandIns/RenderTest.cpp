/** @file
  The stand-ins' renderer: the theme parser on well-formed and malformed
  strings, and what reaches a Graphics Output Protocol of the test when a page
  is displayed, refreshed or hidden; the layout of pages built with the
  attributes the driver sets, seen in the pixels of the screen, with a font
  of the test that draws each character as a solid cell.
**/
#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

extern "C" {
#include <Library/MemoryAllocationLib.h>
}
#include <Protocol/GraphicsOutput.h>
#include <Protocol/HiiFont.h>
#include <StandIns/StandInRender.h>

#include "StandInTest.h"

namespace {

constexpr UINT32 kWidth = 64;
constexpr UINT32 kHeight = 48;
constexpr UINT32 kFullWidth = 1280; ///< the screen of the layout tests, as in OVMF
constexpr UINT32 kFullHeight = 800;
constexpr UINTN kCellWidth = 8; ///< a character of the test font
constexpr UINTN kCellHeight = 19;

///
/// A screen of Width x Height (kWidth x kHeight unless a test says otherwise)
/// that keeps what each Blt wrote.
///
struct FakeScreen {
  EFI_GRAPHICS_OUTPUT_PROTOCOL Protocol;
  EFI_GRAPHICS_OUTPUT_PROTOCOL_MODE Mode;
  EFI_GRAPHICS_OUTPUT_MODE_INFORMATION Info;
  std::vector<EFI_GRAPHICS_OUTPUT_BLT_PIXEL> Pixels;
  UINTN Width = kWidth;
  UINTN Height = kHeight;
  UINTN BltCalls = 0;
  BOOLEAN WholeScreen = TRUE; ///< every Blt wrote the whole screen from the buffer
};

///
/// Where pixels of one colour lie on the screen.
///
struct Extent {
  UINTN Left = ~(UINTN)0;
  UINTN Top = ~(UINTN)0;
  UINTN Right = 0;  ///< last column, inclusive
  UINTN Bottom = 0; ///< last row, inclusive
  UINTN Count = 0;
};

///
/// The font of the test: each character but a space is a solid cell of
/// kCellWidth x kCellHeight in the foreground colour; a row holds as many
/// characters as the image is wide, the next row starts below.
///
struct FakeFont {
  EFI_HII_FONT_PROTOCOL Protocol;
  UINTN Calls = 0;
  std::vector<std::string> Texts; ///< what each call drew
};

FakeFont *gFont = nullptr;

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
      (SourceY != 0) || (DestinationX != 0) || (DestinationY != 0) || (Width != gScreen->Width) ||
      (Height != gScreen->Height) || (Delta != gScreen->Width * sizeof (EFI_GRAPHICS_OUTPUT_BLT_PIXEL))) {
    gScreen->WholeScreen = FALSE;
    return EFI_INVALID_PARAMETER;
  }

  gScreen->Pixels.assign (Buffer, Buffer + gScreen->Width * gScreen->Height);
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
FakeStringToImage (IN CONST EFI_HII_FONT_PROTOCOL *This,
                   IN EFI_HII_OUT_FLAGS Flags,
                   IN CHAR16 *CONST String,
                   IN CONST EFI_FONT_DISPLAY_INFO *StringInfo OPTIONAL,
                   IN OUT EFI_IMAGE_OUTPUT **Blt,
                   IN UINTN BltX,
                   IN UINTN BltY,
                   OUT EFI_HII_ROW_INFO **RowInfoArray OPTIONAL,
                   OUT UINTN *RowInfoArraySize OPTIONAL,
                   OUT UINTN *ColumnInfoArray OPTIONAL)
{
  gFont->Calls++;
  if ((This != &gFont->Protocol) || (String == nullptr) || (StringInfo == nullptr) || (Blt == nullptr) ||
      (*Blt == nullptr) || ((*Blt)->Image.Bitmap == nullptr) || (BltX != 0) || (BltY != 0) ||
      (RowInfoArray == nullptr) || (RowInfoArraySize == nullptr) || (ColumnInfoArray != nullptr) ||
      ((Flags & EFI_HII_OUT_FLAG_WRAP) == 0)) {
    return EFI_INVALID_PARAMETER;
  }

  EFI_IMAGE_OUTPUT *Image = *Blt;
  const UINTN PerRow = Image->Width / kCellWidth;
  UINTN Length = 0;
  std::string Drawn;

  while (String[Length] != 0) {
    Drawn += (char)String[Length++];
  }

  gFont->Texts.push_back (Drawn);
  if ((PerRow == 0) || (Length == 0)) {
    return EFI_INVALID_PARAMETER;
  }

  const UINTN RowCount = (Length + PerRow - 1) / PerRow;
  auto *Rows = (EFI_HII_ROW_INFO *)AllocatePool (RowCount * sizeof (EFI_HII_ROW_INFO));

  if (Rows == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }

  for (UINTN Row = 0; Row < RowCount; Row++) {
    const UINTN First = Row * PerRow;
    const UINTN Count = std::min (PerRow, Length - First);

    Rows[Row] = {First, First + Count - 1, kCellHeight, Count * kCellWidth, 0};
    for (UINTN Index = 0; Index < Count; Index++) {
      for (UINTN Y = Row * kCellHeight; (Y < (Row + 1) * kCellHeight) && (Y < Image->Height); Y++) {
        for (UINTN X = Index * kCellWidth; X < (Index + 1) * kCellWidth; X++) {
          if (String[First + Index] != u' ') {
            Image->Image.Bitmap[Y * Image->Width + X] = StringInfo->ForegroundColor;
          }
        }
      }
    }
  }

  *RowInfoArray = Rows;
  *RowInfoArraySize = RowCount;
  return EFI_SUCCESS;
}

class RenderTest : public StandInTest {
protected:
  void
  SetUp () override
  {
    StandInTest::SetUp ();
    mScreen.Info.PixelFormat = PixelBlueGreenRedReserved8BitPerColor;
    mScreen.Mode.Info = &mScreen.Info;
    mScreen.Mode.SizeOfInfo = sizeof (mScreen.Info);
    mScreen.Protocol.Blt = FakeBlt;
    mScreen.Protocol.Mode = &mScreen.Mode;
    mFont.Protocol.StringToImage = FakeStringToImage;
    gScreen = &mScreen;
    gFont = &mFont;
  }

  void
  TearDown () override
  {
    StandInStopRendering ();
    gScreen = nullptr;
    gFont = nullptr;
    StandInTest::TearDown ();
  }

  void
  InstallScreen (UINTN Width = kWidth, UINTN Height = kHeight)
  {
    mScreen.Width = Width;
    mScreen.Height = Height;
    mScreen.Info.HorizontalResolution = (UINT32)Width;
    mScreen.Info.VerticalResolution = (UINT32)Height;
    mScreen.Info.PixelsPerScanLine = (UINT32)Width;
    ASSERT_NE (Platform ().Handles ().InstallProtocol (gEfiGraphicsOutputProtocolGuid, &mScreen.Protocol), nullptr);
  }

  /** A screen of the size of OVMF's and the font of the test, then rendering on. **/
  void
  StartFullScreen ()
  {
    InstallScreen (kFullWidth, kFullHeight);
    ASSERT_NE (Platform ().Handles ().InstallProtocol (gEfiHiiFontProtocolGuid, &mFont.Protocol), nullptr);
    ASSERT_EQ (StandInStartRendering (), EFI_SUCCESS);
  }

  /** @return the screen's pixel at (X, Y) as 0xRRGGBB. **/
  UINT32
  At (UINTN X, UINTN Y) const
  {
    const EFI_GRAPHICS_OUTPUT_BLT_PIXEL &Pixel = mScreen.Pixels.at (Y * mScreen.Width + X);

    return ((UINT32)Pixel.Red << 16) | ((UINT32)Pixel.Green << 8) | Pixel.Blue;
  }

  /** @return where the pixels of colour Rgb lie on the screen. **/
  Extent
  Find (UINT32 Rgb) const
  {
    Extent Found;

    for (UINTN Y = 0; Y < mScreen.Height; Y++) {
      for (UINTN X = 0; X < mScreen.Width; X++) {
        if (At (X, Y) == Rgb) {
          Found.Left = std::min (Found.Left, X);
          Found.Top = std::min (Found.Top, Y);
          Found.Right = std::max (Found.Right, X);
          Found.Bottom = std::max (Found.Bottom, Y);
          Found.Count++;
        }
      }
    }

    return Found;
  }

  //
  // The attribute calls of the driver, on container 1001; each expects success.
  //
  void
  Style (UINTN Page, UINTN Control, UINT32 Tag, UINTN V1, UINTN V2 = 0, UINTN V3 = 0)
  {
    EXPECT_EQ (mUi->Attributes->SetControlStyle (Page, UI_PAGE_CONTAINER, Control, Tag, V1, V2, V3), EFI_SUCCESS);
  }

  void
  Property (UINTN Page, UINTN Control, UINT32 Tag, UINTN V1, UINTN V2 = 0, UINTN V3 = 0)
  {
    EXPECT_EQ (mUi->Attributes->SetControlProperty (Page, UI_PAGE_CONTAINER, Control, Tag, V1, V2, V3), EFI_SUCCESS);
  }

  void
  SetText (UINTN Page, UINTN Control, const std::string &Text)
  {
    std::vector<CHAR16> Copy = Wide (Text);

    EXPECT_EQ (
      mUi->Attributes->SetControlData (Page, UI_PAGE_CONTAINER, Control, UI_DATA_TEXT, (UINTN)Copy.data (), 0, 0),
      EFI_SUCCESS);
  }

  /** Hands the framework a BMP of 4 x 2 pixels of Rgb and sets it on the image control. **/
  void
  SetLogo (UINTN Page, UINTN Control, UINT32 Rgb)
  {
    std::vector<UINT8> Bmp (54, 0);
    auto Put32 = [&Bmp] (size_t Offset, UINT32 Value) {
      for (size_t Index = 0; Index < 4; Index++) {
        Bmp[Offset + Index] = (UINT8)(Value >> (8 * Index));
      }
    };
    auto Logo = Wide ("logo.bmp");
    UINTN Cell = 0;

    Bmp[0] = 'B';
    Bmp[1] = 'M';
    Put32 (10, 54);
    Put32 (14, 40);
    Put32 (18, 4);
    Put32 (22, 2);
    Bmp[26] = 1;
    Bmp[28] = 24;
    for (UINTN Pixel = 0; Pixel < 8; Pixel++) {
      Bmp.push_back ((UINT8)Rgb);
      Bmp.push_back ((UINT8)(Rgb >> 8));
      Bmp.push_back ((UINT8)(Rgb >> 16));
    }

    Put32 (2, (UINT32)Bmp.size ());
    ASSERT_EQ (mUi->Services->Images->AddImageData (&Cell, Logo.data (), Bmp.data (), Bmp.size ()), EFI_SUCCESS);
    ASSERT_EQ (mUi->Services->Images->GetImage (Logo.data (), &Cell), EFI_SUCCESS);
    Style (Page, Control, UI_STYLE_IMAGE, Cell);
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
  FakeFont mFont{};
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

//
// Colours the layout tests give each part, so that the screen tells them apart.
//
constexpr UINT32 kLogo = 0xC00000;
constexpr UINT32 kWelcome = 0x00C000;
constexpr UINT32 kMessage = 0x0000C0;
constexpr UINT32 kBar = 0xC0C000;
constexpr UINT32 kStatus = 0xC000C0;
constexpr UINT32 kTitle = 0x00C0C0;
constexpr UINT32 kPercent = 0x808080;

///
/// The pages as the driver builds them: the same controls, in the same order,
/// with the same layout attributes; only the colours are the test's.
///
class RenderLayoutTest : public RenderTest {
protected:
  /** The welcome page after a hot key: message shown, bar visible at Value. **/
  UINTN
  WelcomePage (UINTN Value)
  {
    UINTN Page = NewPage (2);

    mLogo = NewImageControl (Page);
    Property (Page, mLogo, UI_PROPERTY_SIZE, 4, 40, 40);
    Style (Page, mLogo, UI_STYLE_FLOW, 1);
    Style (Page, mLogo, UI_STYLE_LAYOUT, 0);
    Style (Page, mLogo, UI_STYLE_LAYOUT, 2);
    Style (Page, mLogo, UI_STYLE_IMAGE_FIT, 5);
    Style (Page, mLogo, UI_STYLE_LAYOUT, 0x100, 30, 18);
    SetLogo (Page, mLogo, kLogo);

    mBar = NewProgressControl (Page);
    Property (Page, mBar, UI_PROPERTY_SIZE, 4, 80, 5);
    Style (Page, mBar, UI_STYLE_LAYOUT, 2);
    Style (Page, mBar, UI_STYLE_LAYOUT, 0x20);
    Style (Page, mBar, UI_STYLE_FLOW, 1);
    Style (Page, mBar, UI_STYLE_LAYOUT, 2);
    Property (Page, mBar, UI_PROPERTY_VISIBLE, 0);
    Style (Page, mBar, UI_STYLE_TEXT_COLOR, kBar);

    UINTN Text = NewTextControl (Page);
    Property (Page, Text, UI_PROPERTY_MARGIN, 0, 10, 10);
    Property (Page, Text, UI_PROPERTY_SIZE, 4, 100, 10);
    Style (Page, Text, UI_STYLE_TEXT_COLOR, kWelcome);
    Style (Page, Text, UI_STYLE_FLOW, 1);
    Style (Page, Text, UI_STYLE_LAYOUT, 2);
    Style (Page, Text, UI_STYLE_ALIGN, 5);
    Style (Page, Text, UI_STYLE_LAYOUT, 0x40, 2, mLogo);
    SetText (Page, Text, "Welcome to the machine");

    mMessage = NewTextControl (Page);
    Style (Page, mMessage, UI_STYLE_TEXT_COLOR, kMessage);
    Style (Page, mMessage, UI_STYLE_FLOW, 1);
    Style (Page, mMessage, UI_STYLE_LAYOUT, 0x0C);
    Style (Page, mMessage, UI_STYLE_ALIGN, 2);
    Style (Page, mMessage, UI_STYLE_FONT, 0, 0, 24);

    mStatus = NewTextControl (Page);
    Style (Page, mStatus, UI_STYLE_FLOW, 1);
    Style (Page, mStatus, UI_STYLE_TEXT_COLOR, kStatus);
    Style (Page, mStatus, UI_STYLE_LAYOUT, 2);
    Style (Page, mStatus, UI_STYLE_LAYOUT, 0x40, 3, mBar);

    SetText (Page, mMessage, "Entering Setup");
    SetText (Page, mStatus, "Status");
    Property (Page, mBar, UI_PROPERTY_VISIBLE, 1);
    EXPECT_EQ (mUi->Attributes->SetControlData (Page, UI_PAGE_CONTAINER, mBar, UI_DATA_PROGRESS_VALUE, Value, 0, 0),
               EFI_SUCCESS);
    return Page;
  }

  /** The flash page half way, with a status line. **/
  UINTN
  FlashPage ()
  {
    UINTN Page = NewPage (8);

    mLogo = NewImageControl (Page);
    Property (Page, mLogo, UI_PROPERTY_SIZE, 4, 40, 40);
    Style (Page, mLogo, UI_STYLE_FLOW, 1);
    Style (Page, mLogo, UI_STYLE_LAYOUT, 0);
    Style (Page, mLogo, UI_STYLE_LAYOUT, 2);
    Style (Page, mLogo, UI_STYLE_IMAGE_FIT, 5);
    Style (Page, mLogo, UI_STYLE_FLOW, 1);
    Style (Page, mLogo, UI_STYLE_LAYOUT, 0x100, 30, 18);
    SetLogo (Page, mLogo, kLogo);

    mBar = NewProgressControl (Page);
    Property (Page, mBar, UI_PROPERTY_SIZE, 4, 50, 5);
    Style (Page, mBar, UI_STYLE_LAYOUT, 0);
    Style (Page, mBar, UI_STYLE_LAYOUT, 2);
    Style (Page, mBar, UI_STYLE_LAYOUT, 0x20);
    Style (Page, mBar, UI_STYLE_FLOW, 1);
    Style (Page, mBar, UI_STYLE_TEXT_COLOR, kBar);

    mMessage = NewTextControl (Page);
    Property (Page, mMessage, UI_PROPERTY_SIZE, 4, 100, 20);
    Style (Page, mMessage, UI_STYLE_FLOW, 1);
    Style (Page, mMessage, UI_STYLE_TEXT_COLOR, kMessage);
    Style (Page, mMessage, UI_STYLE_FONT, 0, 0, 22);
    Style (Page, mMessage, UI_STYLE_ALIGN, 4);
    Style (Page, mMessage, UI_STYLE_LAYOUT, 0);
    Style (Page, mMessage, UI_STYLE_LAYOUT, 2);
    Style (Page, mMessage, UI_STYLE_LAYOUT, 0x40, 2, mLogo);

    mStatus = NewTextControl (Page);
    Property (Page, mStatus, UI_PROPERTY_MARGIN, 0, 10, 10);
    Property (Page, mStatus, UI_PROPERTY_SIZE, 4, 100, 10);
    Style (Page, mStatus, UI_STYLE_FLOW, 1);
    Style (Page, mStatus, UI_STYLE_TEXT_COLOR, kStatus);
    Style (Page, mStatus, UI_STYLE_ALIGN, 5);
    Style (Page, mStatus, UI_STYLE_LAYOUT, 0);
    Style (Page, mStatus, UI_STYLE_LAYOUT, 2);
    Style (Page, mStatus, UI_STYLE_ALIGN, 5);
    Style (Page, mStatus, UI_STYLE_LAYOUT, 0x40, 3, mBar);

    UINTN Label = NewTextControl (Page);
    Property (Page, Label, UI_PROPERTY_SIZE, 4, 20, 5);
    Style (Page, Label, UI_STYLE_FLOW, 1);
    Style (Page, Label, UI_STYLE_TEXT_COLOR, kTitle);
    Style (Page, Label, UI_STYLE_FONT, 0, 0, 22);
    Style (Page, Label, UI_STYLE_ALIGN, 2);
    Style (Page, Label, UI_STYLE_LAYOUT, 0x20);
    Style (Page, Label, UI_STYLE_LAYOUT, 1);

    UINTN Percent = NewTextControl (Page);
    Property (Page, Percent, UI_PROPERTY_SIZE, 4, 20, 5);
    Style (Page, Percent, UI_STYLE_FLOW, 1);
    Style (Page, Percent, UI_STYLE_TEXT_COLOR, kPercent);
    Style (Page, Percent, UI_STYLE_FONT, 0, 0, 22);
    Style (Page, Percent, UI_STYLE_LAYOUT, 0x20);
    Style (Page, Percent, UI_STYLE_LAYOUT, 4);

    SetText (Page, mMessage, "Do not power off");
    SetText (Page, mStatus, "Writing");
    SetText (Page, Label, "Flash Progress");
    SetText (Page, Percent, "   50%            ");
    EXPECT_EQ (mUi->Attributes->SetControlData (Page, UI_PAGE_CONTAINER, mBar, UI_DATA_PROGRESS_MAXIMUM, 100, 0, 0),
               EFI_SUCCESS);
    EXPECT_EQ (mUi->Attributes->SetControlData (Page, UI_PAGE_CONTAINER, mBar, UI_DATA_PROGRESS_VALUE, 50, 0, 0),
               EFI_SUCCESS);
    return Page;
  }

  UINTN mLogo = 0;
  UINTN mBar = 0;
  UINTN mMessage = 0;
  UINTN mStatus = 0;
};

TEST_F (RenderLayoutTest, WelcomeLogoIsCentredAndTheLinesFollowTopDown)
{
  UINTN Page = WelcomePage (50);

  StartFullScreen ();
  ASSERT_EQ (mUi->Pages->DisplayPage (Page, 0), EFI_SUCCESS);
  ASSERT_TRUE (mScreen.WholeScreen);

  Extent Logo = Find (kLogo);
  Extent Welcome = Find (kWelcome);
  Extent Message = Find (kMessage);
  Extent Bar = Find (kBar);
  Extent Status = Find (kStatus);

  ASSERT_GT (Logo.Count, 0U);
  ASSERT_GT (Welcome.Count, 0U);
  ASSERT_GT (Message.Count, 0U);
  ASSERT_GT (Bar.Count, 0U);
  ASSERT_GT (Status.Count, 0U);

  //
  // The logo: as far from the left edge as from the right, in the upper half.
  //
  EXPECT_EQ (Logo.Left, kFullWidth - 1 - Logo.Right);
  EXPECT_GE (Logo.Top, kFullHeight / 10);
  EXPECT_LT (Logo.Bottom, kFullHeight * 6 / 10);

  //
  // Then, each wholly below the one before: welcome text, message, bar, status.
  //
  EXPECT_GT (Welcome.Top, Logo.Bottom);
  EXPECT_GT (Message.Top, Welcome.Bottom);
  EXPECT_GT (Bar.Top, Message.Bottom);
  EXPECT_GT (Status.Top, Bar.Bottom);
  EXPECT_LT (Status.Bottom, kFullHeight - 1);

  //
  // Texts centred under what they hang from, but the status line starts at
  // the bar's left edge.
  //
  EXPECT_EQ (Welcome.Left + Welcome.Right + 1, kFullWidth);
  EXPECT_EQ (Message.Left + Message.Right + 1, kFullWidth);
  EXPECT_EQ (Bar.Left + Bar.Right + 1, kFullWidth);
  EXPECT_EQ (Status.Left, Bar.Left);
}

TEST_F (RenderLayoutTest, HiddenBarKeepsItsRoomAndDrawsNothing)
{
  UINTN Page = WelcomePage (50);

  StartFullScreen ();
  ASSERT_EQ (mUi->Pages->DisplayPage (Page, 0), EFI_SUCCESS);
  Extent Shown = Find (kStatus);

  Property (Page, mBar, UI_PROPERTY_VISIBLE, 0);
  ASSERT_EQ (mUi->Pages->RefreshPage (Page), EFI_SUCCESS);
  EXPECT_EQ (Find (kBar).Count, 0U);

  Extent Hidden = Find (kStatus);

  EXPECT_EQ (Hidden.Top, Shown.Top) << "nothing moves when the bar goes";
  EXPECT_EQ (Hidden.Left, Shown.Left);
}

TEST_F (RenderLayoutTest, FlashTitleOnTopPercentBesideTheBar)
{
  UINTN Page = FlashPage ();

  StartFullScreen ();
  ASSERT_EQ (mUi->Pages->DisplayPage (Page, 0), EFI_SUCCESS);

  Extent Title = Find (kTitle);
  Extent Logo = Find (kLogo);
  Extent Message = Find (kMessage);
  Extent Bar = Find (kBar);
  Extent Percent = Find (kPercent);
  Extent Status = Find (kStatus);

  ASSERT_GT (Title.Count, 0U);
  ASSERT_GT (Percent.Count, 0U);
  ASSERT_GT (Status.Count, 0U);
  EXPECT_LT (Title.Bottom, Logo.Top);
  EXPECT_LT (Title.Top, kFullHeight / 10);
  EXPECT_EQ (Title.Left + Title.Right + 1, kFullWidth);
  EXPECT_EQ (Logo.Left, kFullWidth - 1 - Logo.Right);
  EXPECT_GT (Message.Top, Logo.Bottom);
  EXPECT_GT (Bar.Top, Message.Bottom);

  //
  // The percentage right of the bar, on its row; the status line below the
  // bar, starting at its left edge.
  //
  EXPECT_GT (Percent.Left, Bar.Right);
  EXPECT_LT (Percent.Left, Bar.Right + 4 * kCellWidth);
  EXPECT_LE (Percent.Top, Bar.Bottom);
  EXPECT_GE (Percent.Bottom, Bar.Top);
  EXPECT_GT (Status.Top, Bar.Bottom);
  EXPECT_EQ (Status.Left, Bar.Left);
  EXPECT_LT (Status.Bottom, kFullHeight - 1);
}

TEST_F (RenderLayoutTest, LargeFontDrawsCellsTwiceAsLarge)
{
  UINTN Page = FlashPage ();

  StartFullScreen ();
  ASSERT_EQ (mUi->Pages->DisplayPage (Page, 0), EFI_SUCCESS);

  //
  // "Flash Progress" at font size 22: 14 cells of 16 x 38; "Writing" at the
  // normal size: 7 cells of 8 x 19.
  //
  Extent Title = Find (kTitle);
  Extent Status = Find (kStatus);

  EXPECT_EQ (Title.Right - Title.Left + 1, 14 * 2 * kCellWidth);
  EXPECT_EQ (Title.Bottom - Title.Top + 1, 2 * kCellHeight);
  EXPECT_EQ (Status.Right - Status.Left + 1, 7 * kCellWidth);
  EXPECT_EQ (Status.Bottom - Status.Top + 1, kCellHeight);
}

TEST_F (RenderLayoutTest, AnchorsInALoopStillGetDrawnOnTheScreen)
{
  UINTN Page = NewPage ();
  UINTN First = NewTextControl (Page);
  UINTN Second = NewTextControl (Page);

  Style (Page, First, UI_STYLE_LAYOUT, 0x40, 2, Second);
  Style (Page, Second, UI_STYLE_LAYOUT, 0x40, 2, First);
  Style (Page, First, UI_STYLE_TEXT_COLOR, kMessage);
  Style (Page, Second, UI_STYLE_TEXT_COLOR, kStatus);
  SetText (Page, First, "one");
  SetText (Page, Second, "two");

  StartFullScreen ();
  ASSERT_EQ (mUi->Pages->DisplayPage (Page, 0), EFI_SUCCESS);
  Extent One = Find (kMessage);
  Extent Two = Find (kStatus);

  ASSERT_EQ (One.Count, 3 * kCellWidth * kCellHeight);
  ASSERT_EQ (Two.Count, 3 * kCellWidth * kCellHeight);
  EXPECT_GT (Two.Top, One.Bottom) << "the first joins the block, the second hangs below it";
}

TEST_F (RenderLayoutTest, OneTextImagePerRedrawHoweverManyTexts)
{
  UINTN Page = FlashPage ();

  StartFullScreen ();
  ASSERT_EQ (mUi->Pages->DisplayPage (Page, 0), EFI_SUCCESS);

  //
  // Each redraw: one block for the layout, one text image, and the row
  // arrays that the font hands over (one per text drawn), all freed again.
  //
  UINT64 Before = Platform ().Pool ().AllocationCount ();
  UINTN Calls = mFont.Calls;
  UINTN Live = Platform ().Pool ().LiveCount ();

  ASSERT_EQ (mUi->Pages->RefreshPage (Page), EFI_SUCCESS);
  EXPECT_EQ (mFont.Calls - Calls, 4U) << "message, status, title, percentage";
  EXPECT_EQ (Platform ().Pool ().AllocationCount () - Before, 2 + (mFont.Calls - Calls));
  EXPECT_EQ (Platform ().Pool ().LiveCount (), Live);
}

TEST_F (RenderLayoutTest, NoPoolForTheTextImageLeavesTextsOutOnly)
{
  UINTN Page = FlashPage ();

  StartFullScreen ();
  ASSERT_EQ (mUi->Pages->DisplayPage (Page, 0), EFI_SUCCESS);
  UINTN Live = Platform ().Pool ().LiveCount ();

  Platform ().Pool ().FailAllocation (2); // the layout's block succeeds, the text image fails
  ASSERT_EQ (mUi->Pages->RefreshPage (Page), EFI_SUCCESS);
  EXPECT_EQ (Find (kTitle).Count, 0U);
  EXPECT_GT (Find (kBar).Count, 0U);
  EXPECT_GT (Find (kLogo).Count, 0U);
  EXPECT_EQ (Platform ().Pool ().LiveCount (), Live);

  Platform ().Pool ().FailAllocation (1); // the layout's block fails: the background only
  ASSERT_EQ (mUi->Pages->RefreshPage (Page), EFI_SUCCESS);
  EXPECT_EQ (Find (kBar).Count, 0U);
  EXPECT_EQ (Find (kLogo).Count, 0U);
  EXPECT_EQ (Find (0x000000).Count, (UINTN)kFullWidth * kFullHeight) << "the background (no theme string here)";
  EXPECT_EQ (Platform ().Pool ().LiveCount (), Live);
}

///
/// The prompt page, shown and active, with the test's colours on the field
/// and on both buttons.
///
class RenderPromptTest : public RenderTest {
protected:
  static constexpr UINT32 kField = 0xAAAAAA;
  static constexpr UINT32 kCancel = 0x00C0C0;
  static constexpr UINT32 kSubmit = 0xC0C000;

  void
  SetUp () override
  {
    RenderTest::SetUp ();
    PROMPT_INTERFACE *Prompt = nullptr;

    mPage = NewPromptPage (&Prompt);
    ASSERT_NE (Prompt, nullptr);
    for (auto [Control, Tag, Rgb] : {std::tuple{PROMPT_CONTROL_PASSWORD, UI_STYLE_FIELD_COLOR, kField},
                                     std::tuple{PROMPT_CONTROL_CANCEL, UI_STYLE_TEXT_COLOR, kCancel},
                                     std::tuple{PROMPT_CONTROL_SUBMIT, UI_STYLE_TEXT_COLOR, kSubmit}}) {
      ASSERT_EQ (mUi->Attributes->SetControlStyle (mPage, PROMPT_CONTAINER, Control, Tag, Rgb, 0, 0), EFI_SUCCESS);
    }

    auto Title = Wide ("Administrator");
    auto Message = Wide ("Enter the password");
    auto Caption = Wide ("Password");

    ASSERT_EQ (Prompt->ShowPrompt (Title.data (), Message.data (), Caption.data (), 0, 20, nullptr), EFI_SUCCESS);
    StartFullScreen ();
    ASSERT_EQ (mUi->Pages->SetActivePage (mPage), EFI_SUCCESS);
  }

  /** Types Text into the field, which redraws the page. **/
  void
  Type (const std::string &Text)
  {
    auto Copy = Wide (Text);

    ASSERT_EQ (StandInTypeText (mPage, Copy.data ()), EFI_SUCCESS);
  }

  UINTN mPage = 0;
};

TEST_F (RenderPromptTest, ButtonsSideBySideBelowTheFieldUntilHidden)
{
  Extent Field = Find (kField);
  Extent Cancel = Find (kCancel);
  Extent Submit = Find (kSubmit);

  ASSERT_GT (Cancel.Count, 0U);
  ASSERT_GT (Submit.Count, 0U);
  EXPECT_GT (Cancel.Top, Field.Bottom);
  EXPECT_EQ (Cancel.Top, Submit.Top);
  EXPECT_GT (Submit.Left, Cancel.Right) << "cancel left, submit right";
  EXPECT_EQ (Cancel.Left + Submit.Right + 1, kFullWidth) << "the pair centred";

  //
  // As after the last allowed failure: both hidden, the field stays.
  //
  ASSERT_EQ (
    mUi->Attributes->SetControlProperty (mPage, PROMPT_CONTAINER, PROMPT_CONTROL_SUBMIT, UI_PROPERTY_VISIBLE, 0, 0, 0),
    EFI_SUCCESS);
  ASSERT_EQ (mUi->Pages->RefreshPage (mPage), EFI_SUCCESS);
  EXPECT_EQ (Find (kSubmit).Count, 0U);
  EXPECT_EQ (Find (kCancel).Count, Cancel.Count);

  ASSERT_EQ (
    mUi->Attributes->SetControlProperty (mPage, PROMPT_CONTAINER, PROMPT_CONTROL_CANCEL, UI_PROPERTY_VISIBLE, 0, 0, 0),
    EFI_SUCCESS);
  ASSERT_EQ (mUi->Pages->RefreshPage (mPage), EFI_SUCCESS);
  EXPECT_EQ (Find (kCancel).Count, 0U);
  EXPECT_EQ (Find (kField).Count, Field.Count);
}

TEST_F (RenderPromptTest, CaretFollowsTheMaskedCharacters)
{
  Extent Empty = Find (kField);
  UINTN Middle = (Empty.Top + Empty.Bottom) / 2;

  //
  // @return the field-coloured columns of the middle row inside the frame.
  //
  auto Columns = [this, &Empty, Middle] () {
    std::vector<UINTN> Found;

    for (UINTN X = Empty.Left + 2; X < Empty.Right - 1; X++) {
      if (At (X, Middle) == kField) {
        Found.push_back (X);
      }
    }

    return Found;
  };

  std::vector<UINTN> Caret = Columns ();

  ASSERT_EQ (Caret.size (), 2U) << "an empty field shows only the caret";
  EXPECT_LT (Caret[0], Empty.Left + 16) << "at the field's left";

  Type ("abc");
  std::vector<UINTN> Typed = Columns ();

  //
  // Three cells of '*', then a gap, then the caret three cells further on.
  //
  ASSERT_EQ (Typed.size (), 3 * kCellWidth + 2);
  EXPECT_EQ (Typed.back (), Caret.back () + 3 * kCellWidth);
  EXPECT_EQ (Typed.front () + 3 * kCellWidth, Typed[3 * kCellWidth] - 1);
  EXPECT_EQ (Find (kField).Count - Empty.Count, 3 * kCellWidth * kCellHeight);
  EXPECT_NE (std::find (mFont.Texts.begin (), mFont.Texts.end (), "***"), mFont.Texts.end ());
  EXPECT_EQ (std::find (mFont.Texts.begin (), mFont.Texts.end (), "abc"), mFont.Texts.end ())
    << "the password itself never reaches the font";

  Type ("");
  EXPECT_EQ (Columns (), Caret) << "an emptied field puts the caret back";
}

} // namespace
