/** @file
  %r: the standard texts of status codes.
**/
#include <gtest/gtest.h>

#include <Uefi.h>

#include "PrintCapture.h"

using PrintTest::AsciiPrint;
using PrintTest::UnicodePrint;

namespace {

struct STATUS_TEXT_CASE {
  EFI_STATUS Status;
  const char *Text;
};

const STATUS_TEXT_CASE kStatusTexts[] = {
  {EFI_SUCCESS, "Success"},
  {EFI_LOAD_ERROR, "Load Error"},
  {EFI_INVALID_PARAMETER, "Invalid Parameter"},
  {EFI_UNSUPPORTED, "Unsupported"},
  {EFI_BAD_BUFFER_SIZE, "Bad Buffer Size"},
  {EFI_BUFFER_TOO_SMALL, "Buffer Too Small"},
  {EFI_NOT_READY, "Not Ready"},
  {EFI_DEVICE_ERROR, "Device Error"},
  {EFI_WRITE_PROTECTED, "Write Protected"},
  {EFI_OUT_OF_RESOURCES, "Out of Resources"},
  {EFI_VOLUME_CORRUPTED, "Volume Corrupt"},
  {EFI_VOLUME_FULL, "Volume Full"},
  {EFI_NO_MEDIA, "No Media"},
  {EFI_MEDIA_CHANGED, "Media changed"},
  {EFI_NOT_FOUND, "Not Found"},
  {EFI_ACCESS_DENIED, "Access Denied"},
  {EFI_NO_RESPONSE, "No Response"},
  {EFI_NO_MAPPING, "No mapping"},
  {EFI_TIMEOUT, "Time out"},
  {EFI_NOT_STARTED, "Not started"},
  {EFI_ALREADY_STARTED, "Already started"},
  {EFI_ABORTED, "Aborted"},
  {EFI_ICMP_ERROR, "ICMP Error"},
  {EFI_TFTP_ERROR, "TFTP Error"},
  {EFI_PROTOCOL_ERROR, "Protocol Error"},
  {EFI_INCOMPATIBLE_VERSION, "Incompatible Version"},
  {EFI_SECURITY_VIOLATION, "Security Violation"},
  {EFI_CRC_ERROR, "CRC Error"},
  {EFI_END_OF_MEDIA, "End of Media"},
  {EFI_END_OF_FILE, "End of File"},
  {EFI_INVALID_LANGUAGE, "Invalid Language"},
  {EFI_COMPROMISED_DATA, "Compromised Data"},
  {ENCODE_ERROR (34), "IP Address Conflict"},
  {ENCODE_ERROR (35), "HTTP Error"},
  {ENCODE_WARNING (1), "Warning Unknown Glyph"},
  {ENCODE_WARNING (2), "Warning Delete Failure"},
  {ENCODE_WARNING (3), "Warning Write Failure"},
  {ENCODE_WARNING (4), "Warning Buffer Too Small"},
  {ENCODE_WARNING (5), "Warning Stale Data"},
  {ENCODE_WARNING (6), "Warning File System"},
  {ENCODE_WARNING (7), "Warning Reset Required"},
};

TEST (PrintLibStatusText, EveryStandardStatusHasItsName)
{
  for (const STATUS_TEXT_CASE &Case : kStatusTexts) {
    SCOPED_TRACE (Case.Text);
    auto Ascii = AsciiPrint ("%r", Case.Status);
    EXPECT_EQ (Ascii.Text, Case.Text);
    EXPECT_EQ (Ascii.Count, std::strlen (Case.Text));

    auto Unicode = UnicodePrint (u"%r", Case.Status);
    EXPECT_EQ (Unicode.Text, std::u16string (Case.Text, Case.Text + std::strlen (Case.Text)));
  }
}

TEST (PrintLibStatusText, UnnamedStatusPrintsItsValueInHex)
{
  EXPECT_EQ (AsciiPrint ("%r", (EFI_STATUS)0x64).Text, "00000064");
  EXPECT_EQ (AsciiPrint ("%r", ENCODE_ERROR (0x64)).Text, "8000000000000064");
  EXPECT_EQ (AsciiPrint ("%r", ENCODE_ERROR (36)).Text, "8000000000000024");
}

TEST (PrintLibStatusText, StatusTextTakesAWidth)
{
  EXPECT_EQ (AsciiPrint ("[%-12r]", EFI_NOT_FOUND).Text, "[Not Found   ]");
  EXPECT_EQ (AsciiPrint ("[%12r]", EFI_SUCCESS).Text, "[     Success]");
}

} // namespace
