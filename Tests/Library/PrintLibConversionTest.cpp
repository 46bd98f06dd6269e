/** @file
  UnicodeSPrint and AsciiSPrint: each conversion, its flags and its width, in
  a buffer large enough for the whole text.
**/
#include <gtest/gtest.h>

#include <cstdio>

#include "PrintCapture.h"

using PrintTest::AsciiPrint;
using PrintTest::UnicodePrint;
using PrintTest::Wide;

namespace {

// The ACPI 2.0 table GUID: a value whose every field has a distinct digit pattern.
constexpr GUID kAcpiGuid = {0x8868e871, 0xe4f1, 0x11d3, {0xbc, 0x22, 0x00, 0x80, 0xc7, 0x3c, 0x88, 0x81}};

TEST (PrintLibConversion, UnicodeStringIsCopied)
{
  std::vector<CHAR16> Name = Wide (u"Kest\u00e9 UI \u263a");
  auto Result = UnicodePrint (u"[%s]", Name.data ());

  EXPECT_EQ (Result.Text, u"[Kest\u00e9 UI \u263a]");
  EXPECT_EQ (Result.Count, Result.Text.size ());
}

TEST (PrintLibConversion, AsciiStringIsWidenedByteForByte)
{
  // 0xE9 must become U+00E9, not a sign-extended U+FFE9.
  auto Result = UnicodePrint (u"%a", "A\xE9Z");

  EXPECT_EQ (Result.Text, u"A\u00e9Z");
  EXPECT_EQ (Result.Count, 3U);
}

TEST (PrintLibConversion, UnicodeStringInAsciiOutputKeepsTheLowByte)
{
  std::vector<CHAR16> Text = Wide (u"ab\u0143");
  auto Result = AsciiPrint ("%s|%a", Text.data (), "cd");

  EXPECT_EQ (Result.Text, "abC|cd");
  EXPECT_EQ (Result.Count, 6U);
}

TEST (PrintLibConversion, SerialTextAndTagJoinWithAHyphen)
{
  std::vector<CHAR16> Serial = Wide (u"PF2ABCDE");
  auto Result = UnicodePrint (u"%s-%a", Serial.data (), "K7Q1");

  EXPECT_EQ (Result.Text, u"PF2ABCDE-K7Q1");
  EXPECT_EQ (Result.Count, 13U);
}

TEST (PrintLibConversion, AsciiTextIsFollowedByOneBlank)
{
  auto Result = UnicodePrint (u"%a ", "SN123");

  EXPECT_EQ (Result.Text, u"SN123 ");
  EXPECT_EQ (Result.Count, 6U);
}

TEST (PrintLibConversion, NullStringArgumentsPrintAPlaceholder)
{
  EXPECT_EQ (UnicodePrint (u"%s|%a", (CHAR16 *)nullptr, (CHAR8 *)nullptr).Text, u"<null string>|<null string>");
  EXPECT_EQ (AsciiPrint ("%s|%a", (CHAR16 *)nullptr, (CHAR8 *)nullptr).Text, "<null string>|<null string>");
  EXPECT_EQ (AsciiPrint ("%g", (GUID *)nullptr).Text, "<null guid>");
}

TEST (PrintLibConversion, SignedDecimal)
{
  EXPECT_EQ (UnicodePrint (u"%d %d %d", (INT32)0, (INT32)7, (INT32)-42).Text, u"0 7 -42");
  EXPECT_EQ (AsciiPrint ("%d", (INT32)(-2147483647 - 1)).Text, "-2147483648");
  EXPECT_EQ (AsciiPrint ("%d", (INT32)2147483647).Text, "2147483647");
}

TEST (PrintLibConversion, DecimalWithoutLongTakesThirtyTwoBits)
{
  // The upper half of the argument slot does not belong to a 32-bit value.
  EXPECT_EQ (AsciiPrint ("%d", (UINT64)0x1000000005ULL).Text, "5");
  EXPECT_EQ (AsciiPrint ("%u", (UINT64)0x1FFFFFFFFULL).Text, "4294967295");
  EXPECT_EQ (AsciiPrint ("%x", (UINT64)0xAB00000012ULL).Text, "12");
}

TEST (PrintLibConversion, SixtyFourBitValuesWithLong)
{
  EXPECT_EQ (AsciiPrint ("%ld", (INT64)(-9223372036854775807LL - 1)).Text, "-9223372036854775808");
  EXPECT_EQ (AsciiPrint ("%Ld", (INT64)9223372036854775807LL).Text, "9223372036854775807");
  EXPECT_EQ (AsciiPrint ("%lu", (UINT64)MAX_UINT64).Text, "18446744073709551615");
  EXPECT_EQ (UnicodePrint (u"%lx", (UINT64)0x123456789ABCDEF0ULL).Text, u"123456789abcdef0");
  EXPECT_EQ (UnicodePrint (u"%lX", (UINT64)0x123456789ABCDEF0ULL).Text, u"123456789ABCDEF0");
}

TEST (PrintLibConversion, Hexadecimal)
{
  EXPECT_EQ (UnicodePrint (u"%x %X %x", (UINT32)0xBEEF, (UINT32)0xBEEF, (UINT32)0).Text, u"beef BEEF 0");
  EXPECT_EQ (AsciiPrint ("%08X", (UINT32)0xBEEF).Text, "0000BEEF");
}

TEST (PrintLibConversion, WidthPadsWithBlanksOnTheLeft)
{
  EXPECT_EQ (AsciiPrint ("%5d|", (INT32)42).Text, "   42|");
  EXPECT_EQ (AsciiPrint ("%6a|", "ab").Text, "    ab|");
  EXPECT_EQ (AsciiPrint ("%2a|", "abcd").Text, "abcd|");
}

TEST (PrintLibConversion, MinusJustifiesLeft)
{
  EXPECT_EQ (AsciiPrint ("%-5d|", (INT32)42).Text, "42   |");
  EXPECT_EQ (UnicodePrint (u"%-6a|", "ab").Text, u"ab    |");
  EXPECT_EQ (AsciiPrint ("%-05d|", (INT32)42).Text, "42   |");
}

TEST (PrintLibConversion, ZeroPadsNumbersAfterTheSign)
{
  EXPECT_EQ (AsciiPrint ("%05d", (INT32)42).Text, "00042");
  EXPECT_EQ (AsciiPrint ("%05d", (INT32)-42).Text, "-0042");
  EXPECT_EQ (AsciiPrint ("%016lx", (UINT64)0xABCULL).Text, "0000000000000abc");
}

TEST (PrintLibConversion, StarTakesTheWidthFromTheArguments)
{
  EXPECT_EQ (AsciiPrint ("%*d|", (UINT32)6, (INT32)42).Text, "    42|");
  EXPECT_EQ (AsciiPrint ("%-*a|", (UINT32)4, "ab").Text, "ab  |");
}

TEST (PrintLibConversion, PrecisionCutsStringsAndPadsDigits)
{
  EXPECT_EQ (AsciiPrint ("%.3a|", "abcdef").Text, "abc|");
  std::vector<CHAR16> Text = Wide (u"abcdef");
  EXPECT_EQ (UnicodePrint (u"%5.2s|", Text.data ()).Text, u"   ab|");
  EXPECT_EQ (AsciiPrint ("%.4d", (INT32)7).Text, "0007");
  EXPECT_EQ (AsciiPrint ("%.*a|", (UINT32)2, "xyz").Text, "xy|");
}

TEST (PrintLibConversion, SignBlankAndThousandsFlags)
{
  EXPECT_EQ (AsciiPrint ("%+d %+d", (INT32)5, (INT32)-5).Text, "+5 -5");
  EXPECT_EQ (AsciiPrint ("% d", (INT32)5).Text, " 5");
  EXPECT_EQ (AsciiPrint ("%,d", (INT32)1234567).Text, "1,234,567");
  EXPECT_EQ (AsciiPrint ("%,ld", (INT64)-1234567890123LL).Text, "-1,234,567,890,123");
  EXPECT_EQ (AsciiPrint ("%,d", (INT32)123).Text, "123");
}

TEST (PrintLibConversion, Character)
{
  EXPECT_EQ (AsciiPrint ("%c%c", (UINTN)'K', (UINTN)'U').Text, "KU");
  EXPECT_EQ (UnicodePrint (u"%c", (UINTN)0x263A).Text, u"\u263a");
  EXPECT_EQ (AsciiPrint ("%3c|", (UINTN)'x').Text, "  x|");
}

TEST (PrintLibConversion, GuidInLowerCaseGroups)
{
  EXPECT_EQ (UnicodePrint (u"%g", &kAcpiGuid).Text, u"8868e871-e4f1-11d3-bc22-0080c73c8881");
  EXPECT_EQ (AsciiPrint ("<%g>", &kAcpiGuid).Text, "<8868e871-e4f1-11d3-bc22-0080c73c8881>");
}

TEST (PrintLibConversion, GuidInsideAPackedRecordNeedNotBeAligned)
{
  alignas (8) UINT8 Record[1 + sizeof (GUID)];
  std::memcpy (Record + 1, &kAcpiGuid, sizeof (GUID));

  EXPECT_EQ (AsciiPrint ("%g", (const void *)(Record + 1)).Text, "8868e871-e4f1-11d3-bc22-0080c73c8881");
}

TEST (PrintLibConversion, PercentAndUnknownTypesStandForThemselves)
{
  EXPECT_EQ (AsciiPrint ("100%%").Text, "100%");
  EXPECT_EQ (AsciiPrint ("%k|%3k").Text, "k|  k");
  EXPECT_EQ (AsciiPrint ("end%").Text, "end");
}

TEST (PrintLibConversion, PointerPrintsSixteenDigits)
{
  static int Object;
  char Expected[32];
  std::snprintf (Expected, sizeof (Expected), "%016llX", (unsigned long long)(UINTN)&Object);

  EXPECT_EQ (AsciiPrint ("%p", (void *)&Object).Text, Expected);
  EXPECT_EQ (AsciiPrint ("%p", (void *)nullptr).Text, "0000000000000000");
}

TEST (PrintLibConversion, LineFeedsBecomeCarriageReturnLineFeed)
{
  EXPECT_EQ (AsciiPrint ("a\nb").Text, "a\r\nb");
  EXPECT_EQ (AsciiPrint ("a\r\nb").Text, "a\r\nb");
  EXPECT_EQ (AsciiPrint ("a\n\rb").Text, "a\r\nb");
  EXPECT_EQ (AsciiPrint ("a\rb").Text, "a\rb");
  EXPECT_EQ (UnicodePrint (u"%a\n", "x").Text, u"x\r\n");
}

TEST (PrintLibConversion, ArgumentsAreConsumedInOrderAcrossConversions)
{
  std::vector<CHAR16> Text = Wide (u"mid");
  auto Result =
    UnicodePrint (u"%d:%ld:%s:%c:%a:%x", (INT32)-1, (INT64)1LL << 40, Text.data (), (UINTN)'Z', "end", (UINT32)255);

  EXPECT_EQ (Result.Text, u"-1:1099511627776:mid:Z:end:ff");
}

TEST (PrintLibConversion, NullBufferOrFormatWritesNothing)
{
  std::vector<CHAR16> Format = Wide (u"abc");
  std::vector<CHAR16> Buffer (4, 0xA5A5);

  EXPECT_EQ (UnicodeSPrint (nullptr, 8, Format.data ()), 0U);
  EXPECT_EQ (UnicodeSPrint (Buffer.data (), 8, nullptr), 0U);
  EXPECT_EQ (Buffer[0], 0);
  EXPECT_EQ (Buffer[1], 0xA5A5);
}

//
// The VA_LIST forms, reached the way a caller with its own variadic wrapper
// reaches them.
//
UINTN EFIAPI
UnicodeWrapper (CHAR16 *Buffer, UINTN Size, const CHAR16 *Format, ...)
{
  VA_LIST Marker;
  VA_START (Marker, Format);
  UINTN Count = UnicodeVSPrint (Buffer, Size, Format, Marker);
  VA_END (Marker);
  return Count;
}

UINTN EFIAPI
AsciiWrapper (CHAR8 *Buffer, UINTN Size, const CHAR8 *Format, ...)
{
  VA_LIST Marker;
  VA_START (Marker, Format);
  UINTN Count = AsciiVSPrint (Buffer, Size, Format, Marker);
  VA_END (Marker);
  return Count;
}

TEST (PrintLibConversion, VaListFormsFormatTheSame)
{
  std::vector<CHAR16> Format = Wide (u"%a=%d");
  CHAR16 Unicode[32];
  CHAR8 Ascii[32];

  EXPECT_EQ (UnicodeWrapper (Unicode, sizeof (Unicode), Format.data (), "n", (INT32)-3), 4U);
  EXPECT_EQ (PrintTest::Narrow16 (Unicode), u"n=-3");
  EXPECT_EQ (AsciiWrapper (Ascii, sizeof (Ascii), "%a=%lu", "n", (UINT64)1ULL << 63), 21U);
  EXPECT_STREQ (Ascii, "n=9223372036854775808");
}

} // namespace
