/** @file
  Runs UnicodeSPrint or AsciiSPrint into a roomy buffer and captures the text
  and the returned count, for the tests of single conversions.
**/
#ifndef KEST_TESTS_PRINT_CAPTURE_H_
#define KEST_TESTS_PRINT_CAPTURE_H_

#include <string>
#include <vector>

#include "PrintTestHelpers.h"

extern "C" {
#include <Library/PrintLib.h>
}

namespace PrintTest {

constexpr size_t kRoomyCharacters = 512;

struct UnicodeResult {
  std::u16string Text;
  UINTN Count;
};

struct AsciiResult {
  std::string Text;
  UINTN Count;
};

template <typename... Arguments>
UnicodeResult
UnicodePrint (const std::u16string &Format, Arguments... Values)
{
  std::vector<CHAR16> FormatString = Wide (Format);
  std::vector<CHAR16> Buffer (kRoomyCharacters, 0xA5A5);
  UINTN Count = UnicodeSPrint (Buffer.data (), Buffer.size () * sizeof (CHAR16), FormatString.data (), Values...);
  return {Narrow16 (Buffer.data ()), Count};
}

template <typename... Arguments>
AsciiResult
AsciiPrint (const std::string &Format, Arguments... Values)
{
  std::vector<CHAR8> Buffer (kRoomyCharacters, (CHAR8)0xA5);
  UINTN Count = AsciiSPrint (Buffer.data (), Buffer.size (), Format.c_str (), Values...);
  return {std::string (Buffer.data ()), Count};
}

} // namespace PrintTest

#endif
