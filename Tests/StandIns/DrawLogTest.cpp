/** @file
  The draw log line of each redraw (welcome page, prompt page, screens), its
  bounds, its way to the serial port, and the drawing of a screen.
**/
#include <gtest/gtest.h>

#include <Library/CompileTimeLib.h>
#include <Protocol/GraphicsOutput.h>
#include <Protocol/SerialIo.h>
#include <StandIns/StandInFirmwareEvents.h>
#include <StandIns/StandInRender.h>

#include "StandInTest.h"

namespace {

constexpr UINT32 kWidth = 320;
constexpr UINT32 kHeight = 240;

struct Screen {
  EFI_GRAPHICS_OUTPUT_PROTOCOL Protocol;
  EFI_GRAPHICS_OUTPUT_PROTOCOL_MODE Mode;
  EFI_GRAPHICS_OUTPUT_MODE_INFORMATION Info;
  std::vector<EFI_GRAPHICS_OUTPUT_BLT_PIXEL> Pixels;
  UINTN BltCalls;
};

Screen *gScreen = nullptr;
std::vector<std::string> *gLines = nullptr;

EFI_STATUS EFIAPI
ScreenBlt (IN EFI_GRAPHICS_OUTPUT_PROTOCOL *This,
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
  EXPECT_EQ (This, &gScreen->Protocol);
  EXPECT_EQ (Operation, EfiBltBufferToVideo);
  EXPECT_EQ (SourceX + SourceY + DestinationX + DestinationY, 0U);
  EXPECT_EQ (Width, kWidth);
  EXPECT_EQ (Height, kHeight);
  EXPECT_EQ (Delta, kWidth * sizeof (EFI_GRAPHICS_OUTPUT_BLT_PIXEL));
  gScreen->BltCalls++;
  gScreen->Pixels.assign (Buffer, Buffer + kWidth * kHeight);
  return EFI_SUCCESS;
}

VOID EFIAPI
CollectLine (IN VOID *Context, IN CONST CHAR8 *Line, IN UINTN Length)
{
  EXPECT_EQ (Context, (VOID *)gLines);
  EXPECT_EQ (Line[Length], '\0');
  gLines->emplace_back (Line, Length);
}

EFI_STATUS EFIAPI
SerialWrite (IN EFI_SERIAL_IO_PROTOCOL *This, IN OUT UINTN *BufferSize, IN VOID *Buffer)
{
  (VOID) This;
  gLines->emplace_back ((const char *)Buffer, *BufferSize);
  return EFI_SUCCESS;
}

/** A 24-bit BMP of Width x 1 pixels. **/
std::vector<UINT8>
OneRowBmp (UINT32 Width)
{
  UINT32 RowSize = (Width * 3 + 3) & ~3U;
  std::vector<UINT8> Bytes (54 + RowSize, 0);
  auto Put32 = [&Bytes] (size_t Offset, UINT32 Value) {
    for (size_t Index = 0; Index < 4; Index++) {
      Bytes[Offset + Index] = (UINT8)(Value >> (8 * Index));
    }
  };

  Bytes[0] = 'B';
  Bytes[1] = 'M';
  Put32 (2, (UINT32)Bytes.size ());
  Put32 (10, 54);
  Put32 (14, 40);
  Put32 (18, Width);
  Put32 (22, 1);
  Bytes[26] = 1;
  Bytes[28] = 24;
  return Bytes;
}

class DrawLogTest : public StandInTest {
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
    mScreen.Protocol.Blt = ScreenBlt;
    mScreen.Protocol.Mode = &mScreen.Mode;
    gScreen = &mScreen;
    gLines = &mLines;
    StandInSetDrawLogSink (CollectLine, &mLines);
  }

  void
  TearDown () override
  {
    StandInStopRendering ();
    StandInSetDrawLogSink (nullptr, nullptr);
    gScreen = nullptr;
    gLines = nullptr;
    StandInTest::TearDown ();
  }

