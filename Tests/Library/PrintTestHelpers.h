/** @file
  Helpers of the PrintLib tests: CHAR16 strings from u"" literals and back,
  and a buffer of exactly the size under test so that AddressSanitizer sees
  any write past it.
**/
#ifndef KEST_TESTS_PRINT_TEST_HELPERS_H_
#define KEST_TESTS_PRINT_TEST_HELPERS_H_

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include <Base.h>

namespace PrintTest {

/// A null-terminated CHAR16 copy of Text.
inline std::vector<CHAR16>
Wide (const std::u16string &Text)
{
  std::vector<CHAR16> Result (Text.begin (), Text.end ());
  Result.push_back (0);
  return Result;
}

/// The CHAR16 string at Text, up to its null.
inline std::u16string
Narrow16 (const CHAR16 *Text)
{
  std::u16string Result;
  for (; *Text != 0; Text++) {
    Result.push_back ((char16_t)*Text);
  }

  return Result;
}

/// A heap buffer of exactly Size bytes (one untouchable byte for Size 0), filled
/// with 0xA5 so that untouched bytes show.
class ExactBuffer {
public:
  explicit ExactBuffer (size_t Size) : mSize (Size), mBytes (new UINT8[Size == 0 ? 1 : Size])
  {
    std::memset (mBytes.get (), 0xA5, Size == 0 ? 1 : Size);
  }

  CHAR16 *
  Unicode ()
  {
    return reinterpret_cast<CHAR16 *> (mBytes.get ());
  }

  CHAR8 *
  Ascii ()
  {
    return reinterpret_cast<CHAR8 *> (mBytes.get ());
  }

  UINT8
  Byte (size_t Index) const
  {
    return mBytes[Index];
  }

  const UINT8 *
  Bytes () const
  {
    return mBytes.get ();
  }

  size_t
  Size () const
  {
    return mSize;
  }

  /// Bytes that exist behind Bytes(): Size, or the one guard byte when Size is 0.
  size_t
  Allocated () const
  {
    return mSize == 0 ? 1 : mSize;
  }

private:
  size_t mSize;
  std::unique_ptr<UINT8[]> mBytes;
};

} // namespace PrintTest

#endif
