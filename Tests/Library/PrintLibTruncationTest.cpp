/** @file
  Output cut to the buffer: at every buffer size, including 0, 1 byte and one
  character, the text is the leading part of the full text, ends with a null
  when there is room for one, and nothing is written past BufferSize (each
  buffer is a heap block of exactly that size, watched by AddressSanitizer).
**/
#include <gtest/gtest.h>

#include <chrono>

#include <Uefi.h>

#include "PrintCapture.h"

using PrintTest::ExactBuffer;
using PrintTest::Wide;

namespace {

constexpr GUID kGuid = {0xdba6a7e3, 0xbb57, 0x4be7, {0x8a, 0xf8, 0xd5, 0x78, 0xdb, 0x7e, 0x56, 0x87}};

//
// Checks the buffer after a call with Size bytes that returned Count, against
// the text that an unlimited buffer receives.
//
template <typename CHARACTER>
void
ExpectLeadingPart (const ExactBuffer &Buffer, UINTN Count, const std::vector<CHARACTER> &Full)
{
  const size_t CharacterSize = sizeof (CHARACTER);
  const size_t Room = Buffer.Size () / CharacterSize;
  const size_t Expected = (Room == 0) ? 0 : std::min (Full.size (), Room - 1);

  SCOPED_TRACE (::testing::Message () << "BufferSize " << Buffer.Size ());
  ASSERT_EQ (Count, Expected);
  for (size_t Index = 0; Index < Expected; Index++) {
    CHARACTER Character;
    std::memcpy (&Character, Buffer.Bytes () + Index * CharacterSize, CharacterSize);
    ASSERT_EQ (Character, Full[Index]) << "at " << Index;
  }

  size_t Written = 0;
  if (Room != 0) {
    Written = (Expected + 1) * CharacterSize;
    for (size_t Index = Expected * CharacterSize; Index < Written; Index++) {
      EXPECT_EQ (Buffer.Byte (Index), 0) << "the null at byte " << Index;
    }
  }

  for (size_t Index = Written; Index < Buffer.Allocated (); Index++) {
    EXPECT_EQ (Buffer.Byte (Index), 0xA5) << "byte " << Index << " was written";
  }
}

template <typename... Arguments>
void
CheckEveryUnicodeSize (const std::u16string &Format, Arguments... Values)
{
  std::vector<CHAR16> FormatString = Wide (Format);
  auto Full = PrintTest::UnicodePrint (Format, Values...);
  std::vector<CHAR16> FullText (Full.Text.begin (), Full.Text.end ());

  ASSERT_GT (FullText.size (), 0U);
  for (size_t Size = 0; Size <= (FullText.size () + 2) * sizeof (CHAR16); Size++) {
    ExactBuffer Buffer (Size);
    UINTN Count = UnicodeSPrint (Buffer.Unicode (), Size, FormatString.data (), Values...);
    ExpectLeadingPart (Buffer, Count, FullText);
  }
}

template <typename... Arguments>
void
CheckEveryAsciiSize (const std::string &Format, Arguments... Values)
{
  auto Full = PrintTest::AsciiPrint (Format, Values...);
  std::vector<CHAR8> FullText (Full.Text.begin (), Full.Text.end ());

  ASSERT_GT (FullText.size (), 0U);
  for (size_t Size = 0; Size <= FullText.size () + 2; Size++) {
    ExactBuffer Buffer (Size);
    UINTN Count = AsciiSPrint (Buffer.Ascii (), Size, Format.c_str (), Values...);
    ExpectLeadingPart (Buffer, Count, FullText);
  }
}

TEST (PrintLibTruncation, UnicodeAtEveryBufferSize)
{
  std::vector<CHAR16> Serial = Wide (u"PF2ABCDE");
  CheckEveryUnicodeSize (u"%s-%a %d %g %r", Serial.data (), "K7Q1", (INT32)-1234, &kGuid, EFI_OUT_OF_RESOURCES);
}

TEST (PrintLibTruncation, AsciiAtEveryBufferSize)
{
  std::vector<CHAR16> Serial = Wide (u"PF2ABCDE");
  CheckEveryAsciiSize ("%s-%a %lx %g %r", Serial.data (), "K7Q1", (UINT64)0xFEDCBA9876543210ULL, &kGuid, EFI_NOT_FOUND);
}

TEST (PrintLibTruncation, PaddingAndLineEndsAreCutLikeText)
{
  CheckEveryUnicodeSize (u"%8d|%-6a|\n%05d", (INT32)42, "ab", (INT32)-7);
  CheckEveryAsciiSize ("%8d|%-6a|\n%05d", (INT32)42, "ab", (INT32)-7);
}

TEST (PrintLibTruncation, SerialWithBlankInTwentyCharacters)
{
  // "%a " into a 20-character buffer: the blank fits only after a short serial.
  CHAR16 Buffer[20];

  EXPECT_EQ (UnicodeSPrint (Buffer, sizeof (Buffer), Wide (u"%a ").data (), "123456789012345678"), 19U);
  EXPECT_EQ (PrintTest::Narrow16 (Buffer), u"123456789012345678 ");

  EXPECT_EQ (UnicodeSPrint (Buffer, sizeof (Buffer), Wide (u"%a ").data (), "1234567890123456789"), 19U);
  EXPECT_EQ (PrintTest::Narrow16 (Buffer), u"1234567890123456789");

  EXPECT_EQ (UnicodeSPrint (Buffer, sizeof (Buffer), Wide (u"%a ").data (), "1234567890123456789012345"), 19U);
  EXPECT_EQ (PrintTest::Narrow16 (Buffer), u"1234567890123456789");
}

TEST (PrintLibTruncation, FiftyCharactersOfStatusTextInAHundredAndTwoBytes)
{
  std::string Long (80, 'x');
  Long[49] = 'L';
  Long[50] = 'N';
  CHAR16 Buffer[51];

  EXPECT_EQ (UnicodeSPrint (Buffer, 102, Wide (u"%a").data (), Long.c_str ()), 50U);
  std::u16string Text = PrintTest::Narrow16 (Buffer);
  EXPECT_EQ (Text.size (), 50U);
  EXPECT_EQ (Text.back (), u'L');
}

TEST (PrintLibTruncation, WorkEndsWhenTheBufferIsFull)
{
  // A quadratic or unbounded formatter takes minutes over these; a linear one
  // that stops at the end of the buffer takes microseconds.
  std::string Huge (size_t{4} * 1024 * 1024, 'a');
  Huge[0] = 'b';
  CHAR8 Small[16];
  auto Start = std::chrono::steady_clock::now ();

  EXPECT_EQ (AsciiSPrint (Small, sizeof (Small), "%a%a", Huge.c_str (), Huge.c_str ()), 15U);
  EXPECT_EQ (std::string (Small), "b" + std::string (14, 'a'));
  EXPECT_EQ (AsciiSPrint (Small, sizeof (Small), "%*d", (UINT32)2000000000, (INT32)1), 15U);
  EXPECT_EQ (std::string (Small), std::string (15, ' '));
  EXPECT_EQ (AsciiSPrint (Small, sizeof (Small), "%-*d|", (UINT32)2000000000, (INT32)1), 15U);
  EXPECT_EQ (std::string (Small), "1" + std::string (14, ' '));

  EXPECT_LT (std::chrono::steady_clock::now () - Start, std::chrono::seconds (1));
}

TEST (PrintLibTruncation, MegabyteTextFormatsWhole)
{
  std::string Huge (size_t{2} * 1024 * 1024, 'q');
  std::vector<CHAR16> Buffer (Huge.size () + 2);

  EXPECT_EQ (UnicodeSPrint (Buffer.data (), Buffer.size () * sizeof (CHAR16), Wide (u"%a!").data (), Huge.c_str ()),
             Huge.size () + 1);
  EXPECT_EQ (Buffer[Huge.size () - 1], u'q');
  EXPECT_EQ (Buffer[Huge.size ()], u'!');
  EXPECT_EQ (Buffer[Huge.size () + 1], 0);
}

} // namespace