  void
  StartRendering ()
  {
    ASSERT_NE (Platform ().Handles ().InstallProtocol (gEfiGraphicsOutputProtocolGuid, &mScreen.Protocol), nullptr);
    ASSERT_EQ (StandInStartRendering (), EFI_SUCCESS);
  }

  UINTN
  TextControl (UINTN Page, const std::string &Text)
  {
    UINTN Control = NewTextControl (Page);
    std::vector<CHAR16> Wide16 = Wide (Text);

    EXPECT_EQ (
      mUi->Attributes->SetControlData (Page, UI_PAGE_CONTAINER, Control, UI_DATA_TEXT, (UINTN)Wide16.data (), 0, 0),
      EFI_SUCCESS);
    return Control;
  }

  UINT32
  At (UINTN X, UINTN Y) const
  {
    const EFI_GRAPHICS_OUTPUT_BLT_PIXEL &Pixel = mScreen.Pixels.at (Y * kWidth + X);

    return ((UINT32)Pixel.Red << 16) | ((UINT32)Pixel.Green << 8) | Pixel.Blue;
  }

  Screen mScreen{};
  std::vector<std::string> mLines;
};

TEST_F (DrawLogTest, WelcomePageGivesOneFieldPerVisibleControlInDrawOrder)
{
  UINTN Page = NewPage (2);
  UINTN Cell = 0;
  std::vector<UINT8> Logo = OneRowBmp (3);
  std::vector<CHAR16> LogoName = Wide ("logo.bmp");

  UINTN Image = NewImageControl (Page);
  ASSERT_EQ (mUi->Services->Images->AddImageData (&Cell, LogoName.data (), Logo.data (), Logo.size ()), EFI_SUCCESS);
  ASSERT_EQ (mUi->Services->Images->GetImage (LogoName.data (), &Cell), EFI_SUCCESS);
  ASSERT_EQ (mUi->Attributes->SetControlStyle (Page, UI_PAGE_CONTAINER, Image, UI_STYLE_IMAGE, Cell, 0, 0),
             EFI_SUCCESS);
  NewImageControl (Page); // no image: no field
  TextControl (Page, "Press F2 |Setup|   ");
  UINTN Warning = TextControl (Page, std::string ("Caf\xE9\tok"));
  ASSERT_EQ (mUi->Attributes->SetControlStyle (Page, UI_PAGE_CONTAINER, Warning, UI_STYLE_TEXT_COLOR, 0xDC5034, 0, 0),
             EFI_SUCCESS);
  UINTN Hidden = TextControl (Page, "hidden");
  ASSERT_EQ (mUi->Attributes->SetControlProperty (Page, UI_PAGE_CONTAINER, Hidden, UI_PROPERTY_VISIBLE, 0, 0, 0),
             EFI_SUCCESS);
  NewTextControl (Page); // no text: an empty field
  UINTN Bar = NewProgressControl (Page);
  ASSERT_EQ (mUi->Attributes->SetControlData (Page, UI_PAGE_CONTAINER, Bar, UI_DATA_PROGRESS_VALUE, 40, 0, 0),
             EFI_SUCCESS);

  StartRendering ();
  EXPECT_TRUE (mLines.empty ()) << "nothing is drawn before a page is active";
  ASSERT_EQ (mUi->Pages->DisplayPage (Page, 0), EFI_SUCCESS);
  ASSERT_EQ (mLines.size (), 1U);
  EXPECT_EQ (mLines[0], "KESTUI-DRAW welcome | image=3x1 | Press F2 /Setup/ | Caf??ok #DC5034 |  | bar=40\r\n");

  ASSERT_EQ (mUi->Attributes->SetControlProperty (Page, UI_PAGE_CONTAINER, Bar, UI_PROPERTY_VISIBLE, 0, 0, 0),
             EFI_SUCCESS);
  ASSERT_EQ (mUi->Pages->RefreshPage (Page), EFI_SUCCESS);
  ASSERT_EQ (mLines.size (), 2U);
  EXPECT_EQ (mLines[1], "KESTUI-DRAW welcome | image=3x1 | Press F2 /Setup/ | Caf??ok #DC5034 | \r\n");
  EXPECT_EQ (mScreen.BltCalls, 2U);
}

