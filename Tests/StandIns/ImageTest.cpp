/** @file
  Images of the UI framework stand-in: data kept under a name, image values,
  and the image record that pages read (decoded from BMP data).
**/
#include "StandInTest.h"

#include <cstring>

#include <Protocol/GraphicsOutput.h>

namespace {

using StandInImageTest = StandInTest;

//
// "KestLogo_1280.bmp", the name the pages hand their logo over under.
//
const std::vector<CHAR16> mLogoName = Wide ("KestLogo_1280.bmp");

void
Put16 (std::vector<UINT8> &Bytes, size_t Offset, UINT32 Value)
{
  Bytes[Offset] = (UINT8)Value;
  Bytes[Offset + 1] = (UINT8)(Value >> 8);
}

void
Put32 (std::vector<UINT8> &Bytes, size_t Offset, UINT32 Value)
{
  Put16 (Bytes, Offset, Value & 0xFFFF);
  Put16 (Bytes, Offset + 2, Value >> 16);
}

///
/// A BMP file: 40-byte info header, optional palette, rows padded to 4 bytes.
///
std::vector<UINT8>
MakeBmp (INT32 Width, INT32 Height, UINT16 Bits, const std::vector<UINT8> &Palette, const std::vector<UINT8> &Rows)
{
  const size_t PixelOffset = 14 + 40 + Palette.size ();
  std::vector<UINT8> Bytes (PixelOffset);

  Bytes[0] = 'B';
  Bytes[1] = 'M';
  Put32 (Bytes, 2, (UINT32)(PixelOffset + Rows.size ()));
  Put32 (Bytes, 10, (UINT32)PixelOffset);
  Put32 (Bytes, 14, 40);
  Put32 (Bytes, 18, (UINT32)Width);
  Put32 (Bytes, 22, (UINT32)Height);
  Put16 (Bytes, 26, 1);
  Put16 (Bytes, 28, Bits);
  Put32 (Bytes, 46, (UINT32)(Palette.size () / 4));
  std::copy (Palette.begin (), Palette.end (), Bytes.begin () + 54);
  Bytes.insert (Bytes.end (), Rows.begin (), Rows.end ());
  return Bytes;
}

class StandInImageRecordTest : public StandInTest {
protected:
  void
  SetUp () override
  {
    StandInTest::SetUp ();
    mPage = NewPage ();
    mImage = NewImageControl (mPage);
  }

  /** Hands Data over under the logo's name and sets the image on the control. **/
  void
  SetLogo (std::vector<UINT8> Data)
  {
    UINTN Cell = 0;

    ASSERT_EQ (mUi->Services->Images->AddImageData (&Cell, (CHAR16 *)mLogoName.data (), Data.data (), Data.size ()),
               EFI_SUCCESS);
    ASSERT_EQ (mUi->Services->Images->GetImage ((CHAR16 *)mLogoName.data (), &Cell), EFI_SUCCESS);
    ASSERT_EQ (mUi->Attributes->SetControlStyle (mPage, UI_PAGE_CONTAINER, mImage, UI_STYLE_IMAGE, Cell, 0, 0),
               EFI_SUCCESS);
  }

  EFI_STATUS
  ReadRecord (UI_IMAGE_RECORD **Record)
  {
    UINTN Cell = 0x1234;
    EFI_STATUS Status;

    Status =
      mUi->Attributes->GetControlStyle (mPage, UI_PAGE_CONTAINER, mImage, UI_STYLE_IMAGE_RECORD, (UINTN)&Cell, 0, 0);
    *Record = AsPointer<UI_IMAGE_RECORD> (Cell);
    return Status;
  }

