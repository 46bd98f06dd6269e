/** @file
  The embedded logo is a PNG that libpng decodes, without warnings, to a
  1,280 x 1,280 image of 8-bit RGBA: anti-aliased shapes on a transparent
  background.
**/
#include <gtest/gtest.h>
#include <png.h>

#include <vector>

#include "ResourceTestHelpers.h"
#include "UiResources.h"

using ResourceTest::ReadLe32;

namespace {

struct DECODED {
  bool Ok;
  png_uint_32 Width;
  png_uint_32 Height;
  png_uint_32 Format;
  std::vector<UINT8> Pixels;
};

DECODED
Decode (const UINT8 *File, UINTN Size)
{
  png_image Image{};
  DECODED Result{};

  Image.version = PNG_IMAGE_VERSION;
  if (png_image_begin_read_from_memory (&Image, File, Size) == 0) {
    ADD_FAILURE () << Image.message;
    return Result;
  }

  Result.Width = Image.width;
  Result.Height = Image.height;
  Result.Format = Image.format;
  Image.format = PNG_FORMAT_RGBA;
  Result.Pixels.resize (PNG_IMAGE_SIZE (Image));
  if (png_image_finish_read (&Image, nullptr, Result.Pixels.data (), 0, nullptr) == 0) {
    ADD_FAILURE () << Image.message;
    return Result;
  }

  // A warning would mean, among others, a bad checksum in an ancillary chunk.
  EXPECT_EQ (Image.warning_or_error, 0U) << Image.message;
  Result.Ok = true;
  return Result;
}

} // namespace

TEST (LogoPng, HeaderStatesRgbaOfEightBitsAt1280By1280)
{
  const UINT8 *File = UserInterfaceImagePackage.File;

  // IHDR is the first chunk: width, height, bit depth, colour type.
  ASSERT_EQ (ReadLe32 (File + 12), ReadLe32 (reinterpret_cast<const UINT8 *> ("IHDR")));
  EXPECT_EQ ((UINT32)png_get_uint_32 (File + 16), 1280U);
  EXPECT_EQ ((UINT32)png_get_uint_32 (File + 20), 1280U);
  EXPECT_EQ (File[24], 8);
  EXPECT_EQ (File[25], PNG_COLOR_TYPE_RGBA);
}

TEST (LogoPng, DecodesWithLibpng)
{
  const DECODED Logo = Decode (UserInterfaceImagePackage.File, sizeof (UserInterfaceImagePackage.File));

  ASSERT_TRUE (Logo.Ok);
  EXPECT_EQ (Logo.Width, 1280U);
  EXPECT_EQ (Logo.Height, 1280U);
  // As stored: colour with alpha, one byte a channel, no palette.
  EXPECT_EQ (Logo.Format, (png_uint_32)PNG_FORMAT_RGBA);
}

TEST (LogoPng, IsDrawnOnATransparentBackgroundWithSmoothEdges)
{
  const DECODED Logo = Decode (UserInterfaceImagePackage.File, sizeof (UserInterfaceImagePackage.File));
  UINTN Opaque = 0;
  UINTN Partial = 0;

  ASSERT_TRUE (Logo.Ok);
  ASSERT_EQ (Logo.Pixels.size (), (size_t)Logo.Width * Logo.Height * 4);
  for (UINTN Index = 3; Index < Logo.Pixels.size (); Index += 4) {
    Opaque += (Logo.Pixels[Index] == 0xFF) ? 1 : 0;
    Partial += ((Logo.Pixels[Index] != 0) && (Logo.Pixels[Index] != 0xFF)) ? 1 : 0;
  }

  const UINTN Last = Logo.Pixels.size () - 4;
  const UINTN RowEnd = (UINTN)(Logo.Width - 1) * 4;
  EXPECT_EQ (Logo.Pixels[3], 0) << "top left corner";
  EXPECT_EQ (Logo.Pixels[RowEnd + 3], 0) << "top right corner";
  EXPECT_EQ (Logo.Pixels[Last - RowEnd + 3], 0) << "bottom left corner";
  EXPECT_EQ (Logo.Pixels[Last + 3], 0) << "bottom right corner";

  // Something is drawn, most of the picture stays clear, and edges are blended.
  const UINTN Pixels = (UINTN)Logo.Width * Logo.Height;
  EXPECT_GT (Opaque, Pixels / 20);
  EXPECT_LT (Opaque, Pixels / 2);
  EXPECT_GT (Partial, 1000U);
}