TEST_F (DrawLogTest, PageNamesFollowTheTheme)
{
  UINTN Flash = NewPage (8);
  UINTN Other = NewPage (3);

  StartRendering ();
  ASSERT_EQ (mUi->Pages->DisplayPage (Flash, 0), EFI_SUCCESS);
  ASSERT_EQ (mUi->Pages->DisplayPage (Other, 0), EFI_SUCCESS);
  ASSERT_EQ (mLines.size (), 2U);
  EXPECT_EQ (mLines[0], "KESTUI-DRAW flash\r\n");
  EXPECT_EQ (mLines[1], "KESTUI-DRAW page\r\n");
}

TEST_F (DrawLogTest, PromptPageGivesItsTextsAndTheFieldLengthAsTyped)
{
  PROMPT_INTERFACE *Prompt = nullptr;
  UINTN Page = NewPromptPage (&Prompt);

  ASSERT_NE (Prompt, nullptr);
  StartRendering ();
  ASSERT_EQ (mUi->Pages->SetActivePage (Page), EFI_SUCCESS);
  ASSERT_EQ (Prompt->ShowPrompt (Wide ("Admin Unlock").data (), Wide ("Enter the | password  ").data (),
                                 Wide ("SN1-3B7C").data (), 0, 2, HandlerFunction (HandlerB)),
             EFI_SUCCESS);
  ASSERT_EQ (mUi->Attributes->SetControlStyle (Page, PROMPT_CONTAINER, PROMPT_CONTROL_TEXT_2, UI_STYLE_TEXT_COLOR,
                                               0xB7295A, 0, 0),
             EFI_SUCCESS);

  //
  // Typed through the firmware event source: each character redraws, the
  // third is beyond the maximum of 2 and changes nothing.
  //
  ASSERT_EQ (StandInUseFirmwareEvents (), EFI_SUCCESS);
  mLines.clear ();
  Platform ().Console ().PushKey (0, u'a');
  Platform ().Console ().PushKey (0, u'b');
  Platform ().Console ().PushKey (0, u'c');
  Platform ().Console ().PushKey (SCAN_ESC, 0);
  OnEvent (HandlerB, [this] (UI_EVENT *) {
    mUi->Pages->ExitEventLoop ();
    return (UINTN)UI_EVENT_HANDLED;
  });
  ASSERT_EQ (mUi->Pages->RunEventLoop (), EFI_SUCCESS);

  ASSERT_EQ (mLines.size (), 2U);
  EXPECT_EQ (mLines[0], "KESTUI-DRAW prompt | Admin Unlock | Enter the / password #B7295A | SN1-3B7C | field=1\r\n");
  EXPECT_EQ (mLines[1], "KESTUI-DRAW prompt | Admin Unlock | Enter the / password #B7295A | SN1-3B7C | field=2\r\n");

  ASSERT_EQ (
    mUi->Attributes->SetControlProperty (Page, PROMPT_CONTAINER, PROMPT_CONTROL_TEXT_3, UI_PROPERTY_VISIBLE, 0, 0, 0),
    EFI_SUCCESS);
  ASSERT_EQ (StandInTypeText (Page, nullptr), EFI_SUCCESS);
  ASSERT_EQ (mLines.size (), 3U);
  EXPECT_EQ (mLines[2], "KESTUI-DRAW prompt | Admin Unlock | Enter the / password #B7295A | field=0\r\n");
}

TEST_F (DrawLogTest, ALongLineIsCutBeforeItsEnd)
{
  UINTN Page = NewPage (2);

  TextControl (Page, std::string (1000, 'x'));
  TextControl (Page, "after");
  StartRendering ();
  ASSERT_EQ (mUi->Pages->DisplayPage (Page, 0), EFI_SUCCESS);
  ASSERT_EQ (mLines.size (), 1U);
  ASSERT_EQ (mLines[0].size (), (size_t)STAND_IN_DRAW_LOG_LIMIT);
  EXPECT_EQ (mLines[0].substr (0, 23), "KESTUI-DRAW welcome | x");
  EXPECT_EQ (mLines[0].substr (STAND_IN_DRAW_LOG_LIMIT - 3), "x\r\n");
}