  UINTN mPage = 0;
  UINTN mImage = 0;
};

TEST_F (StandInImageTest, DataIsCopiedUnderItsName)
{
  std::vector<UINT8> Data (3000);
  const VOID *Kept = nullptr;
  UINTN Size = 0;
  UINTN Cell = 0;

  for (size_t Index = 0; Index < Data.size (); Index++) {
    Data[Index] = (UINT8)(Index * 7);
  }

  std::vector<UINT8> Expected = Data;
  ASSERT_EQ (mUi->Services->Images->AddImageData (&Cell, (CHAR16 *)mLogoName.data (), Data.data (), Data.size ()),
             EFI_SUCCESS);
  Data.assign (Data.size (), 0xEE); // the caller frees its data right after
  Data.clear ();
  Data.shrink_to_fit ();

  ASSERT_TRUE (StandInGetImageData (mLogoName.data (), &Kept, &Size));
  ASSERT_EQ (Size, Expected.size ());
  EXPECT_EQ (std::memcmp (Kept, Expected.data (), Size), 0);
  EXPECT_EQ (Cell, 0U) << "handing data over does not write the cell";

  ASSERT_EQ (mUi->Services->Images->GetImage ((CHAR16 *)mLogoName.data (), &Cell), EFI_SUCCESS);
  EXPECT_NE (Cell, 0U);

  UINTN Unknown = 0x99;
  std::vector<CHAR16> OtherName = Wide ("Other.bmp");
  EXPECT_EQ (mUi->Services->Images->GetImage (OtherName.data (), &Unknown), EFI_NOT_FOUND);
  EXPECT_EQ (Unknown, 0x99U);
  EXPECT_EQ (mUi->Services->Images->AddImageData (&Cell, (CHAR16 *)mLogoName.data (), nullptr, 10),
             EFI_INVALID_PARAMETER);
  EXPECT_EQ (mUi->Services->Images->AddImageData (&Cell, (CHAR16 *)mLogoName.data (), Expected.data (), 0),
             EFI_INVALID_PARAMETER);
  EXPECT_EQ (mUi->Services->Images->AddImageData (&Cell, nullptr, Expected.data (), 1), EFI_INVALID_PARAMETER);
}

TEST_F (StandInImageTest, SameNameReplacesTheData)
{
  std::vector<UINT8> First (10, 1);
  std::vector<UINT8> Second (20, 2);
  UINTN FirstValue = 0;
  UINTN SecondValue = 0;
  const VOID *Kept = nullptr;
  UINTN Size = 0;

  ASSERT_EQ (mUi->Services->Images->AddImageData (&FirstValue, (CHAR16 *)mLogoName.data (), First.data (), 10),
             EFI_SUCCESS);
  ASSERT_EQ (mUi->Services->Images->GetImage ((CHAR16 *)mLogoName.data (), &FirstValue), EFI_SUCCESS);
  ASSERT_EQ (mUi->Services->Images->AddImageData (&SecondValue, (CHAR16 *)mLogoName.data (), Second.data (), 20),
             EFI_SUCCESS);
  ASSERT_EQ (mUi->Services->Images->GetImage ((CHAR16 *)mLogoName.data (), &SecondValue), EFI_SUCCESS);

  EXPECT_EQ (SecondValue, FirstValue) << "the name keeps its image";
  EXPECT_EQ (State ().ImageCount, 1U);
  ASSERT_TRUE (StandInGetImageData (mLogoName.data (), &Kept, &Size));
  EXPECT_EQ (Size, 20U);
  EXPECT_EQ (((const UINT8 *)Kept)[19], 2);
}

TEST_F (StandInImageRecordTest, NoRecordBeforeAnImageIsSet)
{
  UI_IMAGE_RECORD *Record = nullptr;

  EXPECT_EQ (ReadRecord (&Record), EFI_NOT_READY);
  EXPECT_EQ (Record, nullptr);

  ASSERT_EQ (mUi->Attributes->SetControlStyle (mPage, UI_PAGE_CONTAINER, mImage, UI_STYLE_IMAGE, 0, 0, 0), EFI_SUCCESS);
  EXPECT_EQ (ReadRecord (&Record), EFI_NOT_READY) << "image value 0 sets no image";
  EXPECT_EQ (Record, nullptr);
  EXPECT_EQ (mUi->Attributes->SetControlStyle (mPage, UI_PAGE_CONTAINER, mImage, UI_STYLE_IMAGE, 0x494D0005, 0, 0),
             EFI_INVALID_PARAMETER)
    << "an image value that GetImage never gave";
  EXPECT_EQ (mUi->Attributes->SetControlStyle (mPage, UI_PAGE_CONTAINER, mImage, UI_STYLE_IMAGE_RECORD, 1, 0, 0),
             EFI_INVALID_PARAMETER)
    << "the record is read only";
}

TEST_F (StandInImageRecordTest, RecordOf24BitBottomUpBmp)
{
  //
  // Two rows of two pixels, bottom row first, each row padded to 8 bytes.
  //
  std::vector<UINT8> Rows = {
    0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0, 0, // bottom: (B1 G2 R3) (B4 G5 R6)
    0x11, 0x12, 0x13, 0x14, 0x15, 0x16, 0, 0, // top
  };
  UI_IMAGE_RECORD *Record = nullptr;

  SetLogo (MakeBmp (2, 2, 24, {}, Rows));
  ASSERT_EQ (ReadRecord (&Record), EFI_SUCCESS);
  ASSERT_NE (Record, nullptr);
  EXPECT_EQ (Record->X, 0U);
  EXPECT_EQ (Record->Y, 0U);
  EXPECT_EQ (Record->Width, 2U);
  EXPECT_EQ (Record->Height, 2U);
  ASSERT_NE (Record->BltBuffer, nullptr);

  const EFI_GRAPHICS_OUTPUT_BLT_PIXEL *Pixels = (const EFI_GRAPHICS_OUTPUT_BLT_PIXEL *)Record->BltBuffer;
  EXPECT_EQ (Pixels[0].Blue, 0x11) << "the top row comes first";
  EXPECT_EQ (Pixels[0].Green, 0x12);
  EXPECT_EQ (Pixels[0].Red, 0x13);
  EXPECT_EQ (Pixels[1].Red, 0x16);
  EXPECT_EQ (Pixels[2].Blue, 0x01);
  EXPECT_EQ (Pixels[3].Red, 0x06);
  EXPECT_EQ (Pixels[3].Reserved, 0);
}

TEST_F (StandInImageRecordTest, DataThatIsNoWholeBmpGivesNoRecord)
{
  UI_IMAGE_RECORD *Record = nullptr;
  std::vector<UINT8> Truncated = MakeBmp (2, 2, 24, {}, std::vector<UINT8> (8, 0)); // one row of two

  SetLogo (std::vector<UINT8> (100, 0x42));
  EXPECT_EQ (ReadRecord (&Record), EFI_UNSUPPORTED);
  EXPECT_EQ (Record, nullptr);

  SetLogo (Truncated);
  EXPECT_EQ (ReadRecord (&Record), EFI_UNSUPPORTED) << "rows beyond the data are not read";
  EXPECT_EQ (Record, nullptr);

  std::vector<UINT8> Huge = MakeBmp (0x7FFFFFFF, 1, 24, {}, std::vector<UINT8> (8, 0));
  SetLogo (Huge);
  EXPECT_EQ (ReadRecord (&Record), EFI_UNSUPPORTED);

  //
  // Replacing the data under the same name gives the control the new image.
  //
  SetLogo (MakeBmp (1, 1, 32, {}, {9, 8, 7, 0}));
  ASSERT_EQ (ReadRecord (&Record), EFI_SUCCESS);
  EXPECT_EQ (Record->Width, 1U);
  EXPECT_EQ (((const EFI_GRAPHICS_OUTPUT_BLT_PIXEL *)Record->BltBuffer)[0].Red, 7);
}

TEST_F (StandInImageRecordTest, ImageTagsBelongToImageControls)
{
  UINTN Text = NewTextControl (mPage);
  UINTN Cell = 0;

  EXPECT_EQ (
    mUi->Attributes->GetControlStyle (mPage, UI_PAGE_CONTAINER, Text, UI_STYLE_IMAGE_RECORD, (UINTN)&Cell, 0, 0),
    EFI_INVALID_PARAMETER);
}

} // namespace