TEST_F (DrawLogTest, NothingIsLoggedWhileRenderingIsOff)
{
  static constexpr auto Title = CompileTime::MakeWideString (u"Boot Menu");

  ASSERT_EQ (mUi->Pages->DisplayPage (NewPage (2), 0), EFI_SUCCESS);
  StandInDrawScreen ("bootmenu", Title.Text, nullptr, 0, MAX_UINTN);
  EXPECT_TRUE (mLines.empty ());
  EXPECT_EQ (mScreen.BltCalls, 0U);
}

TEST_F (DrawLogTest, ScreenIsDrawnWithItsSelectedLineInViewAndLogged)
{
  static constexpr auto Title = CompileTime::MakeWideString (u"Boot Menu");
  static constexpr auto Disk = CompileTime::MakeWideString (u"UEFI Disk");
  static constexpr auto Network = CompileTime::MakeWideString (u"UEFI PXE | IPv4");
  static constexpr auto Shell = CompileTime::MakeWideString (u"EFI Shell  ");
  const CHAR16 *Lines[] = {Disk.Text, Network.Text, Shell.Text};

  StartRendering ();
  StandInDrawScreen ("bootmenu", Title.Text, Lines, 3, 2);
  ASSERT_EQ (mScreen.BltCalls, 1U);
  ASSERT_EQ (mLines.size (), 1U);
  EXPECT_EQ (mLines[0], "KESTUI-DRAW bootmenu | Boot Menu | UEFI Disk | UEFI PXE / IPv4 | > EFI Shell\r\n");

  //
  // 240 pixels high: a title bar of 54 pixels (accent in its last 4 rows),
  // rows of 35 pixels from y 86, room for two rows above the hint; the
  // selected third line is scrolled into the second row (y 121).
  //
  EXPECT_EQ (At (5, 10), 0x1C1C1CU) << "title bar";
  EXPECT_EQ (At (5, 52), 0xB7295AU) << "accent rule";
  EXPECT_EQ (At (160, 90), 0x010101U) << "first row, not selected";
  EXPECT_EQ (At (160, 125), 0xB7295AU) << "second row, selected";
  EXPECT_EQ (At (160, 160), 0x010101U) << "below the rows";
  EXPECT_EQ (At (160, 181), 0x3A3A3AU) << "rule over the hint";

  StandInDrawScreen (nullptr, nullptr, Lines, 2, MAX_UINTN);
  ASSERT_EQ (mLines.size (), 2U);
  EXPECT_EQ (mLines[1], "KESTUI-DRAW screen |  | UEFI Disk | UEFI PXE / IPv4\r\n");
  EXPECT_EQ (At (160, 125), 0x010101U) << "no selection";
}

TEST_F (DrawLogTest, SerialSinkWritesTheLineToTheSerialPort)
{
  EFI_SERIAL_IO_PROTOCOL Serial{};

  Serial.Write = SerialWrite;
  StandInSetDrawLogSink (StandInSerialDrawLogSink, nullptr);
  StartRendering ();
  ASSERT_EQ (mUi->Pages->DisplayPage (NewPage (8), 0), EFI_SUCCESS);
  EXPECT_TRUE (mLines.empty ()) << "no serial port: nothing written";

  ASSERT_NE (Platform ().Handles ().InstallProtocol (gEfiSerialIoProtocolGuid, &Serial), nullptr);
  ASSERT_EQ (mUi->Pages->DisplayPage (NewPage (2), 0), EFI_SUCCESS);
  ASSERT_EQ (mLines.size (), 1U);
  EXPECT_EQ (mLines[0], "KESTUI-DRAW welcome\r\n");
  EXPECT_TRUE (Platform ().Console ().Output ().empty ()) << "not on the console";
}

} // namespace
